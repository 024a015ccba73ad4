#include "platform/ChildProcess.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <system_error>
#include <thread>

#include "platform/CodePage.h"
#include "platform/windows/CommandLine.h"
#include "platform/windows/ProcessStart.h"
#include "platform/windows/SystemError.h"

namespace platform {
namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using UniqueHandle = std::unique_ptr<void, HandleCloser>;

struct Pipe {
    UniqueHandle read;
    UniqueHandle write;
};

// The writing end can be inherited, the reading end not.
bool MakePipe(Pipe& pipe) {
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, nullptr, TRUE};
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (CreatePipe(&read, &write, &attributes, 0) == 0) return false;
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);
    pipe.read.reset(read);
    pipe.write.reset(write);
    return true;
}

// Reads to the end; past the limit it reads on, so that the child is not held up.
void ReadAll(HANDLE pipe, std::string& text, std::size_t limit) {
    char buffer[65536];
    DWORD count = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &count, nullptr) != 0 && count > 0) {
        text.append(buffer, std::min<std::size_t>(limit - std::min(limit, text.size()), count));
    }
}

// The two threads that read what the child writes, until it has ended.
class Readers {
public:
    Readers(const Pipe& output, const Pipe& error, std::size_t limit, ChildResult& result) {
        try {
            output_ = std::thread(ReadAll, output.read.get(), std::ref(result.output), limit);
            error_ = std::thread(ReadAll, error.read.get(), std::ref(result.error), limit);
        } catch (const std::system_error&) {
            // Started says so.
        }
    }
    ~Readers() {
        if (output_.joinable()) output_.join();
        if (error_.joinable()) error_.join();
    }
    Readers(const Readers&) = delete;
    Readers& operator=(const Readers&) = delete;
    bool Started() const { return error_.joinable(); }

private:
    std::thread output_;
    std::thread error_;
};

// A job that ends every process in it when it is closed.
UniqueHandle MakeJob() {
    UniqueHandle job(CreateJobObjectW(nullptr, nullptr));
    if (!job) return job;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags =
        JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

// Starts the program suspended, with these three handles and no others.
bool Start(const ChildRequest& request, HANDLE input, HANDLE output, HANDLE error,
           PROCESS_INFORMATION& process) {
    HANDLE inherited[] = {input, output, error};
    SIZE_T size = 0;
    InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    std::vector<char> storage(size);
    const auto list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(storage.data());
    InitializeProcThreadAttributeList(list, 1, 0, &size);
    UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited,
                              sizeof inherited, nullptr, nullptr);
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = input;
    startup.StartupInfo.hStdOutput = output;
    startup.StartupInfo.hStdError = error;
    startup.lpAttributeList = list;

    const std::wstring program = ToWide(request.program, CodePage::kUtf8);
    std::wstring line = CommandLineOf(request.program, request.arguments);
    std::wstring environment = EnvironmentWith(request.environment);
    constexpr DWORD kFlags =
        CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT | CREATE_UNICODE_ENVIRONMENT;
    const BOOL started = StartProcess([&] {
        return CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, kFlags,
                              environment.data(), nullptr, &startup.StartupInfo, &process);
    });
    DeleteProcThreadAttributeList(list);
    return started != 0;
}

const char* ExceptionName(DWORD code) {
    switch (code) {
        case EXCEPTION_ACCESS_VIOLATION:
            return "access violation";
        case EXCEPTION_STACK_OVERFLOW:
            return "stack overflow";
        case EXCEPTION_ILLEGAL_INSTRUCTION:
            return "illegal instruction";
        case EXCEPTION_INT_DIVIDE_BY_ZERO:
            return "integer division by zero";
        case EXCEPTION_BREAKPOINT:
            return "breakpoint";
        case 0xC0000374:
            return "heap corruption";
        case 0xC0000409:
            return "stack buffer overrun or fast fail";
        case 0xC0000135:
            return "a library of the program is missing";
        case 0xC0000142:
            return "a library of the program failed to start";
        default:
            return "exception";
    }
}

// Exit codes of the severity "error" are exceptions that nobody handled.
void Describe(DWORD code, ChildResult& result) {
    result.code = code;
    if (code < 0xC0000000 && code != static_cast<DWORD>(EXCEPTION_BREAKPOINT)) {
        result.end = ChildEnd::kExited;
        return;
    }
    char number[16];
    std::snprintf(number, sizeof number, "0x%08lX", static_cast<unsigned long>(code));
    result.end = ChildEnd::kCrashed;
    result.reason = std::string("exception ") + number + " (" + ExceptionName(code) + ")";
}

void Attend(HANDLE process, HANDLE job, const ChildRequest& request, ChildResult& result) {
    const DWORD waited = WaitForSingleObject(process, request.timeoutMs);
    if (waited == WAIT_OBJECT_0) {
        DWORD code = 0;
        GetExitCodeProcess(process, &code);
        Describe(code, result);
    } else {
        TerminateProcess(process, 1);
        result.end = ChildEnd::kTimedOut;
        result.reason = "no end within " + std::to_string(request.timeoutMs) + " ms";
    }
    // Descendants would hold the pipes open.
    if (job != nullptr) TerminateJobObject(job, 1);
}

LONG WINAPI EndAtOnce(EXCEPTION_POINTERS* exception) {
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

// The loader swallows a crash of a library that it is starting, so such a crash ends the process
// before anybody can.
LONG WINAPI EndAtOnceWhenFatal(EXCEPTION_POINTERS* exception) {
    switch (exception->ExceptionRecord->ExceptionCode) {
        case EXCEPTION_ACCESS_VIOLATION:
        case EXCEPTION_ILLEGAL_INSTRUCTION:
        case EXCEPTION_INT_DIVIDE_BY_ZERO:
        case EXCEPTION_STACK_OVERFLOW:
            return EndAtOnce(exception);
        default:
            return EXCEPTION_CONTINUE_SEARCH;
    }
}

void Run(const ChildRequest& request, ChildResult& result) {
    Pipe output, error;
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    UniqueHandle input(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   &inheritable, OPEN_EXISTING, 0, nullptr));
    PROCESS_INFORMATION process = {};
    if (!MakePipe(output) || !MakePipe(error) ||
        !Start(request, input.get(), output.write.get(), error.write.get(), process)) {
        result.reason = SystemErrorText(GetLastError());
        return;
    }
    const UniqueHandle owner(process.hProcess);
    const UniqueHandle thread(process.hThread);
    const UniqueHandle job = MakeJob();
    if (job) AssignProcessToJobObject(job.get(), process.hProcess);
    output.write.reset();
    error.write.reset();
    const Readers readers(output, error, request.outputLimit, result);
    if (!readers.Started()) {
        result.reason = "no thread to read what it writes";
        TerminateProcess(process.hProcess, 1);  // it has not run yet
        return;
    }
    ResumeThread(process.hThread);
    Attend(process.hProcess, job.get(), request, result);
}

}  // namespace

ChildResult RunChild(const ChildRequest& request) {
    ChildResult result;
    Run(request, result);
    return result;
}

void CrashQuietly() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(EndAtOnce);
    AddVectoredExceptionHandler(1, EndAtOnceWhenFatal);
}

void EndProcess(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    for (;;) {
    }
}

}  // namespace platform
