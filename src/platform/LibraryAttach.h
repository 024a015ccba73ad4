#pragma once

namespace platform {

// Defined by the library's entry point: called once, by the loader thread, when the library has
// been mapped into a process. Static objects of other files may not be built yet, and the loader's
// lock may be held: it relies on none of them, loads no module, waits for no thread and lets no
// exception out.
void OnLibraryAttach() noexcept;

}  // namespace platform
