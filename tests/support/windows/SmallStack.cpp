#include "support/SmallStack.h"

#include <windows.h>

#include <cstdlib>

void RunOnSmallStack(const std::function<void()>& work) {
    constexpr SIZE_T kStackBytes = 256 * 1024;
    const auto run = [](void* task) -> DWORD {
        (*static_cast<const std::function<void()>*>(task))();
        return 0;
    };
    // Without the flag the size is only what is committed at first, of a stack as large as the
    // program's.
    const HANDLE thread =
        CreateThread(nullptr, kStackBytes, run, const_cast<std::function<void()>*>(&work),
                     STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr || WaitForSingleObject(thread, INFINITE) != WAIT_OBJECT_0) std::abort();
    CloseHandle(thread);
}
