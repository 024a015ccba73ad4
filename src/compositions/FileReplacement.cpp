#include "compositions/FileReplacement.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <random>
#include <string_view>
#include <thread>
#include <utility>

#include "compositions/ArchivePath.h"
#include "platform/FileMove.h"
#include "platform/Thread.h"

namespace compositions {
namespace {

// A temporary file is named after the process that writes it, so that others can tell whether it
// was left behind, and after a number that tells it from one of the same number elsewhere: machines
// and containers may share the folder. The name is short: a folder may be close to the limits
// already.
constexpr std::wstring_view kTemporaryPrefix = L"~tarnex-";
constexpr std::wstring_view kTemporarySuffix = L".tmp";
constexpr std::size_t kTokenDigits = 8;
constexpr std::wstring_view kHexDigits = L"0123456789abcdef";

constexpr int kMoveAttempts = 20;
constexpr auto kMovePause = std::chrono::milliseconds(10);

// The same for every file of this process.
std::wstring ProcessToken() {
    static const std::uint32_t number = std::random_device()();
    std::wstring token;
    for (std::size_t i = 0; i < kTokenDigits; ++i) token += kHexDigits[number >> (4 * i) & 0xF];
    return token;
}

std::wstring TemporaryName(std::uint32_t process, std::wstring_view token) {
    std::wstring name(kTemporaryPrefix);
    name.append(std::to_wstring(process)).append(1, L'-').append(token);
    return name.append(kTemporarySuffix);
}

// The process whose temporary file has that name; false when it is none of ours.
bool ParseTemporaryName(const std::wstring& name, std::uint32_t& process) {
    std::uint64_t number = 0;
    std::size_t at = kTemporaryPrefix.size();
    for (; at < name.size() && name[at] >= L'0' && name[at] <= L'9'; ++at) {
        number = number * 10 + static_cast<std::uint64_t>(name[at] - L'0');
        if (number > UINT32_MAX) return false;
    }
    const std::wstring token = at < name.size() ? name.substr(at + 1, kTokenDigits) : L"";
    process = static_cast<std::uint32_t>(number);
    return token.size() == kTokenDigits &&
           token.find_first_not_of(kHexDigits) == std::wstring::npos &&
           name == TemporaryName(process, token);
}

// Call it while no file of this process is being written.
void RemoveLeftovers(const std::wstring& folder) {
    for (const std::wstring& name : platform::ListFolder(folder, std::wstring(kTemporaryPrefix))) {
        std::uint32_t process;
        if (!ParseTemporaryName(name, process)) continue;
        const bool isOwn = process == platform::CurrentProcessId();
        if (isOwn || !platform::IsProcessAlive(process)) {
            static_cast<void>(platform::RemoveFile(folder + name));  // the next write tries again
        }
    }
}

// Removed at the end of the scope unless it has got its final name.
class TemporaryFile {
public:
    explicit TemporaryFile(std::wstring path) : path_(std::move(path)) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (kept_) return;
        try {
            static_cast<void>(platform::RemoveFile(path_));
        } catch (...) {
            // The next write removes it.
        }
    }

    const std::wstring& Path() const { return path_; }
    void Keep() { kept_ = true; }

private:
    std::wstring path_;
    bool kept_ = false;
};

bool MoveOver(const std::wstring& from, const std::wstring& to) {
    for (int attempt = 1;; ++attempt) {
        const platform::MoveResult result = platform::MoveFileOver(from, to);
        if (result == platform::MoveResult::kDone) return true;
        if (result == platform::MoveResult::kFailed || attempt == kMoveAttempts) return false;
        std::this_thread::sleep_for(kMovePause);
    }
}

}  // namespace

bool ReplaceFile(const std::wstring& path,
                 const std::function<bool(const std::wstring& temporary)>& write) {
    static std::mutex oneWrite;
    const std::lock_guard lock(oneWrite);
    const PathPieces pieces = SplitPath(path);
    std::wstring folder(pieces.drive);
    folder.append(pieces.folder);
    RemoveLeftovers(folder);
    TemporaryFile temporary(folder + TemporaryName(platform::CurrentProcessId(), ProcessToken()));
    if (!write(temporary.Path()) || !MoveOver(temporary.Path(), path)) return false;
    temporary.Keep();
    return true;
}

}  // namespace compositions
