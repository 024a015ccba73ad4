#include "probe/CompositionList.h"

#include <algorithm>
#include <map>

#include "frame/InputFile.h"
#include "frame/Text.h"
#include "helpers/report/Report.h"
#include "tarnex/GlobalFxFactory.h"

namespace tarnexctl {
namespace {

namespace fs = std::filesystem;

// Every file of the folder but the archives beside the scripts; by name.
std::vector<std::string> ScriptsIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(ExistingFolder(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored) && entry->path().extension() != ".mxf") {
            names.push_back(FromPath(entry->path().filename()));
        }
    }
    if (error) {
        throw Failure(ExitCode::kInputOutput,
                      "the folder " + InQuotes(folder) +
                          " cannot be read: " + FromSystemBytes(error.message()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Registrar {
public:
    Registrar(const std::string& folder, EffectList& list)
        : factory_(L"", L"", ToWide(folder), 0), list_(list) {}

    void Register(const std::string& script, bool isPath) {
        std::list<tarnex::EffectRecord> before;
        (void)factory_.GetEffects(before);
        const tarnex::_eError code = factory_.RegisterEffect(ToWide(script), isPath);
        std::list<tarnex::EffectRecord> after;
        (void)factory_.GetEffects(after);
        if (after.size() > before.size()) from_[after.back().index] = script;
        std::string problem;
        if (code != tarnex::eSuccess) {
            problem = "it is not registered (" + helpers::ErrorName(code) +
                      "); \"tarnexctl check\" says why";
        }
        list_.compositions.push_back({script, problem});
    }

    void Append(std::uint64_t firstIndex, const std::string& folder) {
        std::list<tarnex::EffectRecord> records;
        (void)factory_.GetEffects(records);
        for (const tarnex::EffectRecord& record : records) {
            ListedEffect listed;
            listed.index = firstIndex + record.index;
            listed.localIndex = record.index;
            listed.name = ToUtf8(record.name);
            listed.flags = record.flags;
            listed.inputs = record.inputs;
            listed.enabled = record.enabled;
            listed.isComposition = true;
            const std::string& script = from_[record.index];
            const fs::path inFolder = ToPath(folder) / ToPath(script);
            std::error_code ignored;
            listed.from =
                fs::exists(inFolder, ignored) && !folder.empty() ? FromPath(inFolder) : script;
            list_.effects.push_back(std::move(listed));
        }
    }

private:
    tarnex::GlobalFXFactory factory_;
    EffectList& list_;
    std::map<std::uint64_t, std::string> from_;
};

}  // namespace

void ListCompositions(const Arguments& arguments, EffectList& list) {
    const std::string folder = arguments.ValueOr("--compositions", "");
    Registrar registrar(folder, list);
    if (!folder.empty()) {
        for (const std::string& name : ScriptsIn(folder)) registrar.Register(name, false);
    }
    for (const std::string& script : arguments.Values("--register")) {
        (void)ExistingFile(script);
        registrar.Register(script, true);
    }
    std::uint64_t firstIndex = 0;
    for (const ListedLibrary& library : list.libraries) firstIndex += library.count;
    registrar.Append(firstIndex, folder);
}

}  // namespace tarnexctl
