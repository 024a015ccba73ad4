#pragma once

// The lock inside a property set, with the size and alignment that every module counts on. Entered
// and left in pairs by the same thread; an operation never enters twice. A section that is deleted
// is held by nobody.

namespace platform {

inline constexpr unsigned kCriticalSectionSize = 40;

// Works on storage of kCriticalSectionSize bytes, aligned to 8.
void InitializeCriticalSection(void* storage);
void DeleteCriticalSection(void* storage);
void EnterCriticalSection(void* storage);
void LeaveCriticalSection(void* storage);

}  // namespace platform
