#include "platform/Module.h"

#include <dlfcn.h>
#include <unistd.h>

#include "platform/CodePage.h"
#include "platform/NativePath.h"

namespace platform {

void* LoadModule(const std::wstring& path) {
    const std::string native = NativePath(path);
    // The loader would take the running program itself for an empty name.
    return native.empty() ? nullptr : dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* ResolveSymbol(void* module, const std::string& name) {
    return dlsym(module, name.c_str());
}

std::wstring ExecutablePath() {
    std::string path(256, '\0');
    for (;;) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return {};
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            return ToWide(path, CodePage::kAnsi);
        }
        path.resize(path.size() * 2);  // it was cut
    }
}

}  // namespace platform
