#include "platform/Console.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <algorithm>

#include "platform/CodePage.h"

namespace platform {
namespace {

HANDLE g_output = nullptr;  // set when the output is reserved

HANDLE Handle(Stream stream) {
    if (stream == Stream::kError) return GetStdHandle(STD_ERROR_HANDLE);
    return g_output != nullptr ? g_output : GetStdHandle(STD_OUTPUT_HANDLE);
}

void AllowColours(Stream stream) {
    DWORD mode = 0;
    if (GetConsoleMode(Handle(stream), &mode) != 0) {
        SetConsoleMode(Handle(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

bool WriteBytes(HANDLE handle, std::string_view text) {
    while (!text.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min<std::size_t>(text.size(), 1u << 20));
        if (WriteFile(handle, text.data(), size, &written, nullptr) == 0 || written == 0) {
            return false;
        }
        text.remove_prefix(written);
    }
    return true;
}

// A console takes wide characters whatever its code page is.
bool WriteWide(HANDLE console, std::string_view text) {
    std::wstring wide = ToWide(text, CodePage::kUtf8);
    std::wstring_view rest = wide;
    while (!rest.empty()) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min<std::size_t>(rest.size(), 8192));
        if (WriteConsoleW(console, rest.data(), size, &written, nullptr) == 0 || written == 0) {
            return false;
        }
        rest.remove_prefix(written);
    }
    return true;
}

}  // namespace

void PrepareConsole() {
    AllowColours(Stream::kOutput);
    AllowColours(Stream::kError);
}

std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; wide != nullptr && i < count; ++i) {
        arguments.push_back(ToNarrow(wide[i], CodePage::kUtf8));
    }
    LocalFree(wide);
    return arguments;
}

bool IsTerminal(Stream stream) {
    DWORD mode = 0;
    return GetConsoleMode(Handle(stream), &mode) != 0;
}

bool WriteStream(Stream stream, std::string_view text) {
    const HANDLE handle = Handle(stream);
    return IsTerminal(stream) ? WriteWide(handle, text) : WriteBytes(handle, text);
}

void ReserveOutput() {
    HANDLE own = nullptr;
    const HANDLE process = GetCurrentProcess();
    if (DuplicateHandle(process, GetStdHandle(STD_OUTPUT_HANDLE), process, &own, 0, FALSE,
                        DUPLICATE_SAME_ACCESS) == 0) {
        return;
    }
    g_output = own;
    SetStdHandle(STD_OUTPUT_HANDLE, GetStdHandle(STD_ERROR_HANDLE));
    _dup2(2, 1);  // for code that uses the C library's descriptors
}

std::string EnvironmentVariable(const std::string& name) {
    const std::wstring wideName = ToWide(name, CodePage::kUtf8);
    std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
    if (value.empty()) return {};
    value.resize(
        GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return ToNarrow(value, CodePage::kUtf8);
}

const char* SystemName() {
    return "Windows x64";
}

}  // namespace platform
