// The smallest host: prints the names of all effects of a plug-in in the current folder.
#include <dlfcn.h>

#include <cstdio>

#include "tarnex/GlobalFxFactory.h"
#include "tarnex/ITarnex.h"

int main() {
    void* library = dlopen("./libtarnex.so", RTLD_NOW);
    if (library == nullptr) return 1;
    void* entry = dlsym(library, "GetTarnex");
    std::shared_ptr<tarnex::ITarnex> manager;
    reinterpret_cast<decltype(&GetTarnex)>(entry)(manager);
    if (manager == nullptr) return 2;  // another process has it
    std::shared_ptr<tarnex::GlobalFXFactory> factory;
    manager->GetFXFactory(L".", L"minimal_plugin.plugin|", L"", 0, factory);
    for (std::uint64_t i = 0; factory != nullptr && i < factory->GetFXCount(); ++i) {
        std::printf("%ls\n", factory->GetFXName(i).c_str());
    }
}
