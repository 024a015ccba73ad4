#include "platform/posix/NativePath.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace platform {

std::string NativePath(const std::wstring& path) {
    std::string native = ToNarrow(path, CodePage::kAnsi);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace platform
