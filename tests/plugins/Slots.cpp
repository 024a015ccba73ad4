// An effect of which every property operation returns its own slot number as its code.
#include "plugins/BareEffect.h"

namespace {

using Name = const std::wstring&;
using test_plugins::Error;

constexpr Error Slot(int number) {
    return static_cast<Error>(number);
}

class SlotEffect : public fx::IBaseFX {
public:
    const fx::EffectDescriptor* GetDescriptor() override { return &descriptor_; }
    bool IsValid() override { return true; }

    Error GetProperties(std::vector<std::wstring>&) override { return Slot(1); }
    Error GetPropertyInfo(Name, base_types::PropertyInfo*) override { return Slot(2); }
    Error GetProperty(Name, void*, std::int32_t, std::int32_t*) override { return Slot(3); }
    Error GetProperty(Name, std::wstring&) override { return Slot(4); }
    Error GetProperty(Name, std::int64_t&) override { return Slot(5); }
    Error GetProperty(Name, bool&) override { return Slot(6); }
    Error GetProperty(Name, float&) override { return Slot(7); }
    Error GetProperty(Name, std::int32_t&) override { return Slot(8); }
    Error SetProperty(Name, const void*, std::int32_t) override { return Slot(9); }
    Error SetProperty(Name, const std::wstring&) override { return Slot(10); }
    Error SetProperty(Name, std::int64_t) override { return Slot(11); }
    Error SetProperty(Name, bool) override { return Slot(12); }
    Error SetProperty(Name, float) override { return Slot(13); }
    Error SetProperty(Name, std::int32_t) override { return Slot(14); }
    Error GetPropertyRange(Name, std::int64_t*, std::int64_t*) override { return Slot(15); }
    Error GetPropertyRange(Name, float*, float*) override { return Slot(16); }
    Error GetPropertyRange(Name, std::int32_t*, std::int32_t*) override { return Slot(17); }
    Error GetPropertyDefault(Name, void*) override { return Slot(18); }
    Error GetPropertyDefault(Name, std::wstring*) override { return Slot(19); }
    Error GetPropertyDefault(Name, std::int64_t*) override { return Slot(20); }
    Error GetPropertyDefault(Name, bool*) override { return Slot(21); }
    Error GetPropertyDefault(Name, float*) override { return Slot(22); }
    Error GetPropertyDefault(Name, std::int32_t*) override { return Slot(23); }
    Error CopyPropertiesFrom(const std::shared_ptr<base_types::IPropertySet>&) override {
        return Slot(24);
    }

private:
    fx::EffectDescriptor descriptor_{4, 1, L"slots"};
};

class SlotFactory : public test_plugins::BareFactory {
public:
    SlotFactory() : BareFactory({L"slots"}) {}

    fx::_eError CreateFX(std::uint64_t, std::shared_ptr<fx::IBaseFX>& out) override {
        out = std::make_shared<SlotEffect>();
        return fx::eSuccess;
    }
};

}  // namespace

fx::_eError CreateFactory(std::shared_ptr<fx::IVorelFXFactory>& out) {
    out = std::make_shared<SlotFactory>();
    return fx::eSuccess;
}
