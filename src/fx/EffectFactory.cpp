#include "sdk/EffectFactory.h"

#include "helpers/report/Report.h"

namespace fx {
namespace {

constexpr char kCreateFX[] = "fx::EffectFactory::CreateFX";
constexpr char kCreateFactory[] = "CreateFactory";

// Runs what an author wrote and turns whatever it throws into a code. An exception never counts as
// success, whatever code it carries.
template <class Body>
_eError Contain(Body body) {
    try {
        return body();
    } catch (const Exception& exception) {
        return exception.code == eSuccess ? eGenericException : exception.code;
    } catch (...) {
        return eGenericException;
    }
}

}  // namespace

std::uint32_t EffectFactory::GetFXCount() {
    return static_cast<std::uint32_t>(entries_.size());
}

std::wstring EffectFactory::GetFXName(std::uint64_t index) {
    try {
        return index < entries_.size() ? entries_[index].name : std::wstring();
    } catch (...) {
        return {};  // out of memory
    }
}

_eError EffectFactory::CreateFX(std::uint64_t index, std::shared_ptr<IBaseFX>& out) {
    if (index >= entries_.size()) {
        return helpers::ReportFxError(eWrongFXIdx, kCreateFX);
    }
    const _eError code = Contain([&] {
        out = entries_[index].make();
        return eSuccess;
    });
    return helpers::ReportFxError(code, kCreateFX);
}

_eError MakeFactory(void (*registerEffects)(EffectFactory&),
                    std::shared_ptr<IVorelFXFactory>& out) {
    const _eError code = Contain([&] {
        auto factory = std::make_shared<EffectFactory>();
        registerEffects(*factory);
        out = std::move(factory);
        return eSuccess;
    });
    return helpers::ReportFxError(code, kCreateFactory);
}

}  // namespace fx
