#include "platform/SettingsStore.h"

#include "platform/Module.h"
#include "platform/NativePath.h"
#include "platform/Thread.h"

namespace test_platform {

std::filesystem::path ProgramFolder() {
    return std::filesystem::path(platform::NativePath(platform::ExecutablePath())).parent_path();
}

TempFolder::TempFolder() {
    static int count = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("tarnex_test_" + std::to_string(platform::CurrentProcessId()) + "_" +
             std::to_string(++count));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;  // a file that is still held stays behind
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace test_platform
