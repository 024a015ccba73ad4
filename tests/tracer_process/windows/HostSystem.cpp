#include "tracer_process/HostSystem.h"

#include <windows.h>

#include <cstring>

namespace trace_host {
namespace {

constexpr DWORD kDebugText = 0x40010006;  // a narrow text for the debugger: length and address

LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode != kDebugText) return EXCEPTION_CONTINUE_SEARCH;
    const auto* text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written,
              nullptr);
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

void CaptureDebugOutput() {
    AddVectoredExceptionHandler(1, &OnException);
}

bool IsLoaded(const std::wstring& file) {
    return GetModuleHandleW(file.c_str()) != nullptr;
}

void ExitProcessNow(int code) {
    ExitProcess(static_cast<UINT>(code));
}

bool CanRunBelowOwn() {
    return true;
}

int PriorityBelowOwn(std::uint64_t thread) {
    return GetThreadPriority(GetCurrentThread()) -
           GetThreadPriority(reinterpret_cast<HANDLE>(thread));
}

}  // namespace trace_host
