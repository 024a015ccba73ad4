#include "host/SlotCalls.h"

#include <cstdint>

#include "support/Text.h"

namespace {

// Where a table keeps a slot: this compiler gives a virtual destructor two entries, so everything
// behind slot 0 stands one further. ITarnex has its destructor last.
constexpr int kBehindDestructor = 1;

template <typename Result = std::uint32_t, typename... Args>
Result CallEntry(void* object, int entry, Args... args) {
    void** table = *static_cast<void***>(object);
    return reinterpret_cast<Result (*)(void*, Args...)>(table[entry])(object, args...);
}

template <typename Result = std::uint32_t, typename... Args>
Result Call(void* object, int slot, Args... args) {
    return CallEntry<Result>(object, slot + kBehindDestructor, args...);
}

std::string Line(int slot, unsigned code) {
    return std::to_string(slot) + " " + std::to_string(code);
}

void CallPropertyGetters(void* effect, const Teller& say) {
    const std::wstring name = L"no such property";
    std::wstring text;
    std::int64_t big = 0;
    bool flag = false;
    float number = 0;
    std::int32_t whole = 0;
    std::int32_t copied = 0;
    char bytes[16];
    base_types::PropertyInfo info{};
    std::vector<std::wstring> names;
    say(Line(1, Call(effect, 1, &names)));
    say(Line(2, Call(effect, 2, &name, &info)));
    say(Line(3, Call(effect, 3, &name, static_cast<void*>(bytes), std::int32_t{16}, &copied)));
    say(Line(4, Call(effect, 4, &name, &text)));
    say(Line(5, Call(effect, 5, &name, &big)));
    say(Line(6, Call(effect, 6, &name, &flag)));
    say(Line(7, Call(effect, 7, &name, &number)));
    say(Line(8, Call(effect, 8, &name, &whole)));
}

void CallPropertySetters(void* effect, const Teller& say) {
    const std::wstring name = L"no such property";
    const std::wstring text = L"text";
    const char bytes[4] = {};
    say(Line(9, Call(effect, 9, &name, static_cast<const void*>(bytes), std::int32_t{4})));
    say(Line(10, Call(effect, 10, &name, &text)));
    say(Line(11, Call(effect, 11, &name, std::int64_t{5})));
    say(Line(12, Call(effect, 12, &name, true)));
    say(Line(13, Call(effect, 13, &name, 1.5F)));
    say(Line(14, Call(effect, 14, &name, std::int32_t{5})));
}

void CallPropertyRangesAndDefaults(void* effect, const Teller& say) {
    const std::wstring name = L"no such property";
    std::wstring text;
    std::int64_t big[2];
    float number[2];
    std::int32_t whole[2];
    bool flag = false;
    char bytes[16];
    const std::shared_ptr<base_types::IPropertySet> none;
    say(Line(15, Call(effect, 15, &name, &big[0], &big[1])));
    say(Line(16, Call(effect, 16, &name, &number[0], &number[1])));
    say(Line(17, Call(effect, 17, &name, &whole[0], &whole[1])));
    say(Line(18, Call(effect, 18, &name, static_cast<void*>(bytes))));
    say(Line(19, Call(effect, 19, &name, &text)));
    say(Line(20, Call(effect, 20, &name, &big[0])));
    say(Line(21, Call(effect, 21, &name, &flag)));
    say(Line(22, Call(effect, 22, &name, &number[0])));
    say(Line(23, Call(effect, 23, &name, &whole[0])));
    say(Line(24, Call(effect, 24, &none)));
}

void CallRenderSlots(fx::IBaseFX* effect, const Teller& say) {
    const auto* descriptor = Call<const fx::EffectDescriptor*>(effect, 25);
    say(Line(25, descriptor == effect->GetDescriptor()));
    // Only the pointers' emptiness is looked at: what they point to is the engine's.
    auto anything = std::make_shared<int>(1);
    for (const int slot : {26, 27, 28}) {
        std::shared_ptr<int> out = anything;
        const auto code = Call(effect, slot, &out);
        say(Line(slot, code) + (out == nullptr ? " emptied" : " left"));
    }
    Call<void>(effect, 29, static_cast<void*>(nullptr));
    Call<void>(effect, 30, static_cast<void*>(nullptr));
    say(Line(31, Call(effect, 31)));
    say(Line(32, Call(effect, 32)));
    try {
        say(Line(33, Call(effect, 33)));
    } catch (const std::exception& exception) {
        say(std::string("33 throws ") + exception.what());
    }
    say(Line(34, Call(effect, 34)));
    auto* validator = static_cast<base_types::IValidator*>(effect);
    say(std::string("valid ") + (Call<bool>(validator, 1) ? "yes" : "no"));
}

}  // namespace

void CallManagerSlots(tarnex::ITarnex* manager, const Teller& say) {
    const std::wstring text;
    std::shared_ptr<tarnex::GlobalFXFactory> out;
    const auto code = CallEntry(manager, 0, &text, &text, &text, std::uint64_t{0}, &out);
    say(Line(0, code) + (out != nullptr ? " set" : " empty"));
}

void CallFactorySlots(tarnex::GlobalFXFactory* factory, const Teller& say) {
    fx::IVorelFXFactory* primary = factory;
    const std::wstring unknown = L"no such effect";
    std::shared_ptr<fx::IBaseFX> effect;
    say(Line(1, Call(primary, 1)));
    const auto name = Call<std::wstring>(primary, 2, std::uint64_t{0});
    say("2 " + test_support::Utf8(name));
    auto code = Call(primary, 3, std::uint64_t{0}, &effect);
    say(Line(3, code) + (effect != nullptr ? " set" : " empty"));
    effect.reset();
    say(Line(4, Call(primary, 4, &unknown)));
    say(Line(5, Call(primary, 5, &unknown, true)));
    code = Call(primary, 6, &unknown, &effect);
    say(Line(6, code) + (effect != nullptr ? " set" : " empty"));
    tarnex::IEffectsEnumerator* enumerator = factory;
    std::list<tarnex::EffectRecord> records;
    code = Call(enumerator, 1, &records);
    say("enumerator " + Line(1, code) + " " + std::to_string(records.size()));
}

void CallEffectSlots(fx::IBaseFX* effect, const Teller& say) {
    base_types::IPropertySet* properties = effect;
    CallPropertyGetters(properties, say);
    CallPropertySetters(properties, say);
    CallPropertyRangesAndDefaults(properties, say);
    CallRenderSlots(effect, say);
}
