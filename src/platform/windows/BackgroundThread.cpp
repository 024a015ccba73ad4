#include "platform/BackgroundThread.h"

#include <objbase.h>
#include <windows.h>

#include <initializer_list>

namespace platform {
namespace {

// A thread starts and ends under the loader's lock, which whoever unloads a library holds. So the
// unloading thread waits for `done`, an event that is set when none of our code is left on the
// thread, never for the thread's end: the thread begins and ends in the system's own code, and
// everything between is queued to it as calls, ours and the system's.
//
// A library may be freed before its thread has even begun. A guard therefore holds a reference to
// it until the thread needs the loader no more, and gives that back from the system's own code.

HANDLE Native(std::uint64_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

std::uint64_t Portable(HANDLE handle) {
    return reinterpret_cast<std::uint64_t>(handle);
}

// A system function as a queued call. The import's own address, never a thunk in our code, which
// may be gone by then.
template <typename Call = PAPCFUNC, typename Function>
Call SystemCall(Function* function) {
    return reinterpret_cast<Call>(reinterpret_cast<void*>(function));
}

// The component model's library may be in the process for our sake alone, and must outlast us.
void KeepComponentModel() {
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"ole32.dll", &library);
}

}  // namespace

struct BackgroundThreadBody {
    static void CALLBACK Run(ULONG_PTR argument) {
        auto* thread = reinterpret_cast<BackgroundThread*>(argument);
        thread->run_(thread->argument_);
        thread->Ready();
        const HANDLE self = GetCurrentThread();
        QueueUserAPC(SystemCall(&SetEvent), self, thread->done_);
        QueueUserAPC(SystemCall(&CoUninitialize), self, 0);
    }

    static DWORD WINAPI Guard(void* argument) {
        const auto* thread = static_cast<BackgroundThread*>(argument);
        const auto module = static_cast<HMODULE>(thread->module_);
        WaitForSingleObject(Native(thread->ready_), INFINITE);
        FreeLibraryAndExitThread(module, 0);
    }

    // Lets the library stay until Ready is called. Does nothing in a program's own code.
    static void StartGuard(BackgroundThread& thread) {
        HMODULE module = nullptr;
        if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                reinterpret_cast<LPCWSTR>(&Guard), &module)) {
            return;
        }
        thread.module_ = module;
        const HANDLE guard = module == GetModuleHandleW(nullptr)
                                 ? nullptr
                                 : CreateThread(nullptr, 0, &Guard, &thread, 0, nullptr);
        if (guard != nullptr) {
            CloseHandle(guard);
        } else {
            FreeLibrary(module);
        }
    }

    static void CloseEvents(BackgroundThread& thread) {
        for (std::uint64_t* event : {&thread.ready_, &thread.done_}) {
            if (*event != 0) CloseHandle(Native(*event));
            *event = 0;
        }
    }
};

bool BackgroundThread::Start(Function run, void* argument) {
    run_ = run;
    argument_ = argument;
    ready_ = Portable(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    done_ = Portable(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const HANDLE thread =
        ready_ != 0 && done_ != 0
            ? CreateThread(nullptr, 0, SystemCall<LPTHREAD_START_ROUTINE>(&ExitThread), nullptr,
                           CREATE_SUSPENDED, nullptr)
            : nullptr;
    if (thread == nullptr) {
        BackgroundThreadBody::CloseEvents(*this);
        return false;
    }
    handle_ = Portable(thread);
    KeepComponentModel();
    QueueUserAPC(SystemCall(&CoInitialize), thread, 0);  // apartment-threaded
    QueueUserAPC(&BackgroundThreadBody::Run, thread, reinterpret_cast<ULONG_PTR>(this));
    SetThreadPriority(thread, THREAD_PRIORITY_BELOW_NORMAL);
    BackgroundThreadBody::StartGuard(*this);
    ResumeThread(thread);
    return true;
}

void BackgroundThread::Ready() {
    SetEvent(Native(ready_));
}

bool BackgroundThread::Join() {
    if (handle_ == 0) return false;
    const HANDLE either[] = {Native(done_), Native(handle_)};
    const bool done = WaitForMultipleObjects(2, either, FALSE, INFINITE) == WAIT_OBJECT_0;
    CloseHandle(Native(handle_));
    handle_ = 0;
    BackgroundThreadBody::CloseEvents(*this);
    return done;
}

}  // namespace platform
