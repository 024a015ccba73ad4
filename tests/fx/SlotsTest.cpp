// The effect called by slot number, as a separately built host does.

#include <gtest/gtest.h>

#include <cstring>

#include "fx/TestEffects.h"
#include "helpers/report/CapturedOutput.h"

namespace {

using Code = std::uint32_t;
using Name = const std::wstring&;

// Published slot numbers count the destructor once; the Itanium ABI gives it two entries.
#ifdef _MSC_VER
constexpr std::size_t kDestructorEntries = 1;
#else
constexpr std::size_t kDestructorEntries = 2;
#endif

// Calls operation `slot` (1 or more) of the table that `object` begins with. On x86-64 an operation
// without a variable argument list takes its object as a first argument on both systems.
template <class Result, class... Arguments>
Result Call(void* object, std::size_t slot, Arguments... arguments) {
    using Function = Result (*)(void*, Arguments...);
    void** table = *static_cast<void***>(object);
    Function function = nullptr;
    void* entry = table[slot - 1 + kDestructorEntries];
    std::memcpy(&function, &entry, sizeof function);
    return function(object, std::forward<Arguments>(arguments)...);
}

class Slots : public testing::Test {
protected:
    ~Slots() override { captured::TakeTraced(); }

    template <class T>
    void ExpectGetAndSet(std::size_t get, std::wstring name, T value) {
        T read{};
        EXPECT_EQ((Call<Code, Name, T&>(object, get, name, read)), 0u);
        EXPECT_NE(read, value);
        EXPECT_EQ((Call<Code, Name, T>(object, get + 6, name, value)), 0u);
        EXPECT_EQ((Call<Code, Name, T&>(object, get, name, read)), 0u);
        EXPECT_EQ(read, value);
    }

    template <class T>
    void ExpectRange(std::size_t slot, std::wstring name, T low, T high) {
        T min{};
        T max{};
        EXPECT_EQ((Call<Code, Name, T*, T*>(object, slot, name, &min, &max)), 0u);
        EXPECT_EQ(min, low);
        EXPECT_EQ(max, high);
    }

    template <class T>
    void ExpectDefault(std::size_t slot, std::wstring name, T value) {
        T out{};
        EXPECT_EQ((Call<Code, Name, T*>(object, slot, name, &out)), 0u);
        EXPECT_EQ(out, value);
    }

    std::shared_ptr<test::FormsEffect> effect = std::make_shared<test::FormsEffect>();
    void* object = static_cast<fx::IBaseFX*>(effect.get());
    const std::wstring raw = L"Raw";
};

TEST_F(Slots, ListAndInfo) {
    std::vector<std::wstring> names;
    EXPECT_EQ((Call<Code, std::vector<std::wstring>&>(object, 1, names)), 0u);
    EXPECT_EQ(names.size(), 8u);
    base_types::PropertyInfo info{};
    EXPECT_EQ((Call<Code, Name, base_types::PropertyInfo*>(object, 2, raw, &info)), 0u);
    EXPECT_EQ(info.size, 6);
}

TEST_F(Slots, RawGetAndSet) {
    unsigned char bytes[3] = {};
    std::int32_t copied = 0;
    EXPECT_EQ(
        (Call<Code, Name, void*, std::int32_t, std::int32_t*>(object, 3, raw, bytes, 3, &copied)),
        0u);
    EXPECT_EQ(copied, 3);
    EXPECT_EQ(bytes[2], 3);
    EXPECT_EQ((Call<Code, Name, const void*, std::int32_t>(object, 9, raw, "x", 1)), 0u);
    EXPECT_EQ(effect->bytes[0], 'x');
}

TEST_F(Slots, TypedGetAndSet) {
    std::wstring text;
    const std::wstring name = L"String";
    const std::wstring value = L"new";
    EXPECT_EQ((Call<Code, Name, std::wstring&>(object, 4, name, text)), 0u);
    EXPECT_EQ(text, L"default");
    EXPECT_EQ((Call<Code, Name, Name>(object, 10, name, value)), 0u);
    EXPECT_EQ(effect->text, L"new");
    ExpectGetAndSet<std::int64_t>(5, L"Int64", -5);
    ExpectGetAndSet<bool>(6, L"Bool", false);
    ExpectGetAndSet<float>(7, L"Float", 0.25f);
    ExpectGetAndSet<std::int32_t>(8, L"Int", -5);
}

TEST_F(Slots, Ranges) {
    ExpectRange<std::int64_t>(15, L"Int64", 0, 1LL << 40);
    ExpectRange<float>(16, L"Float", 0, 1);
    ExpectRange<std::int32_t>(17, L"Int", -10, 10);
}

TEST_F(Slots, Defaults) {
    std::int32_t untouched = 5;
    const std::wstring name = L"Int";
    EXPECT_EQ((Call<Code, Name, void*>(object, 18, name, &untouched)), 11u);
    EXPECT_EQ(untouched, 5);
    ExpectDefault<std::wstring>(19, L"String", L"default");
    ExpectDefault<std::int64_t>(20, L"Int64", 1LL << 33);
    ExpectDefault<bool>(21, L"Bool", true);
    ExpectDefault<float>(22, L"Float", 0.5f);
    ExpectDefault<std::int32_t>(23, L"Int", 3);
}

TEST_F(Slots, Copy) {
    auto source = std::make_shared<test::FormsEffect>();
    source->integer = 9;
    const std::shared_ptr<base_types::IPropertySet> set = source;
    EXPECT_EQ((Call<Code, const std::shared_ptr<base_types::IPropertySet>&>(object, 24, set)), 0u);
    EXPECT_EQ(effect->integer, 9);
}

TEST_F(Slots, DescriptorAndTheEnginesOperations) {
    EXPECT_EQ((Call<const fx::EffectDescriptor*>(object, 25)), effect->GetDescriptor());
    for (const std::size_t slot : {26, 27}) {
        auto target = std::shared_ptr<fx::IRenderTarget>(effect, nullptr);
        EXPECT_EQ((Call<Code, std::shared_ptr<fx::IRenderTarget>&>(object, slot, target)), 2u);
        EXPECT_EQ(target.use_count(), 0);
    }
    std::shared_ptr<fx::IBaseFX> clone = effect;
    EXPECT_EQ((Call<Code, std::shared_ptr<fx::IBaseFX>&>(object, 28, clone)), 2u);
    EXPECT_EQ(clone.use_count(), 0);
    Call<void, fx::IRenderContext*>(object, 29, nullptr);
    Call<void, fx::IRenderContext*>(object, 30, nullptr);
    EXPECT_EQ(Call<Code>(object, 31), 2u);
    EXPECT_EQ(Call<Code>(object, 32), 2u);
    EXPECT_THROW(Call<int>(object, 33), std::exception);
    EXPECT_EQ(Call<Code>(object, 34), 2u);
}

TEST_F(Slots, ValidatorsTable) {
    void* validator = static_cast<base_types::IValidator*>(effect.get());
    EXPECT_TRUE(Call<bool>(validator, 1));
    effect->SetValid(false);
    EXPECT_FALSE(Call<bool>(validator, 1));
}

// The set's own table: the raw set comes before the destructor.
TEST_F(Slots, SetsTable) {
    void* set = static_cast<base_types::PropertySet*>(effect.get());
    const std::size_t first = 1 - kDestructorEntries;
    EXPECT_EQ((Call<Code, Name, const void*, std::int32_t>(set, first, raw, "z", 1)), 0u);
    EXPECT_EQ(effect->bytes[0], 'z');
}

TEST_F(Slots, PropertysTable) {
    std::int32_t value = 5;
    base_types::TypedProperty<std::int32_t> property(&value,
                                                     {.defaultValue = 4, .range = std::pair(1, 2)});
    EXPECT_EQ((Call<void*>(&property, 1)), &value);
    const std::int32_t other = 6;
    Call<void, const void*>(&property, 2, &other);
    EXPECT_EQ(value, 6);
    std::int32_t min = 0;
    std::int32_t max = 0;
    EXPECT_TRUE((Call<bool, void*, void*>(&property, 3, &min, &max)));
    EXPECT_EQ(min, 1);
    EXPECT_EQ(max, 2);
    EXPECT_TRUE((Call<bool, void*>(&property, 4, &min)));
    EXPECT_EQ(min, 4);
}

}  // namespace
