#include "platform/NativePath.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace platform {

NativeString NativePath(const std::wstring& path) {
    std::string native = ToNarrow(path, CodePage::kAnsi);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::wstring WidePath(const NativeString& path) {
    return ToWide(path, CodePage::kAnsi);
}

}  // namespace platform
