#include "platform/windows/SystemError.h"

#include <windows.h>

#include "platform/CodePage.h"

namespace platform {

std::string SystemErrorText(std::uint32_t code) {
    std::string text = "error " + std::to_string(code);
    wchar_t buffer[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, code, 0, buffer, 512, nullptr);
    while (length > 0 && (buffer[length - 1] <= L' ' || buffer[length - 1] == L'.')) --length;
    if (length > 0) text += ": " + ToNarrow(std::wstring_view(buffer, length), CodePage::kUtf8);
    return text;
}

}  // namespace platform
