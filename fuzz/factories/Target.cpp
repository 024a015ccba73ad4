// Sequences of calls on the composition factory and on the global one, each beside a model of it.
// The files that the factories read change between the calls.

#include <algorithm>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "TempFile.h"
#include "compositions/CompositionFactory.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "helpers/report/CapturedOutput.h"
#include "tarnex/GlobalFxFactory.h"

namespace {

// What a file may hold. A script's effect is known by its name and the number of its inputs.
struct Content {
    std::string bytes;
    std::wstring id;  // empty when it is no script that reads
    std::uint64_t inputs = 0;
    bool isArchive = false;
};

Content Script(const std::string& name, const std::string& category, unsigned inputs) {
    std::string text = "[SETUP]\nNAME = \"" + name + "\"\nCATEGORY = \"" + category +
                       "\"\n[SOURCES]\nBack = INPUT\n";
    for (unsigned i = 1; i < inputs; ++i) text += "Back" + std::to_string(i) + " = INPUT\n";
    text += "[EFFECTS]\nB = \"Blur\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";
    const std::string id = name + "\\" + category;
    return {text, {id.begin(), id.end()}, inputs};
}

const std::vector<Content>& Contents() {
    static const std::vector<Content> contents = [] {
        std::vector<Content> all;
        for (const char* name : {"Glow", "Blend", "Text Title"}) {
            for (const char* category : {"Light", "Editing"}) {
                all.push_back(Script(name, category, 1));
                all.push_back(Script(name, category, 3));
            }
        }
        all.push_back({});
        all.push_back({"[SETUP]\nNAME = \"Glow\"\n", {}});
        const auto everything = samples::Everything();
        all.push_back({plain::Write(everything).bytes,
                       std::wstring(everything.name) + L'\\' + std::wstring(everything.category),
                       everything.inputs.size() + everything.numberedInputs.size(), true});
        all.push_back({plain::Write(everything).bytes.substr(0, 300), {}});
        return all;
    }();
    return contents;
}

// The folder that the factories look into, and what its files hold.
class Files {
public:
    Files() : scratch_("a.txt") {}

    static constexpr unsigned kCount = 8;

    // As a host may spell it; `isMissing` files are never there.
    std::wstring Name(unsigned file) const {
        return std::wstring(1, static_cast<wchar_t>(L'a' + file)) + L".txt";
    }
    std::wstring Folder() const { return scratch_.Folder().wstring(); }

    void Put(unsigned file, const Content& content) {
        const std::filesystem::path path = scratch_.Folder() / Name(file);
        std::ofstream stream(path, std::ios::binary | std::ios::trunc);
        stream.write(content.bytes.data(), static_cast<std::streamsize>(content.bytes.size()));
        held_[file] = &content;
    }
    void Remove(unsigned file) {
        std::filesystem::remove(scratch_.Folder() / Name(file));
        held_.erase(file);
    }
    void RemoveAll() {
        while (!held_.empty()) Remove(held_.begin()->first);
    }
    // Null for a file that is not there.
    const Content* Held(unsigned file) const {
        const auto found = held_.find(file);
        return found == held_.end() ? nullptr : found->second;
    }

private:
    fuzz::TempFile scratch_;
    std::map<unsigned, const Content*> held_;
};

struct CompositionModel {
    std::map<std::wstring, std::uint64_t> catalogue;  // ids, to inputs
    std::vector<std::wstring> registered;             // ids in the order of registration
    std::map<std::wstring, std::wstring> paths;

    // Whether it is added; the name is left alone when there is none.
    bool Register(const std::wstring& path, const Content* content, std::wstring& name) {
        if (const auto known = paths.find(path); known != paths.end()) {
            name = known->second;
            return false;
        }
        if (!content || content->id.empty() || content->isArchive) return false;
        name = content->id;
        catalogue[name] = content->inputs;
        registered.push_back(name);
        paths[path] = name;
        return true;
    }
    std::wstring Name(std::uint64_t index) const {
        return index < registered.size() ? registered[index] : std::wstring();
    }
    bool CanCreate(std::uint64_t index) const { return index < catalogue.size(); }
};

struct Request {
    std::wstring composition;
    bool isPath;
    std::wstring path;       // what it comes to
    const Content* content;  // null for none
};

class Run {
public:
    Run(fuzz::Input input, Files& files)
        : input_(input),
          files_(files),
          factory_(files.Folder()),
          global_(TARNEX_FUZZ_PLUGINS, TARNEX_FUZZ_PLUGIN_LIST, files.Folder(), 0) {
        global_.GetEffects(records_);
        pluginEffects_ = total_ = global_.GetFXCount();
        fuzz::Check(total_ > 0 && records_.size() == total_, "the plug-in's effects");
        for (const auto& record : records_) pluginNames_.push_back(record.name);
    }

    void Play() {
        while (!input_.IsEmpty()) {
            Step(input_.Byte());
            captured::TakeTraced();
            captured::TakeDebugged();
        }
        CompareLists();
    }

private:
    void Step(unsigned choice) {
        switch (choice % 16) {
            case 0:
            case 1:
            case 2:
                return files_.Put(input_.Below(Files::kCount), input_.Pick(Contents()));
            case 3:
                return files_.Remove(input_.Below(Files::kCount));
            case 4:
            case 5:
                return Register();
            case 6:
                return CreateByIndex();
            case 7:
                return CreateByPath(factory_);
            case 8:
            case 9:
            case 10:
                return RegisterGlobally();
            case 11:
                return RemoveGlobally();
            case 12:
            case 13:
                return CreateGlobally();
            case 14:
                return CreateByPath(global_);
            default:
                return CompareLists();
        }
    }

    Request MakeRequest() {
        const unsigned spelling = input_.Below(8);
        const unsigned file = input_.Below(Files::kCount);
        Request request{files_.Name(file), spelling % 2 == 1, {}, files_.Held(file)};
        if (spelling == 2) request = {L"none", false, {}, nullptr};
        if (spelling == 4) request.composition = L".\\" + request.composition;
        if (spelling == 3) request = {L"", true, {}, nullptr};
        if (request.isPath && spelling != 3) {
            request.composition =
                files_.Folder() + (spelling == 5 ? L"\\" : L"/") + request.composition;
        }
        request.path =
            request.isPath ? request.composition : files_.Folder() + L'\\' + request.composition;
        return request;
    }
    std::uint64_t Index(std::uint64_t count) {
        const unsigned choice = input_.Byte();
        if (choice >= 0xF8) return input_.LongNumber();
        return count == 0 ? choice : choice % (count + 2);
    }

    void Register() {
        const Request request = MakeRequest();
        std::wstring name = L"before";
        std::wstring expected = name;
        const bool isAdded = model_.Register(request.path, request.content, expected);
        fuzz::Check(
            factory_.RegisterComposition(request.composition, request.isPath, name) == isAdded,
            "the registration");
        fuzz::Check(name == expected, "the registered name");
    }
    void CreateByIndex() {
        const std::uint64_t index = Index(model_.registered.size());
        fuzz::Check(factory_.GetFXCount() == model_.catalogue.size(), "the count");
        fuzz::Check(factory_.GetFXName(index) == model_.Name(index), "a name");
        std::shared_ptr<fx::IBaseFX> effect;
        const fx::_eError code = factory_.CreateFX(index, effect);
        if (!model_.CanCreate(index)) {
            fuzz::Check(code == fx::eWrongFXIdx && !effect, "a bad index creates");
            return;
        }
        fuzz::Check(code == fx::eSuccess, "cannot be created");
        ExpectEffect(*effect, model_.Name(index), model_.catalogue.at(model_.Name(index)));
    }
    template <class Factory>
    void CreateByPath(Factory& factory) {
        const Request request = MakeRequest();
        const auto before = std::make_shared<int>();
        std::shared_ptr<fx::IBaseFX> effect(before, nullptr);
        const fx::_eError code = factory.CreateFX(request.path, effect);
        if (!request.content || request.content->id.empty()) {
            fuzz::Check(code == fx::eCouldNotCreateFX, "a bad file creates");
            fuzz::Check(before.use_count() == 2, "the pointer changed");
            return;
        }
        fuzz::Check(code == fx::eSuccess, "a file that cannot be created");
        ExpectEffect(*effect, request.content->id, request.content->inputs);
    }
    static void ExpectEffect(fx::IBaseFX& effect, const std::wstring& id, std::uint64_t inputs) {
        fuzz::Check(effect.GetDescriptor()->id == id, "the effect's name");
        fuzz::Check(effect.GetDescriptor()->inputs == inputs, "the effect's inputs");
    }

    // The composition that a global index comes to; nothing for an index without one.
    bool Resolve(std::uint64_t index, std::uint64_t& local) const {
        local = index - pluginEffects_;
        return index >= pluginEffects_ && local < globalModel_.catalogue.size();
    }
    auto FindRecord(const std::wstring& name) {
        return std::find_if(records_.begin(), records_.end(),
                            [&](const auto& record) { return record.name == name; });
    }
    tarnex::_eError ExpectedRegistration(const Request& request) {
        std::wstring name;
        if (globalModel_.Register(request.path, request.content, name)) {
            const std::uint64_t index = total_++;
            std::uint64_t local = 0;
            if (!Resolve(index, local)) return tarnex::eErrorCreatingEffect;
            const std::wstring id = globalModel_.Name(local);
            records_.push_back({index, 0x82, globalModel_.catalogue.at(id), id, true});
            return tarnex::eSuccess;
        }
        const auto record = FindRecord(name);
        if (record == records_.end() || record->enabled) {
            return tarnex::eCouldNotRegisterNewComposition;
        }
        record->enabled = true;
        return tarnex::eSuccess;
    }
    void RegisterGlobally() {
        const Request request = MakeRequest();
        const tarnex::_eError expected = ExpectedRegistration(request);
        const tarnex::_eError code = global_.RegisterEffect(request.composition, request.isPath);
        fuzz::Check(code == expected, "registering: " + std::to_string(code) + " and not " +
                                          std::to_string(expected));
    }
    void RemoveGlobally() {
        const unsigned choice = input_.Byte();
        std::wstring name = L"none";
        if (choice < 0x40) {
            name = pluginNames_[choice % pluginNames_.size()];
        } else if (choice < 0xF0) {
            name = Contents()[choice % Contents().size()].id;
        }
        const auto record = FindRecord(name);
        const bool isThere = record != records_.end();
        if (isThere) record->enabled = false;
        fuzz::Check(
            global_.RemoveEffect(name) == (isThere ? tarnex::eSuccess : tarnex::eWrongFXName),
            "the removal");
    }
    void CreateGlobally() {
        const std::uint64_t index = Index(total_);
        std::uint64_t local = 0;
        const bool isComposition = index < total_ && Resolve(index, local);
        std::wstring name;
        if (index < pluginEffects_) name = pluginNames_[index];
        if (isComposition) name = globalModel_.Name(local);
        fuzz::Check(global_.GetFXCount() == total_, "the global count");
        // A plug-in's names are its factory's, which need not be its descriptors'.
        if (index >= pluginEffects_) fuzz::Check(global_.GetFXName(index) == name, "a global name");

        const auto before = std::make_shared<int>();
        std::shared_ptr<fx::IBaseFX> effect(before, nullptr);
        const fx::_eError code = global_.CreateFX(index, effect);
        if (index >= total_) {
            fuzz::Check(code == fx::eWrongFXIdx, "a bad global index creates");
            fuzz::Check(before.use_count() == 2, "the pointer changed");
        } else if (index < pluginEffects_ || isComposition) {
            fuzz::Check(code == fx::eSuccess, "cannot be created globally");
            fuzz::Check(effect->GetDescriptor()->id == name, "another effect");
        } else {
            fuzz::Check(code == fx::eCouldNotCreateFX && !effect, "an index without an effect");
        }
    }
    void CompareLists() {
        std::list<tarnex::EffectRecord> records;
        fuzz::Check(global_.GetEffects(records) == tarnex::eSuccess, "the list");
        const auto same = [](const auto& one, const auto& other) {
            return one.index == other.index && one.flags == other.flags &&
                   one.inputs == other.inputs && one.name == other.name &&
                   one.enabled == other.enabled;
        };
        fuzz::Check(
            std::equal(records.begin(), records.end(), records_.begin(), records_.end(), same),
            "the records");
    }

    fuzz::Input input_;
    Files& files_;
    compositions::CompositionFactory factory_;
    tarnex::GlobalFXFactory global_;
    CompositionModel model_;
    CompositionModel globalModel_;
    std::list<tarnex::EffectRecord> records_;
    std::uint64_t total_ = 0;
    std::uint64_t pluginEffects_ = 0;
    std::vector<std::wstring> pluginNames_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Files files;
    files.RemoveAll();
    Run(fuzz::Input(data, size), files).Play();
    return 0;
}
