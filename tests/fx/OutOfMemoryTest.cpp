// What plug-in authors are given when memory runs out: the n-th allocation fails, or that one and
// all behind it.

#include <gtest/gtest.h>

#include <functional>

#include "fx/TestEffects.h"
#include "sdk/EffectFactory.h"
#include "tarnex/LeakCheck.h"

namespace {

using test::FormsEffect;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachWithoutLeak;

const std::wstring kLong = L"a text that is long enough for the heap";
const std::wstring kName = L"the name of an effect, as long as it takes";
const std::wstring kNothing;

// Whether `call` threw std::bad_alloc under the fault.
struct Attempt {
    bool happened = true;
    bool thrown = false;
};

template <class Call>
Attempt Try(int nth, bool lasts, const Call& call) {
    const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
    Attempt attempt;
    try {
        call();
    } catch (const std::bad_alloc&) {
        attempt.thrown = true;
    }
    attempt.happened = fault.Happened();
    return attempt;
}

TEST(FactoryMemory, AdditionIsWholeOrNone) {
    ForEachWithoutLeak([](int nth, bool lasts) {
        fx::EffectFactory factory;
        factory.Add<FormsEffect>(kName);
        std::wstring name = kLong;
        const Attempt attempt = Try(nth, lasts, [&] { factory.Add<FormsEffect>(std::move(name)); });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        EXPECT_EQ(factory.GetFXCount(), attempt.happened ? 1u : 2u);
        EXPECT_EQ(factory.GetFXName(0), kName);
        EXPECT_EQ(factory.GetFXName(1), attempt.happened ? kNothing : kLong);
        return attempt.happened;
    });
}

TEST(FactoryMemory, NameIsTheNameOrEmpty) {
    fx::EffectFactory factory;
    factory.Add<FormsEffect>(kName);
    ForEachWithoutLeak([&](int nth, bool lasts) {
        std::wstring name;
        const Attempt attempt = Try(nth, lasts, [&] { name = factory.GetFXName(0); });
        EXPECT_FALSE(attempt.thrown);
        EXPECT_EQ(name, attempt.happened ? kNothing : kName);
        return attempt.happened;
    });
}

TEST(FactoryMemory, CreationGivesAnEffectOrACode) {
    fx::EffectFactory factory;
    factory.Add<FormsEffect>(kName);
    const auto kept = std::make_shared<FormsEffect>();
    ForEachWithoutLeak([&](int nth, bool lasts) {
        std::shared_ptr<fx::IBaseFX> out = kept;
        fx::_eError code = fx::eSuccess;
        const Attempt attempt = Try(nth, lasts, [&] { code = factory.CreateFX(0, out); });
        EXPECT_FALSE(attempt.thrown);
        EXPECT_EQ(code, attempt.happened ? fx::eGenericException : fx::eSuccess);
        EXPECT_EQ(out == kept, attempt.happened);
        EXPECT_EQ(factory.CreateFX(0, out), fx::eSuccess) << "the next call";
        return attempt.happened;
    });
    // The code of a wrong index does not depend on a report that finds no memory.
    ForEachWithoutLeak([&](int nth, bool lasts) {
        std::shared_ptr<fx::IBaseFX> out = kept;
        fx::_eError code = fx::eSuccess;
        const Attempt attempt = Try(nth, lasts, [&] { code = factory.CreateFX(1, out); });
        EXPECT_FALSE(attempt.thrown);
        EXPECT_EQ(code, fx::eWrongFXIdx);
        EXPECT_EQ(out, kept);
        return attempt.happened;
    });
}

TEST(FactoryMemory, PluginGivesItsFactoryOrACode) {
    const auto kept = std::make_shared<fx::EffectFactory>();
    ForEachWithoutLeak([&](int nth, bool lasts) {
        std::shared_ptr<fx::IVorelFXFactory> out = kept;
        fx::_eError code = fx::eSuccess;
        const Attempt attempt = Try(nth, lasts, [&] {
            code = fx::MakeFactory(
                [](fx::EffectFactory& factory) {
                    factory.Add<FormsEffect>(kName);
                    factory.Add<FormsEffect>(kLong);
                },
                out);
        });
        EXPECT_FALSE(attempt.thrown);
        EXPECT_EQ(code, attempt.happened ? fx::eGenericException : fx::eSuccess);
        EXPECT_EQ(out == kept, attempt.happened);
        EXPECT_EQ(out->GetFXCount(), attempt.happened ? 0u : 2u);
        return attempt.happened;
    });
}

class BoundEffect : public FormsEffect {
public:
    // Default and range take memory, too.
    void BindMore() {
        Bind<std::wstring>(kLong, more, {.defaultValue = kLong});
        BindRaw(kLong, bytes, sizeof bytes);
    }
    std::wstring more;
};

std::size_t CountProperties(fx::IBaseFX& effect) {
    std::vector<std::wstring> names;
    effect.GetProperties(names);
    return names.size();
}

TEST(EffectMemory, ConstructionAndBindingThrowAndKeepNothing) {
    ForEachWithoutLeak([](int nth, bool lasts) {
        const Attempt attempt = Try(nth, lasts, [] { FormsEffect(); });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        return attempt.happened;
    });
    ForEachWithoutLeak([](int nth, bool lasts) {
        BoundEffect effect;
        const std::size_t before = CountProperties(effect);
        const Attempt attempt = Try(nth, lasts, [&] { effect.BindMore(); });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        const std::size_t added = CountProperties(effect) - before;
        if (attempt.happened) {
            EXPECT_LT(added, 2u);
        } else {
            EXPECT_EQ(added, 2u);
        }
        std::wstring text;
        EXPECT_EQ(effect.GetProperty(kLong, text),
                  added == 0 ? base_types::ePropertyNotFound : base_types::eSuccess);
        EXPECT_EQ(text, added == 0 ? kNothing : kLong);
        return attempt.happened;
    });
}

TEST(PropertyMemory, TextsAreWholeOrAsTheyWere) {
    using Text = base_types::TypedProperty<std::wstring>;
    ForEachWithoutLeak([](int nth, bool lasts) {
        const Attempt attempt = Try(nth, lasts, [] {
            Text(base_types::PropertyOptions<std::wstring>{.defaultValue = kLong,
                                                           .range = std::pair(kLong, kName)});
        });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        return attempt.happened;
    });
    Text property(base_types::PropertyOptions<std::wstring>{.defaultValue = kLong});
    ForEachWithoutLeak([&](int nth, bool lasts) {
        std::wstring value = L"before";
        const Attempt attempt = Try(nth, lasts, [&] { property.Default(&value); });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        EXPECT_EQ(value, attempt.happened ? L"before" : kLong);
        return attempt.happened;
    });
    const std::wstring longer = kLong + kLong;
    ForEachWithoutLeak([&](int nth, bool lasts) {
        Text fresh;
        const Attempt attempt = Try(nth, lasts, [&] { fresh.Assign(&longer); });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        EXPECT_EQ(*static_cast<std::wstring*>(fresh.Value()), attempt.happened ? kNothing : longer);
        return attempt.happened;
    });
}

TEST(PropertyMemory, BytesThrowOrAreThere) {
    ForEachWithoutLeak([](int nth, bool lasts) {
        const Attempt attempt = Try(nth, lasts, [] { base_types::RawProperty(1000); });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        return attempt.happened;
    });
}

TEST(PropertyMemory, SetHoldsThePropertyOrThrows) {
    ForEachWithoutLeak([](int nth, bool lasts) {
        base_types::PropertySet set;
        std::size_t count = 0;
        const Attempt attempt = Try(nth, lasts, [&] {
            for (; count < 5; ++count) {
                set.AddProperty(kName, std::make_unique<base_types::RawProperty>(4));
            }
        });
        EXPECT_EQ(attempt.thrown, attempt.happened);
        std::vector<std::wstring> names;
        EXPECT_EQ(set.GetProperties(names), base_types::eSuccess);
        EXPECT_EQ(names.size(), count);
        return attempt.happened;
    });
}

// --- The property operations of an effect --------------------------------------------------------

using Operation = std::function<base_types::_eError(FormsEffect&)>;

struct Values {
    explicit Values(const FormsEffect& effect)
        : integer(effect.integer),
          number(effect.number),
          flag(effect.flag),
          wide(effect.wide),
          text(effect.text) {}
    friend bool operator==(const Values&, const Values&) = default;
    std::int32_t integer;
    float number;
    bool flag;
    std::int64_t wide;
    std::wstring text;
};

// The code that there is without a fault and its effect, or that of a failure and no effect.
void ExpectWholeOrNone(const char* what, const Operation& operation,
                       base_types::_eError failure = base_types::eNonInterfaceException) {
    SCOPED_TRACE(what);
    FormsEffect whole;
    const Values before(whole);
    const base_types::_eError expected = operation(whole);
    const Values after(whole);
    ForEachWithoutLeak([&](int nth, bool lasts) {
        FormsEffect effect;
        base_types::_eError code = base_types::eSuccess;
        const Attempt attempt = Try(nth, lasts, [&] { code = operation(effect); });
        EXPECT_FALSE(attempt.thrown);
        if (!attempt.happened || code == expected) {
            EXPECT_EQ(code, expected);
            EXPECT_TRUE(Values(effect) == after);
        } else {
            EXPECT_EQ(code, failure);
            EXPECT_TRUE(Values(effect) == before) << "changed by a failed call";
            EXPECT_EQ(operation(effect), expected) << "the next call";
        }
        return attempt.happened;
    });
}

template <class T>
void ExpectFormsWholeOrNone(const std::wstring& name, const T& value) {
    const std::wstring missing = L"a property that the effect does not have";
    const std::wstring other = name == L"String" ? L"Int" : L"String";
    for (const std::wstring& property : {name, missing, other}) {
        ExpectWholeOrNone("set",
                          [&](FormsEffect& effect) { return effect.SetProperty(property, value); });
        ExpectWholeOrNone("get", [&](FormsEffect& effect) {
            T out{};
            const base_types::_eError code = effect.GetProperty(property, out);
            return code != base_types::eSuccess && out != T() ? base_types::eInvalidObject : code;
        });
        ExpectWholeOrNone("default", [&](FormsEffect& effect) {
            T out{};
            const base_types::_eError code = effect.GetPropertyDefault(property, &out);
            return code != base_types::eSuccess && out != T() ? base_types::eInvalidObject : code;
        });
    }
}

TEST(EffectMemory, TypedFormsAreWholeOrNone) {
    ExpectFormsWholeOrNone<std::int32_t>(L"Int", 7);
    ExpectFormsWholeOrNone<float>(L"Float", 0.25f);
    ExpectFormsWholeOrNone<bool>(L"Bool", false);
    ExpectFormsWholeOrNone<std::int64_t>(L"Int64", 7);
    ExpectFormsWholeOrNone<std::wstring>(L"String", kLong);
}

TEST(EffectMemory, OtherFormsAreWholeOrNone) {
    const std::wstring raw = L"Raw";
    const std::wstring integer = L"Int";
    unsigned char bytes[6] = {};
    std::int32_t copied = 0;
    std::int32_t most = 0;
    base_types::PropertyInfo info{};
    ExpectWholeOrNone("raw set", [&](auto& effect) { return effect.SetProperty(raw, "bytes", 5); });
    ExpectWholeOrNone("raw get", [&](auto& effect) {
        return effect.GetProperty(raw, bytes, sizeof bytes, &copied);
    });
    ExpectWholeOrNone("info", [&](auto& effect) { return effect.GetPropertyInfo(integer, &info); });
    ExpectWholeOrNone(
        "range", [&](auto& effect) { return effect.GetPropertyRange(integer, &copied, &most); });
    ExpectWholeOrNone(
        "list",
        [&](auto& effect) {
            std::vector<std::wstring> names;
            return effect.GetProperties(names);
        },
        base_types::eGenericException);
    const auto source = std::make_shared<FormsEffect>();
    source->text = kLong;
    source->integer = 9;
    ExpectWholeOrNone("copy", [&](auto& effect) { return effect.CopyPropertiesFrom(source); });
}

}  // namespace
