#include "compositions/CompositionFactory.h"

#include <utility>

#include "compositions/Composition.h"
#include "compositions/CompositionLoader.h"
#include "helpers/report/Report.h"

namespace compositions {
namespace {

constexpr char kCreateFx[] = "compositions::CompositionFactory::CreateFX";

// There before any static object asks for it, and never destroyed: effects outlive those.
std::shared_ptr<ICompositionEngine>& DefaultEngine() {
    static auto& engine = *new std::shared_ptr<ICompositionEngine>();
    return engine;
}

}  // namespace

CompositionFactory::CompositionFactory(const std::wstring& folder)
    : folder_(folder), engine_(DefaultEngine()) {}

CompositionFactory::~CompositionFactory() = default;

void CompositionFactory::SetDefaultEngine(std::shared_ptr<ICompositionEngine> engine) {
    DefaultEngine() = std::move(engine);
}

std::uint32_t CompositionFactory::GetFXCount() {
    return static_cast<std::uint32_t>(catalogue_.size());
}

std::wstring CompositionFactory::GetFXName(std::uint64_t index) {
    const auto id = indexMap_.find(index);
    return id == indexMap_.end() ? std::wstring() : id->second;
}

fx::_eError CompositionFactory::CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) {
    try {
        // Indexes run over registrations and the count over compositions: when a name was
        // registered twice the last indexes lie beyond the count, and callers rely on it.
        if (index >= GetFXCount()) return helpers::ReportFxError(fx::eWrongFXIdx, kCreateFx);
        const auto entry = catalogue_.find(GetFXName(index));
        if (entry == catalogue_.end()) {
            return helpers::ReportFxError(fx::eWrongFXIdx, kCreateFx);
        }
        out = Make(entry->second.reader);
        return fx::eSuccess;
    } catch (...) {
        return helpers::ReportFxError(fx::eCouldNotCreateFX, kCreateFx);
    }
}

fx::_eError CompositionFactory::CreateFX(const std::wstring& path,
                                         std::shared_ptr<fx::IBaseFX>& out) {
    try {
        CompositionEntry entry;
        if (!LoadCompositionDescription(path, entry)) {
            return helpers::ReportFxError(fx::eCouldNotCreateFX, kCreateFx);
        }
        out = Make(std::move(entry.reader));
        return fx::eSuccess;
    } catch (...) {
        return helpers::ReportFxError(fx::eCouldNotCreateFX, kCreateFx);
    }
}

std::shared_ptr<fx::IBaseFX> CompositionFactory::Make(
    std::shared_ptr<ICompositionReader> reader) const {
    auto composition = std::make_unique<Composition>(std::move(reader));
    if (const auto engine = engine_) engine->Complete(*composition);
    return composition;
}

bool CompositionFactory::RegisterComposition(const std::wstring& composition, bool isPath,
                                             std::wstring& name) {
    const std::wstring path = isPath ? composition : folder_ + L'\\' + composition;
    if (const auto known = pathMap_.find(path); known != pathMap_.end()) {
        name = known->second;
        return false;
    }
    const std::shared_ptr<ICompositionReader> reader = ReadCompositionScript(path);
    if (reader->GetReadStatus() != status::kRead) return false;
    CompositionEntry entry(reader);
    std::wstring id = entry.name + L'\\' + entry.category;
    std::wstring result = id;
    Store(path, std::move(id), std::move(entry));
    name.swap(result);
    return true;
}

// Builds every part before it changes a map, so that running out of memory changes nothing.
void CompositionFactory::Store(const std::wstring& path, std::wstring id, CompositionEntry entry) {
    std::map<std::uint64_t, std::wstring> index{{indexMap_.size(), id}};
    std::map<std::wstring, std::wstring> paths{{path, id}};
    Catalogue added;
    added.emplace(std::move(id), std::move(entry));
    catalogue_.erase(added.begin()->first);  // a later composition of the name takes its place
    catalogue_.merge(added);
    indexMap_.merge(index);
    pathMap_.merge(paths);
}

}  // namespace compositions
