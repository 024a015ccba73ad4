#pragma once

// The built-in factory of compositions. Caller serialises.

#include <cstdint>
#include <memory>
#include <string>

#include "fx/IVorelFXFactory.h"

namespace compositions {

class CompositionFactory : public fx::IVorelFXFactory {
public:
    explicit CompositionFactory(const std::wstring& folder);

    /* 0 */ ~CompositionFactory() override;
    /* 1 */ std::uint32_t GetFXCount() override;
    /* 2 */ std::wstring GetFXName(std::uint64_t index) override;
    /* 3 */ fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override;

    // Creates a composition from a script or archive file. fx::eCouldNotCreateFX when that is not
    // possible; `out` is unchanged then.
    /* 4 */ virtual fx::_eError CreateFX(const std::wstring& path,
                                         std::shared_ptr<fx::IBaseFX>& out);

    // Adds a composition to the catalogue. True when it is new, and its index is the last; false
    // when nothing was added, and `name` then is the composition that was meant, or unchanged.
    bool RegisterComposition(const std::wstring& composition, bool isPath, std::wstring& name);

private:
    std::wstring folder_;
};

}  // namespace compositions
