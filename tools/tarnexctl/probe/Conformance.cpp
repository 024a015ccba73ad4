#include "probe/Conformance.h"

#include <algorithm>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Text.h"
#include "platform/LibrarySearch.h"
#include "platform/Module.h"
#include "probe/Guarded.h"
#include "tarnex/GlobalFxFactory.h"

namespace tarnexctl {
namespace {

constexpr std::uint32_t kMostEffects = 1024;

using Effects = std::vector<std::shared_ptr<fx::IBaseFX>>;

// What an exception said of which effect.
std::string Said(std::string which, std::string_view what) {
    return which.append(": ").append(what);
}

tarnex::PluginEntry* LoadEntry(const std::string& path, ChildReport& report) {
    report.Step("loading the library");
    void* const module = platform::LoadModule(ToWide(path));
    if (module == nullptr) {
        const std::string reason = platform::LastModuleError();
        report.Add("P111", FromSystemBytes(reason));
        return nullptr;
    }
    report.Value("loaded", true);
    return reinterpret_cast<tarnex::PluginEntry*>(platform::ResolveSymbol(module, "CreateFactory"));
}

std::shared_ptr<fx::IVorelFXFactory> MakeFactory(tarnex::PluginEntry* entry, ChildReport& report) {
    report.Step("CreateFactory");
    std::shared_ptr<fx::IVorelFXFactory> factory;
    fx::_eError code = fx::eSuccess;
    if (!Guarded([&] { code = entry(factory); },
                 [&](const std::string& what) { report.Add("P203", what); })) {
        return nullptr;
    }
    if (code != fx::eSuccess) {
        report.Add("P201", helpers::ErrorName(code));
        return nullptr;
    }
    if (factory == nullptr) report.Add("P202", "");
    return factory;
}

// The count, asked twice; 0 when it cannot be had.
std::uint32_t CountOf(fx::IVorelFXFactory& factory, ChildReport& report) {
    report.Step("GetFXCount");
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    if (!Guarded(
            [&] {
                first = factory.GetFXCount();
                second = factory.GetFXCount();
            },
            [&](const std::string& what) { report.Add("P204", what); })) {
        return 0;
    }
    if (first != second) {
        report.Add("P205", std::to_string(first) + ", then " + std::to_string(second));
    } else if (first == 0) {
        report.Add("P206", "");
    }
    return first;
}

void CheckNames(fx::IVorelFXFactory& factory, std::uint32_t count, ChildReport& report) {
    report.Step("GetFXName");
    for (std::uint64_t index = 0; index < count; ++index) {
        std::wstring name;
        const std::string which = "effect " + std::to_string(index);
        if (Guarded([&] { name = factory.GetFXName(index); },
                    [&](const std::string& what) { report.Add("P207", Said(which, what)); }) &&
            name.empty()) {
            report.Add("P208", which);
        }
    }
}

// Indexes that no effect has; one that is 0 when it is cut to 32 bits.
std::vector<std::uint64_t> WrongIndexes(std::uint32_t count) {
    return {count, std::uint64_t{count} + 1, std::uint64_t{1} << 32,
            std::numeric_limits<std::uint64_t>::max()};
}

void CheckWrongIndexes(fx::IVorelFXFactory& factory, std::uint32_t count, ChildReport& report) {
    for (const std::uint64_t index : WrongIndexes(count)) {
        const std::string which = "index " + std::to_string(index);
        report.Step("GetFXName of " + which);
        std::wstring name;
        Guarded([&] { name = factory.GetFXName(index); },
                [&](const std::string& what) { report.Add("P216", Said(which, what)); });
        if (!name.empty()) report.Add("P209", which + ": \"" + ToUtf8(name) + "\"");

        report.Step("CreateFX of " + which);
        std::shared_ptr<fx::IBaseFX> effect;
        fx::_eError code = fx::eWrongFXIdx;
        Guarded([&] { code = factory.CreateFX(index, effect); },
                [&](const std::string& what) { report.Add("P214", Said(which, what)); });
        if (code == fx::eSuccess) report.Add("P213", which);
    }
}

void CheckIds(const Effects& effects, ChildReport& report) {
    std::map<std::wstring, std::size_t> seen;
    for (std::size_t i = 0; i < effects.size(); ++i) {
        const fx::EffectDescriptor* const descriptor =
            effects[i] == nullptr ? nullptr : effects[i]->GetDescriptor();
        if (descriptor == nullptr || descriptor->id.empty()) continue;
        const auto [first, added] = seen.emplace(descriptor->id, i);
        if (!added) {
            report.Add("P304", "effects " + std::to_string(first->second) + " and " +
                                   std::to_string(i) + ": \"" + ToUtf8(descriptor->id) + "\"");
        }
    }
}

// Effects may outlive their factory, and end in any order.
void Release(std::shared_ptr<fx::IVorelFXFactory> factory, Effects effects, ChildReport& report) {
    report.Step("releasing the factory before its effects");
    factory.reset();
    for (std::size_t i = 0; i < effects.size(); ++i) {
        if (effects[i] == nullptr) continue;
        report.Step("using effect " + std::to_string(i) + " after its factory was released");
        std::vector<std::wstring> names;
        Guarded(
            [&] {
                (void)effects[i]->GetDescriptor();
                (void)effects[i]->GetProperties(names);
            },
            [&](const std::string& what) { report.Add("P307", what); });
    }
    for (std::size_t i = 0; i < effects.size(); ++i) {
        report.Step("releasing effect " + std::to_string(i));
        effects[i].reset();
    }
}

}  // namespace

void RunConformance(const std::string& path, const ConformanceScope& scope, ChildReport& report) {
    tarnex::PluginEntry* const entry = LoadEntry(path, report);
    if (entry == nullptr) return;
    std::shared_ptr<fx::IVorelFXFactory> factory = MakeFactory(entry, report);
    if (factory == nullptr) return;
    const std::uint32_t claimed = CountOf(*factory, report);
    report.Value("count", claimed);
    const std::uint32_t count = std::min(claimed, kMostEffects);
    CheckNames(*factory, count, report);
    CheckWrongIndexes(*factory, claimed, report);

    Effects effects;
    for (std::uint64_t index = 0; index < count; ++index) {
        effects.push_back(CheckEffect(*factory, index, scope, report));
    }
    Guarded([&] { CheckIds(effects, report); }, [](const std::string&) { /* reported above */ });
    report.Step("GetFXCount after every effect was created");
    std::uint32_t later = claimed;
    Guarded([&] { later = factory->GetFXCount(); },
            [&](const std::string& what) { report.Add("P204", what); });
    if (later != claimed) {
        report.Add("P205", std::to_string(claimed) + ", at the end " + std::to_string(later));
    }
    Release(std::move(factory), std::move(effects), report);
}

}  // namespace tarnexctl
