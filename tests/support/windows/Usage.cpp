#include "support/Usage.h"

#include <windows.h>

#include <tlhelp32.h>

namespace test_support {
namespace {

std::int64_t BytesInUse(HANDLE heap) {
    std::int64_t bytes = 0;
    if (!HeapLock(heap)) return 0;
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
    }
    HeapUnlock(heap);
    return bytes;
}

}  // namespace

Usage CountUsage() {
    Usage usage;
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    usage.handles = handles;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++usage.threads;
    }
    CloseHandle(snapshot);
    MEMORY_BASIC_INFORMATION region = {};
    for (char* address = nullptr; VirtualQuery(address, &region, sizeof region) != 0;
         address = static_cast<char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_MAPPED) ++usage.mappings;
    }
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    for (DWORD i = 0; i < count && i < 64; ++i) usage.heapBytes += BytesInUse(heaps[i]);
    return usage;
}

}  // namespace test_support
