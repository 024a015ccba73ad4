// An example host: loads the plug-in manager at run time, shows what a folder of plug-in libraries
// offers and works with some of the effects. Nothing of the library is linked.
//
//     host [--enable-log] [plug-in folder [compositions folder]]
//
// The folders are "plugins" and "compositions" beside the program unless given. --enable-log first
// turns the trace log on.

#include <cstdio>
#include <string>
#include <vector>

#include "Compositions.h"
#include "EffectTable.h"
#include "PluginList.h"
#include "Properties.h"
#include "System.h"
#include "Text.h"
#include "TraceLog.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/ITarnex.h"

namespace host {

namespace {

struct Options {
    bool enableLog = false;
    std::filesystem::path plugins = ProgramFolder() / "plugins";
    std::filesystem::path compositions = ProgramFolder() / "compositions";
};

Options ReadOptions(const std::vector<std::filesystem::path>& arguments) {
    Options options;
    std::vector<std::filesystem::path*> folders = {&options.compositions, &options.plugins};
    for (const std::filesystem::path& argument : arguments) {
        if (argument == "--enable-log") {
            options.enableLog = true;
        } else if (!folders.empty()) {
            *folders.back() = argument;
            folders.pop_back();
        }
    }
    return options;
}

std::shared_ptr<tarnex::GlobalFXFactory> BuildFactory(GetTarnexFunction getTarnex,
                                                      const Options& options) {
    std::shared_ptr<tarnex::ITarnex> manager;
    getTarnex(manager);
    if (manager == nullptr) {
        std::printf("Another process on this machine is using the plug-in manager.\n");
        return nullptr;
    }
    const std::wstring list = PluginList(options.plugins);
    std::printf("Plug-ins in %s\n  %s\n\n", Utf8(Wide(options.plugins)).c_str(),
                Utf8(list).c_str());
    std::shared_ptr<tarnex::GlobalFXFactory> factory;
    const tarnex::_eError code =
        manager->GetFXFactory(Wide(options.plugins), list, Wide(options.compositions), 0, factory);
    if (code != tarnex::eSuccess) {
        std::printf("No effect factory: %s\n", Name(code).c_str());
    }
    return factory;
}

std::shared_ptr<fx::IBaseFX> Create(tarnex::GlobalFXFactory& factory, std::uint64_t index) {
    std::shared_ptr<fx::IBaseFX> effect;
    const fx::_eError code = factory.CreateFX(index, effect);
    std::printf("Create effect %llu (%s): %s\n", static_cast<unsigned long long>(index),
                Utf8(factory.GetFXName(index)).c_str(), Name(code).c_str());
    return effect;
}

void ShowEffects(tarnex::GlobalFXFactory& factory) {
    std::printf("%u effects\n", factory.GetFXCount());
    PrintEffects(factory);
    for (std::uint64_t index = 0; index < factory.GetFXCount(); ++index) {
        std::printf("\n");
        if (const auto effect = Create(factory, index)) {
            PrintProperties(*effect);
            ChangeProperties(*effect);
        }
    }
}

void UseCompositions(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder) {
    RegisterCompositions(factory, folder);
    std::printf("\n%u effects\n", factory.GetFXCount());
    PrintEffects(factory);
    ShowCompositions(factory);
    ReviveComposition(factory, folder);
    ShowArchive(factory, folder);
}

void RemoveAndList(tarnex::GlobalFXFactory& factory) {
    std::list<tarnex::EffectRecord> effects;
    if (factory.GetEffects(effects) != tarnex::eSuccess || effects.empty()) {
        return;
    }
    const std::wstring& name = effects.front().name;
    std::printf("\nRemove %s: %s\n", Utf8(name).c_str(), Name(factory.RemoveEffect(name)).c_str());
    std::printf("Remove No Such Effect: %s\n",
                Name(factory.RemoveEffect(L"No Such Effect")).c_str());
    PrintEffects(factory);
    Create(factory, effects.front().index);
    Create(factory, factory.GetFXCount());
}

int Run(const Options& options) {
    if (options.enableLog && !EnableTraceLog()) {
        std::printf("The log's settings cannot be written.\n");
    }
    const GetTarnexFunction getTarnex = LoadTarnex(ProgramFolder() / kLibraryFile);
    if (getTarnex == nullptr) {
        std::printf("%s does not load.\n", kLibraryFile);
        return 1;
    }
    {
        const auto factory = BuildFactory(getTarnex, options);
        if (factory == nullptr) {
            return 1;
        }
        ShowEffects(*factory);
        RemoveAndList(*factory);
        UseCompositions(*factory, options.compositions);
    }
    UnloadTarnex();
    std::printf("\nThe trace log\n");
    PrintTraceLog(ProgramFolder() / "Logs");
    return 0;
}

}  // namespace

}  // namespace host

int main(int count, char** arguments) {
    host::PrepareOutput();
    return host::Run(host::ReadOptions(host::Arguments(count, arguments)));
}
