#pragma once

// The one effect factory that a host sees: every effect of every plug-in library and the built-in
// compositions behind one global index. Obtained from ITarnex::GetFXFactory. Caller serialises all
// operations. No operation lets an exception out.

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "base_types/Validator.h"
#include "fx/IVorelFXFactory.h"
#include "tarnex/Errors.h"
#include "tarnex/IEffectsEnumerator.h"
#include "tarnex/PluginsFactory.h"

namespace compositions {
class CompositionFactory;
}

namespace tarnex {

// What a plug-in library exports as "CreateFactory", with plain C naming: fills the empty pointer
// with the plug-in's factory. A library that returns anything but fx::eSuccess, or leaves the
// pointer empty, is passed over.
using PluginEntry = fx::_eError(std::shared_ptr<fx::IVorelFXFactory>&);

class GlobalFXFactory : public PluginsFactory<PluginEntry>,
                        public fx::IVorelFXFactory,
                        public IEffectsEnumerator,
                        public base_types::Validator {
public:
    // Never throws for what a plug-in does: the object is then left not valid, with what was built.
    GlobalFXFactory(const std::wstring& pluginDirectory, const std::wstring& pluginList,
                    const std::wstring& compositionsFolder, std::uint64_t reserved);

    // RemoveEffect and RegisterEffect stand before the first CreateFX, and GetEffects last: no
    // other order gives these slots under both compilers' layouts.
    /* 0 */ ~GlobalFXFactory() override;
    GlobalFXFactory(const GlobalFXFactory&) = delete;
    GlobalFXFactory& operator=(const GlobalFXFactory&) = delete;

    // Number of effects; 0 when the factory is not valid.
    /* 1 */ std::uint32_t GetFXCount() override;

    // The effect's name; empty for an unknown index or a factory that is not valid.
    /* 2 */ std::wstring GetFXName(std::uint64_t index) override;

    // Marks the record of the first effect of exactly this name as not enabled. It stays in the
    // list and can still be created. eWrongFXName when there is none.
    /* 4 */ virtual _eError RemoveEffect(const std::wstring& name);

    // Adds a composition from its script: `composition` is a path when `isPath`, else a name within
    // the compositions folder. One that was registered before and removed since is enabled again.
    // eCouldNotRegisterNewComposition when neither was possible, eErrorCreatingEffect when it was
    // added but cannot be created.
    /* 5 */ virtual _eError RegisterEffect(const std::wstring& composition, bool isPath);

    // Creates the effect at a global index. fx::eInvalidFxFactoryObject and fx::eWrongFXIdx leave
    // `out` unchanged; on a failure behind that it is empty.
    /* 3 */ fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override;

    // Creates a composition from a script or archive file, without registering it. `out` is
    // unchanged on failure.
    /* 6 */ virtual fx::_eError CreateFX(const std::wstring& path,
                                         std::shared_ptr<fx::IBaseFX>& out);

    // See IEffectsEnumerator. Passing the factory's own list changes nothing.
    _eError GetEffects(std::list<EffectRecord>& out) override;

private:
    fx::_eError InternalCreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out);
    void AcceptFactory(std::shared_ptr<fx::IVorelFXFactory> factory);
    void BuildEffectList();
    _eError AppendRegistered();
    fx::IVorelFXFactory* ResolveIndex(std::uint64_t index, std::uint64_t& localIndex);

    std::vector<std::shared_ptr<fx::IVorelFXFactory>> factories_;  // load order, compositions last
    std::uint64_t total_ = 0;
    std::list<EffectRecord> effects_;
    std::shared_ptr<compositions::CompositionFactory> compositionFactory_;
};

}  // namespace tarnex
