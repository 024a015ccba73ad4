#include "TraceLog.h"

#include <cstdio>
#include <fstream>
#include <string>

#include "Text.h"

namespace host {

void PrintTraceLog(const std::filesystem::path& folder) {
    std::filesystem::path newest;
    std::filesystem::file_time_type newestTime{};
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (newest.empty() || entry.last_write_time() > newestTime) {
            newest = entry.path();
            newestTime = entry.last_write_time();
        }
    }
    if (newest.empty()) {
        std::printf("  no log (run with --enable-log)\n");
        return;
    }
    std::printf("  %s\n", Utf8(Wide(newest)).c_str());
    std::ifstream log(newest);
    for (std::string line; std::getline(log, line);) {
        std::printf("  | %s\n", line.c_str());
    }
}

}  // namespace host
