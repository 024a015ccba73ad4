#pragma once

// Loading a library the way any program does, and writing the log's settings where any program
// finds them.

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace test_support {

// Null on failure.
void* OpenLibrary(const std::filesystem::path& path);
void* FindSymbol(void* library, const char* name);
// Comes back when the library is gone; after a while also when somebody else holds it.
void CloseLibrary(void* library);

// The library's file name on this system.
extern const char* const kTarnexFile;

struct LogSettings {
    std::optional<std::uint32_t> enabled = 1;
    std::optional<std::uint32_t> logToOutput;
    std::optional<std::uint32_t> level = 0xFFFFFFFF;
};

// The log's settings of this user while the object lives; gone afterwards. `folder` is where a file
// may be put. One at a time.
class ScopedLogSettings {
public:
    ScopedLogSettings(const LogSettings& settings, const std::filesystem::path& folder);
    ~ScopedLogSettings();
    ScopedLogSettings(const ScopedLogSettings&) = delete;
    ScopedLogSettings& operator=(const ScopedLogSettings&) = delete;

    // What a child's environment needs to see them.
    const std::map<std::string, std::string>& Environment() const { return environment_; }

private:
    std::map<std::string, std::string> environment_;
};

}  // namespace test_support
