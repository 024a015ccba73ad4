#pragma once

namespace platform {

// Defined by the library's entry point: called once, by the loader thread, when the library has
// been mapped into a process and its static objects are built. The loader's lock may be held: it
// loads no module, waits for no thread and lets no exception out.
void OnLibraryAttach() noexcept;

}  // namespace platform
