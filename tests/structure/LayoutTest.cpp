// The order of the virtual operations is a binary interface with separately built hosts and
// plug-ins. It is the same whether the compiler keeps overloads together in reverse order of
// declaration (MSVC) or in plain order of declaration (the Itanium ABI).

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "VtableDump.h"

namespace {

using structure::Slots;
using structure::VtableDump;

const Slots kValidator = {"~", "bool IsValid()"};

const Slots kProperties = {
    /* 0 */ "~",
    /* 1 */ "base_types::_eError GetProperties(std::vector<std::wstring> &)",
    /* 2 */ "base_types::_eError GetPropertyInfo(const std::wstring &, PropertyInfo *)",
    /* 3 */
    "base_types::_eError GetProperty(const std::wstring &, void *, std::int32_t, std::int32_t *)",
    /* 4 */ "base_types::_eError GetProperty(const std::wstring &, std::wstring &)",
    /* 5 */ "base_types::_eError GetProperty(const std::wstring &, std::int64_t &)",
    /* 6 */ "base_types::_eError GetProperty(const std::wstring &, bool &)",
    /* 7 */ "base_types::_eError GetProperty(const std::wstring &, float &)",
    /* 8 */ "base_types::_eError GetProperty(const std::wstring &, std::int32_t &)",
    /* 9 */ "base_types::_eError SetProperty(const std::wstring &, const void *, std::int32_t)",
    /* 10 */ "base_types::_eError SetProperty(const std::wstring &, const std::wstring &)",
    /* 11 */ "base_types::_eError SetProperty(const std::wstring &, std::int64_t)",
    /* 12 */ "base_types::_eError SetProperty(const std::wstring &, bool)",
    /* 13 */ "base_types::_eError SetProperty(const std::wstring &, float)",
    /* 14 */ "base_types::_eError SetProperty(const std::wstring &, std::int32_t)",
    /* 15 */
    "base_types::_eError GetPropertyRange(const std::wstring &, std::int64_t *, std::int64_t *)",
    /* 16 */ "base_types::_eError GetPropertyRange(const std::wstring &, float *, float *)",
    /* 17 */
    "base_types::_eError GetPropertyRange(const std::wstring &, std::int32_t *, std::int32_t *)",
    /* 18 */ "base_types::_eError GetPropertyDefault(const std::wstring &, void *)",
    /* 19 */ "base_types::_eError GetPropertyDefault(const std::wstring &, std::wstring *)",
    /* 20 */ "base_types::_eError GetPropertyDefault(const std::wstring &, std::int64_t *)",
    /* 21 */ "base_types::_eError GetPropertyDefault(const std::wstring &, bool *)",
    /* 22 */ "base_types::_eError GetPropertyDefault(const std::wstring &, float *)",
    /* 23 */ "base_types::_eError GetPropertyDefault(const std::wstring &, std::int32_t *)",
    /* 24 */ "base_types::_eError CopyPropertiesFrom(const std::shared_ptr<IPropertySet> &)",
};

// What an effect adds behind its properties.
const Slots kEffectsOwn = {
    /* 25 */ "const fx::EffectDescriptor *GetDescriptor()",
    /* 26 */ "fx::_eError GetOutput(std::shared_ptr<IRenderTarget> &)",
    /* 27 */ "fx::_eError GetPreview(std::shared_ptr<IRenderTarget> &)",
    /* 28 */ "fx::_eError CloneEffect(std::shared_ptr<IBaseFX> &)",
    /* 29 */ "void OnDeviceLost(IRenderContext *)",
    /* 30 */ "void OnDeviceReset(IRenderContext *)",
    /* 31 */ "fx::_eError BeginRender()",
    /* 32 */ "fx::_eError EndRender()",
    /* 33 */ "int GetRenderCost()",
    /* 34 */ "fx::_eError Reset()",
};

const Slots kFactory = {
    /* 0 */ "~",
    /* 1 */ "std::uint32_t GetFXCount()",
    /* 2 */ "std::wstring GetFXName(std::uint64_t)",
    /* 3 */ "fx::_eError CreateFX(std::uint64_t, std::shared_ptr<IBaseFX> &)",
};

const Slots kGlobalFactorysOwn = {
    /* 4 */ "tarnex::_eError RemoveEffect(const std::wstring &)",
    /* 5 */ "tarnex::_eError RegisterEffect(const std::wstring &, bool)",
    /* 6 */ "fx::_eError CreateFX(const std::wstring &, std::shared_ptr<IBaseFX> &)",
};

const Slots kManager = {
    /* 0 */
    "tarnex::_eError GetFXFactory(const std::wstring &, const std::wstring &, "
    "const std::wstring &, std::uint64_t, std::shared_ptr<GlobalFXFactory> &)",
    /* 1 */ "~",
};

const Slots kEnumerator = {
    /* 0 */ "~",
    /* 1 */ "tarnex::_eError GetEffects(std::list<EffectRecord> &)",
};

const Slots kReader = {
    /* 0 */ "~",
    /* 1 */ "std::wstring GetName() const",
    /* 2 */ "std::wstring GetCategory() const",
    /* 3 */ "bool IsFilter() const",
    /* 4 */ "std::int32_t GetSpeed() const",
    /* 5 */ "bool GetSwap() const",
    /* 6 */ "std::int32_t GetReadStatus() const",
    /* 7 */ "const compositions::Names &GetInputs() const",
    /* 8 */ "const compositions::MediaSources &GetMediaSources() const",
    /* 9 */ "const compositions::EffectInstances &GetEffectInstances() const",
    /* 10 */ "const compositions::Mappings &GetMappings() const",
    /* 11 */ "const compositions::Properties &GetProperties() const",
    /* 12 */ "const compositions::Envelopes &GetEnvelopes() const",
    /* 13 */ "const compositions::TimelineEntries &GetTimelineEntries() const",
    /* 14 */ "const compositions::TimelineEvents &GetTimelineEvents() const",
    /* 15 */ "const compositions::StructureNode &GetStructure() const",
    /* 16 */ "const compositions::NumberedInputs &GetNumberedInputs() const",
    /* 17 */ "const compositions::Names &GetMixes() const",
    /* 18 */ "const compositions::RegistryValues &GetRegistryValues() const",
};

const Slots kCompositionFactorysOwn = {
    /* 4 */ "fx::_eError CreateFX(const std::wstring &, std::shared_ptr<IBaseFX> &)",
};

const Slots kPropertySet = {
    /* 0 */ "base_types::_eError SetProperty(const std::wstring &, const void *, std::int32_t)",
    /* 1 */ "~",
};

const Slots kProperty = {
    /* 0 */ "~",
    /* 1 */ "void *Value()",
    /* 2 */ "void Assign(const void *)",
    /* 3 */ "bool Range(void *, void *)",
    /* 4 */ "bool Default(void *)",
};

Slots operator+(Slots first, const Slots& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class Layout : public testing::TestWithParam<const char*> {
protected:
    static void SetUpTestSuite() { dumps_ = new std::map<std::string, VtableDump>; }
    static void TearDownTestSuite() { delete dumps_; }

    // The Itanium ABI gives an override of a second base's operation a slot in the primary table
    // too: behind all others, where it moves none.
    Slots OverrideOfSecondBase(const std::string& operation) {
        const bool msvc = std::string(GetParam()) == "x86_64-pc-windows-msvc";
        return msvc ? Slots() : Slots{operation};
    }

    // The table of `base` in a probe class, compared slot by slot.
    void Expect(const std::string& probe, const std::string& base, const Slots& expected) {
        if (!dumps_->count(GetParam())) (*dumps_)[GetParam()] = structure::DumpVtables(GetParam());
        const VtableDump& dump = (*dumps_)[GetParam()];
        const auto table = dump.find({probe, base});
        ASSERT_NE(table, dump.end()) << "no table of " << base << " in " << probe;
        EXPECT_EQ(table->second.size(), expected.size());
        for (std::size_t slot = 0; slot < expected.size() && slot < table->second.size(); ++slot) {
            EXPECT_EQ(table->second[slot], expected[slot]) << base << ", slot " << slot;
        }
    }

private:
    static inline std::map<std::string, VtableDump>* dumps_ = nullptr;
};

TEST_P(Layout, PropertyInterfaceHas25SlotsInOrder) {
    ASSERT_EQ(kProperties.size(), 25u);
    Expect("PropertiesProbe", "base_types::IPropertySet", kProperties);
}

TEST_P(Layout, ValidatorHasTwoSlotsInOrder) {
    Expect("ValidatorProbe", "base_types::IValidator", kValidator);
}

TEST_P(Layout, EffectHas35SlotsInOrderAndAValidatorTable) {
    ASSERT_EQ(kProperties.size() + kEffectsOwn.size(), 35u);
    Expect("EffectProbe", "base_types::IPropertySet", kProperties + kEffectsOwn);
    Expect("EffectProbe", "base_types::IValidator", kValidator);
}

TEST_P(Layout, FactoryHasFourSlotsInOrder) {
    Expect("FactoryProbe", "fx::IVorelFXFactory", kFactory);
}

TEST_P(Layout, ManagerHasItsDestructorLast) {
    Expect("ManagerProbe", "tarnex::ITarnex", kManager);
}

TEST_P(Layout, EnumeratorHasTwoSlotsInOrder) {
    Expect("EnumeratorProbe", "tarnex::IEffectsEnumerator", kEnumerator);
}

TEST_P(Layout, GlobalFactoryAddsThreeSlotsToItsPrimaryTable) {
    Expect("GlobalFactoryProbe", "fx::IVorelFXFactory",
           kFactory + kGlobalFactorysOwn + OverrideOfSecondBase(kEnumerator[1]));
    Expect("GlobalFactoryProbe", "tarnex::IEffectsEnumerator", kEnumerator);
}

TEST_P(Layout, CompositionReaderHas19SlotsInOrder) {
    ASSERT_EQ(kReader.size(), 19u);
    Expect("ReaderProbe", "compositions::ICompositionReader", kReader);
}

TEST_P(Layout, CompositionFactoryAddsCreationByPath) {
    Expect("CompositionFactoryProbe", "fx::IVorelFXFactory", kFactory + kCompositionFactorysOwn);
}

TEST_P(Layout, PropertySetHasTheRawSetterAndItsDestructor) {
    Expect("PropertySetProbe", "base_types::PropertySet", kPropertySet);
}

TEST_P(Layout, EffectWithAPropertySetCarriesThreeTables) {
    Expect("PropertyEffectProbe", "base_types::IPropertySet",
           kProperties + kEffectsOwn + OverrideOfSecondBase(kValidator[1]));
    Expect("PropertyEffectProbe", "base_types::IValidator", kValidator);
    Expect("PropertyEffectProbe", "base_types::PropertySet", kPropertySet);
}

TEST_P(Layout, PropertyHasFiveSlotsInOrder) {
    Expect("PropertyProbe", "base_types::Property", kProperty);
}

INSTANTIATE_TEST_SUITE_P(Targets, Layout,
                         testing::Values("x86_64-pc-windows-msvc", "x86_64-w64-windows-gnu",
                                         "x86_64-pc-linux-gnu"),
                         [](const auto& target) {
                             std::string name;
                             for (const char letter : std::string(target.param)) {
                                 name += letter == '-' ? '_' : letter;
                             }
                             return name;
                         });

}  // namespace
