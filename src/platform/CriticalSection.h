#pragma once

// The lock inside a property set. Recursive on no system: an operation never re-enters.
// Entered and left in pairs by the same thread.

namespace platform {

inline constexpr unsigned kCriticalSectionSize = 40;

// Works on storage of kCriticalSectionSize bytes, aligned to 8.
void InitializeCriticalSection(void* storage);
void DeleteCriticalSection(void* storage);
void EnterCriticalSection(void* storage);
void LeaveCriticalSection(void* storage);

}  // namespace platform
