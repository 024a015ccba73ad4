#include "probe/OwnFactory.h"

#include <limits>
#include <list>
#include <memory>

#include "frame/Text.h"
#include "platform/LibrarySearch.h"
#include "platform/Module.h"
#include "probe/Guarded.h"
#include "tarnex/GlobalFxFactory.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

// Shows what a host never sees: whether the library was loaded at all.
class OwnFactory : public tarnex::GlobalFXFactory {
public:
    // The factory puts the separator between folder and name itself.
    explicit OwnFactory(const std::string& path)
        : GlobalFXFactory(ToWide(FromPath(ToPath(path).parent_path())),
                          ToWide(FromPath(ToPath(path).filename())) + L"|", L"", 0) {}

    bool Loaded() const { return !Libraries().empty() && Libraries().front()->Module() != nullptr; }
    tarnex::PluginEntry* Entry() const {
        return Libraries().empty() ? nullptr : Libraries().front()->Entry();
    }

    // Whether construction went through. If not, something of the plug-in threw.
    bool Usable() {
        std::shared_ptr<fx::IBaseFX> none;
        return CreateFX(std::numeric_limits<std::uint64_t>::max(), none) == fx::eWrongFXIdx;
    }
};

class Explanation {
public:
    explicit Explanation(Json& findings) : findings_(findings) {}

    void Add(const char* code, const std::string& detail) {
        findings_.push_back({{"code", code}, {"detail", detail}});
    }

    // Calls; what is thrown becomes the finding of that code. True when it came back.
    template <typename Call>
    bool Try(const char* code, const std::string& which, Call call) {
        return Guarded(call, [&](const std::string& what) { Add(code, which + what); });
    }

private:
    Json& findings_;
};

// The factory says nothing of why it has no effects: its way is gone again, step by step, up to the
// first one that fails.
void ExplainEntry(tarnex::PluginEntry* entry, Explanation& explanation) {
    std::shared_ptr<fx::IVorelFXFactory> factory;
    fx::_eError code = fx::eSuccess;
    if (!explanation.Try("P203", "", [&] { code = entry(factory); })) return;
    if (code != fx::eSuccess) return explanation.Add("P201", helpers::ErrorName(code));
    if (factory == nullptr) return explanation.Add("P202", "");
    std::uint32_t count = 0;
    if (!explanation.Try("P204", "", [&] { count = factory->GetFXCount(); })) return;
    if (count == 0) return explanation.Add("P206", "");
    for (std::uint64_t index = 0; index < count; ++index) {
        const std::string which = "effect " + std::to_string(index) + ": ";
        std::shared_ptr<fx::IBaseFX> effect;
        code = fx::eSuccess;
        const auto create = [&] { code = factory->CreateFX(index, effect); };
        if (!explanation.Try("P211", which, create)) return;
        if (code != fx::eSuccess || effect == nullptr) continue;
        const auto describe = [&] { (void)effect->GetDescriptor(); };
        if (!explanation.Try("P302", which, describe)) return;
    }
}

void ExplainNothing(const OwnFactory& factory, const std::string& path, Explanation& explanation) {
    if (ToPath(path).filename().native().find(fs::path::value_type{'|'}) !=
        fs::path::string_type::npos) {
        return explanation.Add("P111", "a host's list cannot name it: \"|\" ends a name there");
    }
    if (!factory.Loaded()) {
        (void)platform::LoadModule(ToWide(path));
        const std::string reason = platform::LastModuleError();
        return explanation.Add("P111", FromSystemBytes(reason));
    }
    if (factory.Entry() == nullptr) return explanation.Add("P105", "");
    ExplainEntry(factory.Entry(), explanation);
}

// Effects that are counted and have no record: they cannot be created, or say nothing of
// themselves.
void ExplainMissing(OwnFactory& factory, std::uint64_t index, Explanation& explanation) {
    const std::string which = "effect " + std::to_string(index);
    std::shared_ptr<fx::IBaseFX> effect;
    const fx::_eError code = factory.CreateFX(index, effect);
    if (code != fx::eSuccess) {
        explanation.Add("P210", which + ": " + helpers::ErrorName(code));
    } else {
        explanation.Add(effect == nullptr ? "P212" : "P301", which);
    }
}

}  // namespace

Json ListLibrary(const std::string& path, ChildReport& report) {
    report.Step("building a factory over " + FromPath(ToPath(path).filename()));
    Json said = {{"count", 0}, {"effects", Json::array()}, {"findings", Json::array()}};
    Explanation explanation(said["findings"]);
    OwnFactory factory(path);
    const std::uint32_t count = factory.GetFXCount();
    if (!factory.Usable() || count == 0) {
        ExplainNothing(factory, path, explanation);
        return said;
    }
    said["count"] = count;
    std::list<tarnex::EffectRecord> records;
    (void)factory.GetEffects(records);
    std::uint64_t next = 0;
    for (const tarnex::EffectRecord& record : records) {
        for (; next < record.index; ++next) ExplainMissing(factory, next, explanation);
        next = record.index + 1;
        said["effects"].push_back({{"index", record.index},
                                   {"name", ToUtf8(record.name)},
                                   {"flags", record.flags},
                                   {"inputs", record.inputs}});
        if (record.name.empty()) explanation.Add("P303", "effect " + std::to_string(record.index));
    }
    for (; next < count; ++next) ExplainMissing(factory, next, explanation);
    return said;
}

}  // namespace tarnexctl
