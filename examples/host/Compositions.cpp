#include "Compositions.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <list>
#include <string>
#include <vector>

#include "System.h"
#include "Text.h"

namespace host {

namespace {

constexpr std::uint32_t kScriptFilter = 132;
constexpr std::uint32_t kScriptNoFilter = 130;

std::vector<std::filesystem::path> Scripts(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> scripts;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (entry.path().extension() == ".txt") {
            scripts.push_back(entry.path());
        }
    }
    std::sort(scripts.begin(), scripts.end());
    return scripts;
}

void Register(tarnex::GlobalFXFactory& factory, const std::wstring& composition, bool isPath) {
    const tarnex::_eError code = factory.RegisterEffect(composition, isPath);
    std::printf("  %-24s %s\n",
                Utf8(composition.substr(composition.find_last_of(L"/\\") + 1)).c_str(),
                Name(code).c_str());
}

void Describe(const char* what, fx::IBaseFX& effect) {
    const fx::EffectDescriptor& descriptor = *effect.GetDescriptor();
    std::printf("  %-12s %-24s flags %u, inputs %" PRIu64 ", valid %s\n", what,
                Utf8(descriptor.id).c_str(), static_cast<unsigned>(descriptor.flags),
                descriptor.inputs, effect.IsValid() ? "yes" : "no (the engine fills it)");
}

void ShowFirst(tarnex::GlobalFXFactory& factory, std::uint32_t flags, const char* what) {
    std::list<tarnex::EffectRecord> effects;
    (void)factory.GetEffects(effects);  // an empty list shows nothing
    // A plug-in may use the same flags; compositions stand behind all plug-ins' effects.
    const auto record = std::find_if(effects.rbegin(), effects.rend(),
                                     [flags](const auto& each) { return each.flags == flags; });
    std::shared_ptr<fx::IBaseFX> effect;
    if (record != effects.rend() && factory.CreateFX(record->index, effect) == fx::eSuccess) {
        Describe(what, *effect);
    }
}

std::shared_ptr<fx::IBaseFX> CreateByPath(tarnex::GlobalFXFactory& factory,
                                          const std::filesystem::path& file) {
    std::shared_ptr<fx::IBaseFX> effect;
    const fx::_eError code = factory.CreateFX(Wide(file), effect);
    std::printf("  from %-20s %s\n", Utf8(Wide(file.filename())).c_str(), Name(code).c_str());
    return effect;
}

}  // namespace

void RegisterCompositions(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder) {
    const std::vector<std::filesystem::path> scripts = Scripts(folder);
    std::printf("\nRegister the %zu scripts of %s\n", scripts.size(), Utf8(Wide(folder)).c_str());
    for (const std::filesystem::path& script : scripts) {
        // The last one by its path, to show both ways.
        const bool byPath = script == scripts.back();
        Register(factory, byPath ? Wide(script) : Wide(script.filename()), byPath);
    }
    std::printf("Register one again, and one that is not there\n");
    if (!scripts.empty()) {
        Register(factory, Wide(scripts.front().filename()), false);
    }
    Register(factory, L"no_such_script.txt", false);
}

void ShowCompositions(tarnex::GlobalFXFactory& factory) {
    std::printf("\nDescriptors\n");
    ShowFirst(factory, kScriptFilter, "filter");
    ShowFirst(factory, kScriptNoFilter, "no filter");
}

void ReviveComposition(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder) {
    const std::vector<std::filesystem::path> scripts = Scripts(folder);
    std::shared_ptr<fx::IBaseFX> effect;
    if (scripts.empty() || factory.CreateFX(Wide(scripts.front()), effect) != fx::eSuccess) {
        return;
    }
    const std::wstring& name = effect->GetDescriptor()->id;
    std::printf("\nRemove and revive %s\n", Utf8(name).c_str());
    std::printf("  remove: %s\n", Name(factory.RemoveEffect(name)).c_str());
    Register(factory, Wide(scripts.front().filename()), false);
}

void ShowArchive(tarnex::GlobalFXFactory& factory, const std::filesystem::path& folder) {
    const std::vector<std::filesystem::path> scripts = Scripts(folder);
    if (scripts.empty()) {
        return;
    }
    std::filesystem::path archive = scripts.front();
    archive.replace_extension(".mxf");
    std::error_code missing;
    std::filesystem::remove(archive, missing);
    std::printf("\nAn archive, written and read back\n");
    if (!WriteArchives(true)) {
        std::printf("  the settings cannot be written\n");
        return;
    }
    CreateByPath(factory, scripts.front());
    if (!WriteArchives(false)) {
        std::printf("  the settings cannot be put back\n");
    }
    const auto size = std::filesystem::file_size(archive, missing);
    std::printf("  %s: %ju bytes\n", Utf8(Wide(archive.filename())).c_str(),
                missing ? std::uintmax_t{0} : size);
    if (const auto effect = CreateByPath(factory, archive)) {
        Describe("archived", *effect);
    }
}

}  // namespace host
