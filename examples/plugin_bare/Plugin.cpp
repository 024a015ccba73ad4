// An effect library against the bare interfaces: what the SDK otherwise does, by hand. Two effects
// share one class; each has a single property, a number in percent.

#include <atomic>
#include <iterator>
#include <new>

#include "fx/IVorelFXFactory.h"
#include "tarnex/Export.h"

namespace {

using base_types::_eError;

constexpr wchar_t kAmount[] = L"Amount";
constexpr std::int32_t kMin = 0;
constexpr std::int32_t kMax = 100;
constexpr const wchar_t* kEffects[] = {L"Invert", L"Sepia"};

// The property operations answer from any thread: the one value is atomic and its accesses are
// relaxed, for nothing else is published with it.
class PercentEffect : public fx::IBaseFX {
public:
    explicit PercentEffect(const wchar_t* name)
        : descriptor_{fx::eEffectStandard | fx::eEffectFilter, 1, std::wstring(name) + L"\\Bare"} {}

    _eError GetProperties(std::vector<std::wstring>& names) override {
        try {
            names.assign(1, kAmount);
            return base_types::eSuccess;
        } catch (...) {
            return base_types::eGenericException;
        }
    }

    _eError GetPropertyInfo(const std::wstring& name, base_types::PropertyInfo* info) override {
        if (name != kAmount) return base_types::ePropertyNotFound;
        if (!info) return base_types::ePointerCastFailure;
        *info = {sizeof(std::int32_t), 0, base_types::eAccessRead | base_types::eAccessWrite,
                 base_types::ePropertyInt};
        return base_types::eSuccess;
    }

    _eError GetProperty(const std::wstring& name, std::int32_t& value) override {
        if (name != kAmount) return base_types::ePropertyNotFound;
        value = amount_.load(std::memory_order_relaxed);
        return base_types::eSuccess;
    }

    _eError SetProperty(const std::wstring& name, std::int32_t value) override {
        if (name != kAmount) return base_types::ePropertyNotFound;
        if (value < kMin || value > kMax) return base_types::eOutOfRange;
        amount_.store(value, std::memory_order_relaxed);
        return base_types::eSuccess;
    }

    _eError GetPropertyRange(const std::wstring& name, std::int32_t* min,
                             std::int32_t* max) override {
        if (name != kAmount) return base_types::ePropertyNotFound;
        if (!min || !max) return base_types::ePointerCastFailure;
        *min = kMin;
        *max = kMax;
        return base_types::eSuccess;
    }

    // The forms that the one property does not have.
    _eError GetProperty(const std::wstring& name, void*, std::int32_t, std::int32_t*) override {
        return OtherForm(name);
    }
    _eError GetProperty(const std::wstring& name, std::wstring&) override {
        return OtherForm(name);
    }
    _eError GetProperty(const std::wstring& name, std::int64_t&) override {
        return OtherForm(name);
    }
    _eError GetProperty(const std::wstring& name, bool&) override { return OtherForm(name); }
    _eError GetProperty(const std::wstring& name, float&) override { return OtherForm(name); }
    _eError SetProperty(const std::wstring& name, const void*, std::int32_t) override {
        return OtherForm(name);
    }
    _eError SetProperty(const std::wstring& name, const std::wstring&) override {
        return OtherForm(name);
    }
    _eError SetProperty(const std::wstring& name, std::int64_t) override { return OtherForm(name); }
    _eError SetProperty(const std::wstring& name, bool) override { return OtherForm(name); }
    _eError SetProperty(const std::wstring& name, float) override { return OtherForm(name); }
    _eError GetPropertyRange(const std::wstring& name, std::int64_t*, std::int64_t*) override {
        return OtherForm(name);
    }
    _eError GetPropertyRange(const std::wstring& name, float*, float*) override {
        return OtherForm(name);
    }

    bool IsValid() override { return true; }
    const fx::EffectDescriptor* GetDescriptor() override { return &descriptor_; }

private:
    static _eError OtherForm(const std::wstring& name) {
        return name == kAmount ? base_types::ePointerCastFailure : base_types::ePropertyNotFound;
    }

    fx::EffectDescriptor descriptor_;
    std::atomic<std::int32_t> amount_{kMax};
};

class Factory : public fx::IVorelFXFactory {
public:
    std::uint32_t GetFXCount() override { return std::size(kEffects); }

    std::wstring GetFXName(std::uint64_t index) override {
        return index < std::size(kEffects) ? kEffects[index] : L"";
    }

    fx::_eError CreateFX(std::uint64_t index, std::shared_ptr<fx::IBaseFX>& out) override {
        if (index >= std::size(kEffects)) return fx::eWrongFXIdx;
        try {
            out = std::make_shared<PercentEffect>(kEffects[index]);
            return fx::eSuccess;
        } catch (...) {
            return fx::eCouldNotCreateFX;
        }
    }
};

}  // namespace

extern "C" TARNEX_EXPORT fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    try {
        out = std::make_shared<Factory>();
        return fx::eSuccess;
    } catch (...) {
        return fx::eGenericException;
    }
}
