#include "platform/DebugOutput.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/CodePage.h"

namespace platform {
namespace {

bool Wanted() {
    const char* setting = std::getenv("TARNEX_DEBUG_OUTPUT");
    return setting != nullptr && std::strcmp(setting, "1") == 0;
}

// One call, so that lines of several threads do not mix.
void Write(std::string_view text) {
    if (write(STDERR_FILENO, text.data(), text.size()) < 0) return;  // nobody to tell
}

}  // namespace

void DebugOutput(const char* text) {
    if (Wanted()) Write(text);
}

void DebugOutput(const wchar_t* text) {
    if (Wanted()) Write(ToNarrow(text, CodePage::kAnsi));
}

}  // namespace platform
