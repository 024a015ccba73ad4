#include "tarnex/GlobalFxFactory.h"

#include <algorithm>
#include <utility>

#include "compositions/CompositionFactory.h"
#include "helpers/report/Report.h"
#include "vorel/Exception.h"

namespace tarnex {

namespace {

constexpr char kCreateFx[] = "tarnex::GlobalFXFactory::CreateFX";
constexpr char kInternalCreateFx[] = "tarnex::GlobalFXFactory::InternalCreateFX";
constexpr char kGetEffects[] = "tarnex::GlobalFXFactory::GetEffects";
constexpr char kRemoveEffect[] = "tarnex::GlobalFXFactory::RemoveEffect";
constexpr char kRegisterEffect[] = "tarnex::GlobalFXFactory::RegisterEffect";

// Where the debugger output says that an exception was caught. People search captured output for
// these, so they stay as they are, wherever the code moves.
constexpr char kFile[] = "GlobalFxFactory";
constexpr int kGetEffectsLine = 146;
constexpr int kCreateByIndexLine = 199;
constexpr int kCreateByPathLine = 210;

// The following turn the exception that is being handled into a reported code; call them from a
// handler alone.

fx::_eError ReportCreateFailure(int line) {
    try {
        throw;
    } catch (const fx::Exception& exception) {
        helpers::ReportException(exception.code, kFile, line, kCreateFx);
        return helpers::ReportFxError(exception.code);
    } catch (...) {
        helpers::ReportUnknownException(kFile, line, kCreateFx);
        return helpers::ReportFxError(fx::eGenericException);
    }
}

_eError ReportListFailure() {
    try {
        throw;
    } catch (const Exception& exception) {
        helpers::ReportException(exception.code, kFile, kGetEffectsLine, kGetEffects);
        return helpers::ReportTarnexError(exception.code);
    } catch (...) {
        helpers::ReportUnknownException(kFile, kGetEffectsLine, kGetEffects);
        return helpers::ReportTarnexError(eGenericException);
    }
}

_eError ReportChangeFailure(const char* operation) {
    try {
        throw;
    } catch (const Exception& exception) {
        return helpers::ReportTarnexError(exception.code, operation);
    } catch (const vorel::Exception&) {
        return helpers::ReportTarnexError(eVorelExceptionCatched, operation);
    } catch (...) {
        return helpers::ReportTarnexError(eGenericException, operation);
    }
}

// Appends what the effect says of itself; false when it says nothing.
bool AppendRecord(std::list<EffectRecord>& effects, std::uint64_t index, fx::IBaseFX* effect) {
    const fx::EffectDescriptor* descriptor = effect != nullptr ? effect->GetDescriptor() : nullptr;
    if (descriptor == nullptr) {
        return false;
    }
    effects.push_back({index, descriptor->flags, descriptor->inputs, descriptor->id, true});
    return true;
}

auto FindByName(std::list<EffectRecord>& effects, const std::wstring& name) {
    return std::find_if(effects.begin(), effects.end(),
                        [&name](const EffectRecord& record) { return record.name == name; });
}

}  // namespace

GlobalFXFactory::GlobalFXFactory(const std::wstring& pluginDirectory,
                                 const std::wstring& pluginList,
                                 const std::wstring& compositionsFolder, std::uint64_t) {
    try {
        Load(pluginDirectory, pluginList, L"CreateFactory");
        for (PluginEntry* entry : Entries()) {
            std::shared_ptr<fx::IVorelFXFactory> factory;
            if (entry(factory) == fx::eSuccess && factory != nullptr) {
                AcceptFactory(std::move(factory));
            }
        }
        compositionFactory_ =
            std::make_shared<compositions::CompositionFactory>(compositionsFolder);
        AcceptFactory(compositionFactory_);
        BuildEffectList();
        SetValid(true);
    } catch (...) {
        // A plug-in that throws costs the whole factory its validity: hosts are told by every
        // operation, and what was built so far stays.
    }
}

GlobalFXFactory::~GlobalFXFactory() = default;

void GlobalFXFactory::AcceptFactory(std::shared_ptr<fx::IVorelFXFactory> factory) {
    total_ += factory->GetFXCount();
    factories_.push_back(std::move(factory));
}

// Every effect is created once, only to learn its descriptor.
void GlobalFXFactory::BuildEffectList() {
    for (std::uint64_t index = 0; index < total_; ++index) {
        std::shared_ptr<fx::IBaseFX> effect;
        if (InternalCreateFX(index, effect) == fx::eSuccess) {
            AppendRecord(effects_, index, effect.get());
        }
    }
}

// Each factory is asked for its count on every walk: counts may change between calls, and callers
// can see it.
fx::IVorelFXFactory* GlobalFXFactory::ResolveIndex(std::uint64_t index, std::uint64_t& localIndex) {
    localIndex = index;
    for (const auto& factory : factories_) {
        const std::uint64_t count = factory->GetFXCount();
        if (localIndex < count) {
            return factory.get();
        }
        localIndex -= count;
    }
    return nullptr;
}

fx::_eError GlobalFXFactory::InternalCreateFX(std::uint64_t index,
                                              std::shared_ptr<fx::IBaseFX>& out) {
    out.reset();
    std::uint64_t localIndex = 0;
    if (fx::IVorelFXFactory* owner = ResolveIndex(index, localIndex)) {
        return owner->CreateFX(localIndex, out);
    }
    return helpers::ReportFxError(fx::eCouldNotCreateFX, kInternalCreateFx);
}

std::uint32_t GlobalFXFactory::GetFXCount() {
    return Valid() ? static_cast<std::uint32_t>(total_) : 0;
}

std::wstring GlobalFXFactory::GetFXName(std::uint64_t index) {
    try {
        if (Valid() && index < total_) {
            std::uint64_t localIndex = 0;
            if (fx::IVorelFXFactory* owner = ResolveIndex(index, localIndex)) {
                return owner->GetFXName(localIndex);
            }
        }
    } catch (...) {
        // A name that cannot be had is empty, whatever the reason.
    }
    return {};
}

fx::_eError GlobalFXFactory::CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) {
    fx::_eError code;
    try {
        if (!Valid()) {
            return helpers::ReportFxError(fx::eInvalidFxFactoryObject, kCreateFx);
        }
        if (index >= total_) {
            return helpers::ReportFxError(fx::eWrongFXIdx, kCreateFx);
        }
        code = InternalCreateFX(index, out);
        if (code == fx::eSuccess) {
            return code;
        }
    } catch (...) {
        code = ReportCreateFailure(kCreateByIndexLine);
    }
    out.reset();  // whatever a plug-in left there before it failed
    return code;
}

fx::_eError GlobalFXFactory::CreateFX(const std::wstring& path, std::shared_ptr<fx::IBaseFX>& out) {
    try {
        if (!Valid()) {
            return helpers::ReportFxError(fx::eInvalidFxFactoryObject, kCreateFx);
        }
        std::shared_ptr<fx::IBaseFX> effect;
        const fx::_eError code = compositionFactory_->CreateFX(path, effect);
        if (code == fx::eSuccess) {
            out = std::move(effect);
        }
        return code;
    } catch (...) {
        return ReportCreateFailure(kCreateByPathLine);
    }
}

_eError GlobalFXFactory::RemoveEffect(const std::wstring& name) {
    try {
        const auto record = FindByName(effects_, name);
        if (record == effects_.end()) {
            return helpers::ReportTarnexError(eWrongFXName, kRemoveEffect);
        }
        record->enabled = false;
        return eSuccess;
    } catch (...) {
        return ReportChangeFailure(kRemoveEffect);
    }
}

_eError GlobalFXFactory::RegisterEffect(const std::wstring& composition, bool isPath) {
    try {
        std::wstring name;
        if (compositionFactory_ != nullptr &&
            compositionFactory_->RegisterComposition(composition, isPath, name)) {
            return AppendRegistered();
        }
        const auto record = FindByName(effects_, name);
        if (compositionFactory_ == nullptr || record == effects_.end() || record->enabled) {
            return helpers::ReportTarnexError(eCouldNotRegisterNewComposition, kRegisterEffect);
        }
        record->enabled = true;
        return eSuccess;
    } catch (...) {
        return ReportChangeFailure(kRegisterEffect);
    }
}

// The new composition is the last index. The count stays raised when it cannot be created: it is in
// the composition factory's catalogue all the same.
_eError GlobalFXFactory::AppendRegistered() {
    const std::uint64_t index = total_++;
    std::shared_ptr<fx::IBaseFX> effect;
    if (InternalCreateFX(index, effect) != fx::eSuccess ||
        !AppendRecord(effects_, index, effect.get())) {
        return helpers::ReportTarnexError(eErrorCreatingEffect, kRegisterEffect);
    }
    return eSuccess;
}

_eError GlobalFXFactory::GetEffects(std::list<EffectRecord>& out) {
    try {
        if (&out != &effects_) {
            std::list<EffectRecord> copy(effects_);
            out.swap(copy);
        }
        return eSuccess;
    } catch (...) {
        return ReportListFailure();
    }
}

}  // namespace tarnex
