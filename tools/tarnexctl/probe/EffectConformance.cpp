#include <limits>

#include "frame/Text.h"
#include "probe/Conformance.h"
#include "probe/Guarded.h"
#include "probe/PropertyValue.h"

namespace tarnexctl {
namespace {

using EffectPointer = std::shared_ptr<fx::IBaseFX>;

EffectPointer Create(fx::IVorelFXFactory& factory, std::uint64_t index, const std::string& which,
                     ChildReport& report) {
    report.Step("CreateFX of " + which);
    EffectPointer effect;
    fx::_eError code = fx::eSuccess;
    if (!Guarded([&] { code = factory.CreateFX(index, effect); },
                 [&](const std::string& what) { report.Add("P211", which + ": " + what); })) {
        return nullptr;
    }
    if (code != fx::eSuccess) {
        report.Add("P210", which + ": " + helpers::ErrorName(code));
        return nullptr;
    }
    if (effect == nullptr) report.Add("P212", which);
    return effect;
}

const fx::EffectDescriptor* DescriptorOf(fx::IBaseFX& effect, const std::string& which,
                                         ChildReport& report) {
    report.Step("GetDescriptor of " + which);
    const fx::EffectDescriptor* descriptor = nullptr;
    if (Guarded([&] { descriptor = effect.GetDescriptor(); },
                [&](const std::string& what) { report.Add("P302", which + ": " + what); }) &&
        descriptor == nullptr) {
        report.Add("P301", which);
    }
    return descriptor;
}

void CheckDescriptors(const fx::EffectDescriptor& first, const fx::EffectDescriptor& second,
                      const std::string& which, ChildReport& report) {
    if (first.id.empty()) report.Add("P303", which);
    if (first.inputs > std::numeric_limits<std::uint32_t>::max()) {
        report.Add("P306", which + ": " + std::to_string(first.inputs));
    }
    if (first.id != second.id || first.flags != second.flags || first.inputs != second.inputs) {
        report.Add("P305", which);
    }
}

// What the effect offers, for whoever reads the report.
void Describe(fx::IBaseFX& effect, std::uint64_t index, const fx::EffectDescriptor* descriptor,
              const std::string& which, ChildReport& report) {
    Json document;
    document["index"] = index;
    if (descriptor != nullptr) {
        document["id"] = ToUtf8(descriptor->id);
        document["flags"] = descriptor->flags;
        document["inputs"] = descriptor->inputs;
    }
    report.Step("IsValid of " + which);
    Guarded([&] { document["valid"] = effect.IsValid(); },
            [&](const std::string& what) { report.Add("P307", which + ", IsValid: " + what); });
    report.Step("reading the properties of " + which);
    Guarded([&] { document["properties"] = DescribeProperties(effect); },
            [&](const std::string& what) { report.Add("P307", which + ", properties: " + what); });
    report.Value("effect", document);
}

// The pointee is never looked at; it only has to be there.
template <typename T>
std::shared_ptr<T> SomePointer() {
    const auto owner = std::make_shared<std::uint64_t>(0);
    return std::shared_ptr<T>(owner, reinterpret_cast<T*>(owner.get()));
}

template <typename Pointer, typename Call>
void CheckOutSlot(const std::string& which, Pointer out, Call call, ChildReport& report) {
    report.Step(which);
    fx::_eError code = fx::eSuccess;
    if (Guarded([&] { code = call(out); },
                [&](const std::string& what) { report.Add("P307", which + ": " + what); }) &&
        code == fx::eNotImplemented && out != nullptr) {
        report.Add("P308", which);
    }
}

}  // namespace

void CheckRenderingSlots(fx::IBaseFX& effect, const EffectPointer& other, const std::string& name,
                         ChildReport& report) {
    CheckOutSlot(
        "GetOutput of " + name, SomePointer<fx::IRenderTarget>(),
        [&](auto& out) { return effect.GetOutput(out); }, report);
    CheckOutSlot(
        "GetPreview of " + name, SomePointer<fx::IRenderTarget>(),
        [&](auto& out) { return effect.GetPreview(out); }, report);
    CheckOutSlot(
        "CloneEffect of " + name, other, [&](auto& out) { return effect.CloneEffect(out); },
        report);
    const auto plain = [&](const char* operation, auto call) {
        const std::string which = std::string(operation) + " of " + name;
        report.Step(which);
        Guarded(call, [&](const std::string& what) { report.Add("P307", which + ": " + what); });
    };
    plain("OnDeviceLost", [&] { effect.OnDeviceLost(nullptr); });
    plain("OnDeviceReset", [&] { effect.OnDeviceReset(nullptr); });
    plain("BeginRender", [&] { (void)effect.BeginRender(); });
    plain("EndRender", [&] { (void)effect.EndRender(); });
    plain("GetRenderCost", [&] {
        try {
            (void)effect.GetRenderCost();
        } catch (const std::exception&) {
            // The one operation that may throw, by design.
        }
    });
    plain("Reset", [&] { (void)effect.Reset(); });
}

EffectPointer CheckEffect(fx::IVorelFXFactory& factory, std::uint64_t index,
                          const ConformanceScope& scope, ChildReport& report) {
    const std::string which = "effect " + std::to_string(index);
    EffectPointer first = Create(factory, index, which, report);
    if (first == nullptr) return nullptr;
    EffectPointer second = Create(factory, index, which + " (second instance)", report);
    if (first == second) report.Add("P215", which);

    const fx::EffectDescriptor* const descriptor = DescriptorOf(*first, which, report);
    if (second != nullptr && descriptor != nullptr) {
        const auto* const other = DescriptorOf(*second, which + " (second instance)", report);
        if (other != nullptr) CheckDescriptors(*descriptor, *other, which, report);
    }
    Describe(*first, index, descriptor, which, report);
    if (second != nullptr && second != first) CheckProperties(*first, *second, which, report);
    if (second != nullptr) {
        report.Step("CopyPropertiesFrom of " + which);
        Guarded([&] { (void)first->CopyPropertiesFrom(second); },
                [&](const std::string& what) { report.Add("P307", which + ": " + what); });
    }
    if (scope.rendering) CheckRenderingSlots(*first, second, which, report);
    report.Step("releasing the second instance of " + which);
    second.reset();
    return first;
}

}  // namespace tarnexctl
