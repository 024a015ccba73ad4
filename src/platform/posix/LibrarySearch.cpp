#include "platform/LibrarySearch.h"

#include <dlfcn.h>

#include <algorithm>

#include "platform/Console.h"

namespace platform {

std::string LastModuleError() {
    const char* const text = dlerror();
    return text == nullptr ? "no such file" : text;
}

// The loader's cache is not read: the usual folders stand for it.
std::vector<std::string> LibrarySearchFolders() {
    std::vector<std::string> folders;
    const std::string path = EnvironmentVariable("LD_LIBRARY_PATH");
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(':', begin), path.size());
        if (end > begin) folders.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    for (const char* folder : {"/lib/x86_64-linux-gnu", "/usr/lib/x86_64-linux-gnu", "/lib64",
                               "/usr/lib64", "/lib", "/usr/lib", "/usr/local/lib"}) {
        folders.emplace_back(folder);
    }
    return folders;
}

const char* LibraryExtension() {
    return ".so";
}

bool IsLibraryLoaded(const std::string& fileName) {
    void* const module = dlopen(fileName.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (module != nullptr) dlclose(module);
    return module != nullptr;
}

bool IsLibraryVirtual(const std::string&) {
    return false;
}

}  // namespace platform
