#include "compositions/Composition.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "compositions/CompScript.h"
#include "helpers/report/CapturedOutput.h"
#include "sdk/TypedProperty.h"

namespace {

using namespace compositions;

CompositionDescription Describe(bool isFilter, int inputs, int numberedInputs) {
    CompositionDescription d;
    d.name = L"Blur";
    d.category = L"Basic";
    d.isFilter = isFilter;
    for (int i = 0; i < inputs; ++i) d.inputs.emplace_back(L"IN" + std::to_wstring(i));
    for (int i = 0; i < numberedInputs; ++i) {
        d.numberedInputs[UpperName(L"NUMBERED" + std::to_wstring(i))] = i;
    }
    d.properties = {{3, L"Amount", L"0.5"}};
    return d;
}

std::shared_ptr<ICompositionReader> Reader(CompositionDescription description = Describe(true, 1,
                                                                                         0)) {
    return std::make_shared<CompositionScript>(std::move(description));
}

TEST(Composition, FilterWithOneInputHasItsFlagsAndInput) {
    Composition composition(Reader(Describe(true, 1, 0)));
    EXPECT_EQ(composition.GetDescriptor()->flags, 132u);
    EXPECT_EQ(composition.GetDescriptor()->inputs, 1u);
}

TEST(Composition, OtherThanAFilterCountsNumberedInputsToo) {
    Composition composition(Reader(Describe(false, 2, 1)));
    EXPECT_EQ(composition.GetDescriptor()->flags, 130u);
    EXPECT_EQ(composition.GetDescriptor()->inputs, 3u);
}

TEST(Composition, IdIsNameBackslashCategory) {
    Composition composition(Reader());
    EXPECT_EQ(composition.GetDescriptor()->id, L"Blur\\Basic");
}

TEST(Composition, StartsNotValidAndWithoutProperties) {
    Composition composition(Reader());
    base_types::IValidator& validator = composition;
    EXPECT_FALSE(validator.IsValid());
    std::vector<std::wstring> names{L"left over"};
    EXPECT_EQ(composition.GetProperties(names), base_types::eSuccess);
    EXPECT_TRUE(names.empty());
}

TEST(Composition, KeepsItsDescriptionAlive) {
    auto reader = Reader();
    const std::weak_ptr<ICompositionReader> watched = reader;
    auto composition = std::make_unique<Composition>(std::move(reader));
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(composition->Description().GetName(), L"Blur");
    composition.reset();
    EXPECT_TRUE(watched.expired());
}

TEST(Composition, IsFreedThroughEitherInterface) {
    auto reader = Reader();
    const std::weak_ptr<ICompositionReader> watched = reader;
    base_types::IValidator* validator = new Composition(std::move(reader));
    delete validator;
    EXPECT_TRUE(watched.expired());
}

// The line of the set, which names the property, and the line of the typed form.
template <class Call>
void ExpectNotFound(Call call, const std::wstring& operation, const std::wstring& form) {
    Composition composition(Reader());
    captured::TakeTraced();
    EXPECT_EQ(call(static_cast<fx::IBaseFX&>(composition)), base_types::ePropertyNotFound);
    const std::vector<std::wstring> expected{
        L"Operation \"base_types::PropertySet::" + operation +
            L"\" returned error <ePropertyNotFound>, property: \"Amount\"",
        L"Operation \"PropertySet::" + operation + L"<" + form +
            L">\" returned error <ePropertyNotFound>"};
    EXPECT_EQ(captured::TakeTraced(), expected);
}

template <class Value>
void ExpectTypedFormsNotFound(Value value, const std::wstring& form) {
    ExpectNotFound([&](fx::IBaseFX& effect) { return effect.GetProperty(L"Amount", value); },
                   L"GetProperty", form);
    ExpectNotFound([&](fx::IBaseFX& effect) { return effect.SetProperty(L"Amount", value); },
                   L"SetProperty", form);
}

TEST(Composition, TypedAccessToAFreshOneIsNotFoundAndLeavesTwoLines) {
    ExpectTypedFormsNotFound(std::int32_t{1}, L"int");
    ExpectTypedFormsNotFound(1.0f, L"float");
    ExpectTypedFormsNotFound(true, L"bool");
    ExpectTypedFormsNotFound(std::int64_t{1}, L"__int64");
    ExpectTypedFormsNotFound(std::wstring(L"x"), L"std::wstring");
}

TEST(Composition, RawDefaultIsNotImplemented) {
    Composition composition(Reader());
    fx::IBaseFX& effect = composition;
    int value = 0;
    EXPECT_EQ(effect.GetPropertyDefault(L"Amount", static_cast<void*>(&value)),
              base_types::eNotImplemented);
}

TEST(Composition, CopyBetweenTwoOfOneDescriptionSucceeds) {
    const auto reader = Reader();
    Composition to(reader);
    EXPECT_EQ(to.CopyPropertiesFrom(std::make_shared<Composition>(reader)), base_types::eSuccess);
}

class ForeignEffect : public fx::IBaseFX {
public:
    base_types::_eError GetProperties(std::vector<std::wstring>&) override { return kNone; }
    base_types::_eError GetPropertyInfo(const std::wstring&, base_types::PropertyInfo*) override {
        return kNone;
    }
    base_types::_eError GetProperty(const std::wstring&, void*, std::int32_t,
                                    std::int32_t*) override {
        return kNone;
    }
    base_types::_eError GetProperty(const std::wstring&, std::wstring&) override { return kNone; }
    base_types::_eError GetProperty(const std::wstring&, std::int64_t&) override { return kNone; }
    base_types::_eError GetProperty(const std::wstring&, bool&) override { return kNone; }
    base_types::_eError GetProperty(const std::wstring&, float&) override { return kNone; }
    base_types::_eError GetProperty(const std::wstring&, std::int32_t&) override { return kNone; }
    base_types::_eError SetProperty(const std::wstring&, const void*, std::int32_t) override {
        return kNone;
    }
    base_types::_eError SetProperty(const std::wstring&, const std::wstring&) override {
        return kNone;
    }
    base_types::_eError SetProperty(const std::wstring&, std::int64_t) override { return kNone; }
    base_types::_eError SetProperty(const std::wstring&, bool) override { return kNone; }
    base_types::_eError SetProperty(const std::wstring&, float) override { return kNone; }
    base_types::_eError SetProperty(const std::wstring&, std::int32_t) override { return kNone; }
    base_types::_eError GetPropertyRange(const std::wstring&, std::int64_t*,
                                         std::int64_t*) override {
        return kNone;
    }
    base_types::_eError GetPropertyRange(const std::wstring&, float*, float*) override {
        return kNone;
    }
    base_types::_eError GetPropertyRange(const std::wstring&, std::int32_t*,
                                         std::int32_t*) override {
        return kNone;
    }
    bool IsValid() override { return true; }
    const fx::EffectDescriptor* GetDescriptor() override { return nullptr; }

private:
    static constexpr base_types::_eError kNone = base_types::ePropertyNotFound;
};

TEST(Composition, CopyFromAnEffectOfAnotherKindIsNotImplemented) {
    Composition to(Reader());
    EXPECT_EQ(to.CopyPropertiesFrom(std::make_shared<ForeignEffect>()),
              base_types::eNotImplemented);
    EXPECT_EQ(to.CopyPropertiesFrom(nullptr), base_types::eNotImplemented);
}

TEST(Composition, EngineSlotsKeepTheirDefaults) {
    Composition composition(Reader());
    fx::IBaseFX& effect = composition;
    std::shared_ptr<fx::IBaseFX> clone = std::make_shared<Composition>(Reader());
    EXPECT_EQ(effect.CloneEffect(clone), fx::eNotImplemented);
    EXPECT_EQ(clone, nullptr);
    EXPECT_EQ(effect.BeginRender(), fx::eNotImplemented);
    EXPECT_EQ(effect.EndRender(), fx::eNotImplemented);
    EXPECT_EQ(effect.Reset(), fx::eNotImplemented);
    try {
        effect.GetRenderCost();
        ADD_FAILURE() << "no exception";
    } catch (const std::exception& exception) {
        EXPECT_STREQ(exception.what(), "not implemented");
    }
}

// Answers what a composition asks for, and throws at the chosen question.
class FailingReader : public ICompositionReader {
public:
    explicit FailingReader(int failAt) : failAt_(failAt) {}

    std::wstring GetName() const override { return Answer(3), L"n"; }
    std::wstring GetCategory() const override { return Answer(4), L"c"; }
    bool IsFilter() const override { return Answer(0), true; }
    const compositions::Names& GetInputs() const override { return Answer(1), d_.inputs; }
    const NumberedInputs& GetNumberedInputs() const override {
        return Answer(2), d_.numberedInputs;
    }
    // Everything else is not for the composition to read.
    std::int32_t GetSpeed() const override { return Refuse(), 0; }
    bool GetSwap() const override { return Refuse(), false; }
    std::int32_t GetReadStatus() const override { return Refuse(), 0; }
    const MediaSources& GetMediaSources() const override { return Refuse(), d_.mediaSources; }
    const EffectInstances& GetEffectInstances() const override {
        return Refuse(), d_.effectInstances;
    }
    const Mappings& GetMappings() const override { return Refuse(), d_.mappings; }
    const Properties& GetProperties() const override { return Refuse(), d_.properties; }
    const Envelopes& GetEnvelopes() const override { return Refuse(), d_.envelopes; }
    const TimelineEntries& GetTimelineEntries() const override {
        return Refuse(), d_.timelineEntries;
    }
    const TimelineEvents& GetTimelineEvents() const override { return Refuse(), d_.timelineEvents; }
    const StructureNode& GetStructure() const override { return Refuse(), d_.structure; }
    const compositions::Names& GetMixes() const override { return Refuse(), d_.mixes; }
    const RegistryValues& GetRegistryValues() const override { return Refuse(), d_.registryValues; }

private:
    void Answer(int question) const {
        if (question == failAt_) throw std::runtime_error("reader");
    }
    void Refuse() const { ADD_FAILURE() << "the composition read more than its identity"; }

    CompositionDescription d_;
    int failAt_;
};

TEST(Composition, ReadsNothingButItsIdentity) {
    Composition composition(std::make_shared<FailingReader>(-1));
    EXPECT_EQ(composition.GetDescriptor()->id, L"n\\c");
}

TEST(Composition, ReadersExceptionPassesAndTheReaderIsReleased) {
    for (int question = 0; question < 5; ++question) {
        auto reader = std::make_shared<FailingReader>(question);
        const std::weak_ptr<FailingReader> watched = reader;
        EXPECT_THROW(Composition{std::move(reader)}, std::runtime_error) << question;
        EXPECT_TRUE(watched.expired()) << question;
    }
}

TEST(Composition, LaysItsTablesOutInTheOrderOfItsBases) {
    Composition composition(Reader());
    const auto at = [&](auto* base) {
        return reinterpret_cast<char*>(base) - reinterpret_cast<char*>(&composition);
    };
    EXPECT_EQ(at(static_cast<base_types::IPropertySet*>(&composition)), 0);
    EXPECT_EQ(at(static_cast<base_types::IValidator*>(&composition)), 8);
    EXPECT_EQ(at(static_cast<base_types::PropertySet*>(&composition)), 16);
}

TEST(Composition, EnginesStateGoesBeforeTheDescription) {
    auto reader = Reader();
    const std::weak_ptr<ICompositionReader> watched = reader;
    bool released = false;
    {
        Composition composition(std::move(reader));
        composition.Attach(std::shared_ptr<void>(nullptr, [&](void*) {
            released = true;
            EXPECT_FALSE(watched.expired());
        }));
        EXPECT_FALSE(released);
    }
    EXPECT_TRUE(released);
    EXPECT_TRUE(watched.expired());
}

}  // namespace
