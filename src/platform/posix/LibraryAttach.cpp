#include "platform/LibraryAttach.h"

namespace {

[[gnu::constructor]] void Attach() {
    platform::OnLibraryAttach();
}

}  // namespace
