#include "support/ChildProcess.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "platform/windows/ProcessStart.h"

namespace test_support {

namespace {

// What OutputDebugString raises for whoever looks.
constexpr DWORD kNarrowDebugText = 0x40010006;

HANDLE Handle(std::intptr_t value) {
    return reinterpret_cast<HANDLE>(value);
}

void Require(bool fine, const char* what) {
    if (!fine) {
        std::fprintf(stderr, "%s: error %lu\n", what, GetLastError());
        std::abort();
    }
}

void KeepToSelf(HANDLE handle) {
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0);
}

// The child's environment is this process's own while it is being started.
class ScopedEnvironment {
public:
    explicit ScopedEnvironment(const std::map<std::string, std::string>& variables)
        : variables_(variables) {
        for (const auto& [name, value] : variables_) {
            SetEnvironmentVariableA(name.c_str(), value.c_str());
        }
        // The shared C++ runtime lies beside this program.
        DWORD length = GetEnvironmentVariableW(L"PATH", nullptr, 0);
        path_.resize(length);
        path_.resize(GetEnvironmentVariableW(L"PATH", path_.data(), length));
        std::wstring self(32768, L'\0');
        self.resize(GetModuleFileNameW(nullptr, self.data(), 32768));
        const std::wstring folder = std::filesystem::path(self).parent_path().wstring();
        SetEnvironmentVariableW(L"PATH", (folder + L";" + path_).c_str());
    }
    ~ScopedEnvironment() {
        for (const auto& [name, value] : variables_) {
            SetEnvironmentVariableA(name.c_str(), nullptr);
        }
        SetEnvironmentVariableW(L"PATH", path_.c_str());
    }

private:
    const std::map<std::string, std::string>& variables_;
    std::wstring path_;
};

LONG CALLBACK EchoText(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD* record = exception->ExceptionRecord;
    if (record->ExceptionCode != kNarrowDebugText || record->NumberParameters < 2) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    std::fputs(reinterpret_cast<const char*>(record->ExceptionInformation[1]), stderr);
    std::fflush(stderr);
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

ChildProcess::ChildProcess(const std::filesystem::path& program, const ChildOptions& options) {
    // Has a desktop stand while this program lives. Wine starts one for a session's first window,
    // and a child that ends meanwhile leaves it suspended for good with the child's open files.
    GetDesktopWindow();
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE childIn = nullptr;
    HANDLE childOut = nullptr;
    HANDLE in = nullptr;
    HANDLE out = nullptr;
    Require(CreatePipe(&childIn, &in, &inherited, 0) && CreatePipe(&out, &childOut, &inherited, 0),
            "CreatePipe");
    KeepToSelf(in);
    KeepToSelf(out);
    HANDLE error =
        CreateFileW(options.errorFile.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    &inherited, OPEN_ALWAYS, 0, nullptr);
    std::wstring command = L"\"" + program.wstring() + L"\"";
    for (const std::string& argument : options.arguments) {
        command += L" " + std::wstring(argument.begin(), argument.end());
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = childIn;
    start.hStdOutput = childOut;
    start.hStdError = error;
    PROCESS_INFORMATION process{};
    const ScopedEnvironment environment(options.environment);
    const BOOL started = platform::StartProcess([&] {
        return CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                              options.folder.c_str(), &start, &process);
    });
    Require(started, "CreateProcess");
    CloseHandle(process.hThread);
    CloseHandle(childIn);
    CloseHandle(childOut);
    CloseHandle(error);
    process_ = reinterpret_cast<std::intptr_t>(process.hProcess);
    input_ = reinterpret_cast<std::intptr_t>(in);
    output_ = reinterpret_cast<std::intptr_t>(out);
}

void ChildProcess::WriteLine(const std::string& line) {
    const std::string text = line + '\n';
    DWORD written = 0;  // when the child is gone the next read tells
    WriteFile(Handle(input_), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

bool ChildProcess::Fill() {
    if (ended_) {
        return false;
    }
    char bytes[4096];
    DWORD count = 0;
    if (!ReadFile(Handle(output_), bytes, sizeof bytes, &count, nullptr) || count == 0) {
        return false;
    }
    pending_.append(bytes, count);
    return true;
}

void ChildProcess::Kill() {
    TerminateProcess(Handle(process_), 137);
}

int ChildProcess::Wait() {
    if (!ended_) {
        CloseHandle(Handle(input_));
        while (Fill()) {
        }
        CloseHandle(Handle(output_));
        WaitForSingleObject(Handle(process_), INFINITE);
        DWORD code = 0;
        GetExitCodeProcess(Handle(process_), &code);
        CloseHandle(Handle(process_));
        exitCode_ = static_cast<int>(code);
        ended_ = true;
    }
    return exitCode_;
}

void BeginChild() {
    for (const DWORD which : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        KeepToSelf(GetStdHandle(which));
    }
    AddVectoredExceptionHandler(1, &EchoText);
}

}  // namespace test_support
