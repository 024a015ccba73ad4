#include "platform/LibraryAttach.h"

#include <windows.h>

// Every notification but the process attach does nothing and succeeds, the detach included: at
// process end other modules' code may already be gone.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        DisableThreadLibraryCalls(module);
        platform::OnLibraryAttach();
    }
    return TRUE;
}
