#include "helpers/tracer/SecondLog.h"

#include <atomic>

#include "platform/CodePage.h"
#include "platform/OutputFile.h"

namespace helpers {
namespace {

std::atomic<bool> g_on{false};

std::wstring& Path() {
    static std::wstring path;
    return path;
}

}  // namespace

void SecondLog::SetFile(const std::wstring& path) {
    Path() = path;
    // release; pairs with the acquire in IsOn.
    g_on.store(!path.empty(), std::memory_order_release);
}

bool SecondLog::IsOn() {
    return g_on.load(std::memory_order_acquire);  // pairs with the release in SetFile
}

void SecondLog::Append(const std::wstring& text) {
    const std::string narrow = platform::ToNarrow(text, platform::CodePage::kAnsi);
    std::string line(2 * narrow.size(), '\0');
    line.resize(platform::ToTextMode(narrow.data(), narrow.size(), line.data()));
    static_cast<void>(platform::AppendToFile(Path(), line.data(), line.size()));
}

}  // namespace helpers
