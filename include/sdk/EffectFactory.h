#pragma once

// A plug-in's factory: names its effects and makes them. A plug-in library writes
//
//     void RegisterEffects(fx::EffectFactory& factory) {
//         factory.Add<Blur>(L"Blur");
//     }
//     TARNEX_PLUGIN(RegisterEffects)
//
// and is complete. Caller serialises.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

namespace fx {

// No operation but Add throws.
class EffectFactory : public IVorelFXFactory {
public:
    // Adds an effect, which gets the next index. `Effect` is made by its default constructor.
    // Throws std::bad_alloc.
    template <class Effect>
    void Add(std::wstring name) {
        entries_.push_back({std::move(name), [] { return MakeEffect<Effect>(); }});
    }

    std::uint32_t GetFXCount() override;
    std::wstring GetFXName(std::uint64_t index) override;

    // eWrongFXIdx for an index that is not offered; when the effect's constructor throws, the code
    // of an fx::Exception, else eGenericException. Reported to the trace log; `out` is unchanged.
    _eError CreateFX(std::uint64_t index, std::shared_ptr<IBaseFX>& out) override;

private:
    using Maker = std::shared_ptr<IBaseFX> (*)();
    struct Entry {
        std::wstring name;
        Maker make;
    };

    template <class Effect>
    static std::shared_ptr<IBaseFX> MakeEffect() {
        return std::make_shared<Effect>();
    }

    std::vector<Entry> entries_;
};

// Makes a factory and lets `registerEffects` fill it. On failure `out` is unchanged: the code of an
// fx::Exception, else eGenericException.
_eError MakeFactory(void (*registerEffects)(EffectFactory&), std::shared_ptr<IVorelFXFactory>& out);

}  // namespace fx

// Exports the entry that the manager looks for in a plug-in library. Once per library, outside any
// namespace.
#define TARNEX_PLUGIN(registerEffects)                  \
    extern "C" TARNEX_EXPORT fx::_eError CreateFactory( \
        std::shared_ptr<fx::IVorelFXFactory>& out) {    \
        return fx::MakeFactory(registerEffects, out);   \
    }
