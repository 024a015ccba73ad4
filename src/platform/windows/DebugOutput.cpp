#include "platform/DebugOutput.h"

#include <windows.h>

namespace platform {

void DebugOutput(const char* text) {
    OutputDebugStringA(text);
}

void DebugOutput(const wchar_t* text) {
    OutputDebugStringW(text);
}

}  // namespace platform
