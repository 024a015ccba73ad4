#pragma once

// What tests do to the store of settings and to other programs. One thread.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace test_platform {

enum class ValueKind { kString, kNumber, kBinary };
using Bytes = std::vector<std::uint8_t>;

// Removes every key that tests use: Software\Tesmar\Tests and Software\Tesmar\Commons\Log. From
// here on this process and its children see nothing but what PutValue puts.
void ResetSettings();
void PutValue(const std::wstring& key, const std::wstring& name, ValueKind kind,
              const Bytes& bytes);

inline Bytes NumberBytes(std::uint32_t number) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(&number);
    return {bytes, bytes + sizeof number};
}
// UTF-16, with `terminators` zeros behind it.
inline Bytes StringBytes(const std::u16string& text, std::size_t terminators = 1) {
    const std::u16string units = text + std::u16string(terminators, u'\0');
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(units.data());
    return {bytes, bytes + 2 * units.size()};
}

// Runs a program to its end and returns its exit code; -1 when it cannot be started.
int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments);

void UnloadModule(void* module);

// Keeps a desktop for as long as this process lives. Wine starts one for a session's first window,
// which initialising components makes. A process that ends meanwhile leaves it suspended for good,
// together with every handle it inherited, so that whoever reads a test's output waits for ever.
void KeepDesktop();

// "trace_library" to the system's file name.
std::string LibraryFileName(const std::string& name);

// The folder of the running program.
std::filesystem::path ProgramFolder();

// A folder of its own that goes with the object.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace test_platform
