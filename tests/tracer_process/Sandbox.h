#pragma once

// A folder with a host program and its libraries in it, and the logs that processes leave there.

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/ChildProcess.h"
#include "platform/SettingsStore.h"

namespace trace_test {

class Sandbox {
public:
    // `folder` is the name of the program's folder, below one of the sandbox's own.
    explicit Sandbox(const std::wstring& folder = L"host");

    // Runs the host with these commands to its end.
    platform::ChildResult Run(const std::vector<std::string>& commands) const;

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path LogFolder() const { return folder_ / "Logs"; }
    std::vector<std::filesystem::path> LogFiles() const;
    // The bytes of the one log there is; a failure when there is not one.
    std::string LogBytes() const;
    // Its lines, without their ends.
    std::vector<std::string> LogLines() const;
    // The texts of its lines: without time, thread and the first line.
    std::vector<std::string> LogTexts() const;

private:
    test_platform::TempFolder temp_;
    std::filesystem::path folder_;
};

// Puts the tracer's values into the settings; what is not put is missing.
void PutLogValue(const std::wstring& name, std::uint32_t number);
void PutLogValue(const std::wstring& name, test_platform::ValueKind kind,
                 const test_platform::Bytes& bytes);
// Nothing in the settings but "Enabled" = 1 and "Level" = 0xFFFFFFFF.
void EnableLog();

std::vector<std::string> Lines(const std::string& bytes);

}  // namespace trace_test
