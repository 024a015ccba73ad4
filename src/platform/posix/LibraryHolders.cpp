#include "platform/LibraryHolders.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <cstdio>
#include <filesystem>

namespace platform {
namespace {

namespace fs = std::filesystem;

// The lowest mapping of the file in that process; false when it has none.
bool FindMapping(const std::string& process, const struct stat& file, std::uint64_t& base) {
    std::FILE* const maps = std::fopen(("/proc/" + process + "/maps").c_str(), "re");
    if (maps == nullptr) return false;
    bool found = false;
    char line[8192];
    while (!found && std::fgets(line, sizeof line, maps) != nullptr) {
        std::uint64_t begin = 0;
        std::uint64_t inode = 0;
        unsigned high = 0;
        unsigned low = 0;
        if (std::sscanf(line, "%" SCNx64 "-%*s %*s %*s %x:%x %" SCNu64, &begin, &high, &low,
                        &inode) == 4 &&
            inode == file.st_ino && makedev(high, low) == file.st_dev) {
            base = begin;
            found = true;
        }
    }
    std::fclose(maps);
    return found;
}

std::string ProgramOf(const std::string& process) {
    std::error_code ignored;
    return fs::read_symlink("/proc/" + process + "/exe", ignored).filename().string();
}

}  // namespace

std::vector<LibraryHolder> FindLibraryHolders(const std::string& libraryPath) {
    std::vector<LibraryHolder> holders;
    struct stat file = {};
    if (stat(libraryPath.c_str(), &file) != 0) return holders;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        LibraryHolder holder;
        const auto [rest, problem] =
            std::from_chars(name.data(), name.data() + name.size(), holder.process);
        if (problem != std::errc() || rest != name.data() + name.size()) continue;
        if (holder.process == static_cast<std::uint32_t>(getpid())) continue;
        if (!FindMapping(name, file, holder.base)) continue;
        holder.program = ProgramOf(name);
        holders.push_back(std::move(holder));
    }
    std::sort(holders.begin(), holders.end(),
              [](const auto& a, const auto& b) { return a.process < b.process; });
    return holders;
}

bool ReadProcessByte(std::uint32_t process, std::uint64_t address, unsigned char& value) {
    const std::string path = "/proc/" + std::to_string(process) + "/mem";
    const int memory = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (memory < 0) return false;
    const ssize_t count = pread(memory, &value, 1, static_cast<off_t>(address));
    close(memory);
    return count == 1;
}

}  // namespace platform
