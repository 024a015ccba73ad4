// The built example plug-ins, loaded as the manager loads them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "fx/IVorelFXFactory.h"
#include "fx/TestEffects.h"
#include "helpers/report/CapturedOutput.h"
#include "platform/Module.h"

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

using Entry = fx::_eError (*)(std::shared_ptr<fx::IVorelFXFactory>&);

// The program's own folder is the one that the plug-ins' folder stands in.
std::shared_ptr<fx::IVorelFXFactory> FactoryOf(const char* file) {
    std::wstring path = platform::ExecutablePath();
    path.resize(path.find_last_of(L"\\/") + 1);
    const std::string name = file;
    path.append(name.begin(), name.end());
    void* module = platform::LoadModule(path);
    void* symbol = module ? platform::ResolveSymbol(module, "CreateFactory") : nullptr;
    std::shared_ptr<fx::IVorelFXFactory> factory;
    if (symbol) {
        EXPECT_EQ(reinterpret_cast<Entry>(symbol)(factory), fx::eSuccess);
    }
    return factory;
}

class ExamplePlugin : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(factory, nullptr) << "the example plug-in was not loaded";
        captured::TakeTraced();
    }

    std::shared_ptr<fx::IBaseFX> Make(const std::wstring& name) {
        std::shared_ptr<fx::IBaseFX> effect;
        for (std::uint32_t i = 0; i < factory->GetFXCount(); ++i) {
            if (factory->GetFXName(i) == name) {
                EXPECT_EQ(factory->CreateFX(i, effect), fx::eSuccess);
            }
        }
        return effect;
    }

    std::shared_ptr<fx::IVorelFXFactory> factory = FactoryOf(TARNEX_EXAMPLE_PLUGIN);
};

TEST_F(ExamplePlugin, OffersItsEffects) {
    std::vector<std::wstring> names;
    for (std::uint32_t i = 0; i < factory->GetFXCount(); ++i) {
        names.push_back(factory->GetFXName(i));
        std::shared_ptr<fx::IBaseFX> effect;
        ASSERT_EQ(factory->CreateFX(i, effect), fx::eSuccess);
        EXPECT_TRUE(effect->IsValid());
        EXPECT_EQ(effect->GetDescriptor()->id, names.back() + L"\\Video");
        EXPECT_EQ(effect->GetDescriptor()->flags, 0x84u);
        EXPECT_EQ(effect->GetDescriptor()->inputs, 1u);
    }
    EXPECT_THAT(names, ElementsAre(L"Blur", L"Levels", L"TextTitle", L"Timecode", L"Crop"));
    std::shared_ptr<fx::IBaseFX> none;
    EXPECT_EQ(factory->CreateFX(factory->GetFXCount(), none), fx::eWrongFXIdx);
}

TEST_F(ExamplePlugin, ShowsEveryFormAndAccess) {
    std::set<std::int32_t> types;
    std::set<std::uint32_t> accesses;
    for (std::uint32_t i = 0; i < factory->GetFXCount(); ++i) {
        std::shared_ptr<fx::IBaseFX> effect;
        ASSERT_EQ(factory->CreateFX(i, effect), fx::eSuccess);
        std::vector<std::wstring> names;
        ASSERT_EQ(effect->GetProperties(names), base_types::eSuccess);
        for (const std::wstring& name : names) {
            base_types::PropertyInfo info{};
            ASSERT_EQ(effect->GetPropertyInfo(name, &info), base_types::eSuccess);
            types.insert(info.type);
            accesses.insert(info.access);
        }
    }
    EXPECT_THAT(types, ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(accesses, ElementsAre(1u, 2u, 3u));
}

TEST_F(ExamplePlugin, TimecodeIsWorkedOutWhenRead) {
    auto effect = Make(L"Timecode");
    ASSERT_NE(effect, nullptr);
    std::wstring text;
    EXPECT_EQ(effect->GetProperty(L"Text", text), base_types::eSuccess);
    EXPECT_EQ(text, L"00:00:00:00");
    EXPECT_EQ(effect->SetProperty(L"Frame", std::int64_t{25 * 3661 + 7}), base_types::eSuccess);
    EXPECT_EQ(effect->GetProperty(L"Text", text), base_types::eSuccess);
    EXPECT_EQ(text, L"01:01:01:07");
    EXPECT_EQ(effect->SetProperty(L"Rate", 0), base_types::eSuccess);
    EXPECT_EQ(effect->SetProperty(L"Frame", std::int64_t{-1}), base_types::eSuccess);
    EXPECT_EQ(effect->GetProperty(L"Text", text), base_types::eSuccess);
    EXPECT_EQ(text, L"00:00:00:00");
    EXPECT_EQ(effect->SetProperty(L"Text", std::wstring(L"x")),
              base_types::ePropertyNoAccessForWriting);
}

TEST_F(ExamplePlugin, CropTakesAllBordersAtOnceAndChecksThem) {
    auto effect = Make(L"Crop");
    ASSERT_NE(effect, nullptr);
    std::int32_t value = 0;
    EXPECT_EQ(effect->SetProperty(L"All", 12), base_types::eSuccess);
    for (const wchar_t* border : {L"Left", L"Top", L"Right", L"Bottom"}) {
        EXPECT_EQ(effect->GetProperty(border, value), base_types::eSuccess);
        EXPECT_EQ(value, 12);
    }
    EXPECT_EQ(effect->SetProperty(L"All", -1), base_types::eOutOfRange);
    EXPECT_EQ(effect->SetProperty(L"All", 4097), base_types::eOutOfRange);
    EXPECT_EQ(effect->GetProperty(L"Left", value), base_types::eSuccess);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(effect->GetProperty(L"All", value), base_types::ePropertyNoAccessForReading);
}

TEST_F(ExamplePlugin, LevelsCurveIsABlockOfBytes) {
    auto effect = Make(L"Levels");
    ASSERT_NE(effect, nullptr);
    unsigned char curve[300] = {};
    std::int32_t copied = 0;
    EXPECT_EQ(effect->GetProperty(L"Curve", curve, 300, &copied), base_types::eSuccess);
    EXPECT_EQ(copied, 256);
    EXPECT_EQ(curve[255], 255);
}

// Property sets of two modules meet through a dynamic cast and their common layout.
TEST_F(ExamplePlugin, PropertiesAreCopiedAcrossModules) {
    auto plugin = Make(L"Timecode");
    ASSERT_NE(plugin, nullptr);
    class Mine : public fx::EffectBase {
    public:
        Mine() : EffectBase(L"Mine", 0x84, 1) {
            Bind(L"Frame", frame);
            Bind(L"Rate", rate);
            Bind(L"Text", text);
        }
        std::int64_t frame = 0;
        std::int32_t rate = 0;
        std::wstring text;
    };
    auto mine = std::make_shared<Mine>();
    ASSERT_EQ(plugin->SetProperty(L"Frame", std::int64_t{50}), base_types::eSuccess);
    EXPECT_EQ(mine->CopyPropertiesFrom(plugin), base_types::eSuccess);
    EXPECT_EQ(mine->frame, 50);
    EXPECT_EQ(mine->rate, 25);
    EXPECT_EQ(mine->text, L"00:00:02:00");
}

TEST(BarePlugin, WorksWithoutTheSdk) {
    auto factory = FactoryOf(TARNEX_BARE_PLUGIN);
    ASSERT_NE(factory, nullptr);
    ASSERT_EQ(factory->GetFXCount(), 2u);
    EXPECT_EQ(factory->GetFXName(0), L"Invert");
    EXPECT_EQ(factory->GetFXName(1), L"Sepia");
    EXPECT_EQ(factory->GetFXName(2), L"");
    std::shared_ptr<fx::IBaseFX> effect;
    EXPECT_EQ(factory->CreateFX(2, effect), fx::eWrongFXIdx);
    ASSERT_EQ(factory->CreateFX(1, effect), fx::eSuccess);
    EXPECT_EQ(effect->GetDescriptor()->id, L"Sepia\\Bare");
    std::vector<std::wstring> names;
    EXPECT_EQ(effect->GetProperties(names), base_types::eSuccess);
    EXPECT_THAT(names, ElementsAre(L"Amount"));
    std::int32_t value = 0;
    EXPECT_EQ(effect->SetProperty(L"Amount", 30), base_types::eSuccess);
    EXPECT_EQ(effect->GetProperty(L"Amount", value), base_types::eSuccess);
    EXPECT_EQ(value, 30);
    EXPECT_EQ(effect->SetProperty(L"Amount", 101), base_types::eOutOfRange);
}

TEST(BarePlugin, IsNoSourceForTheLibrarysPropertySet) {
    auto factory = FactoryOf(TARNEX_BARE_PLUGIN);
    ASSERT_NE(factory, nullptr);
    std::shared_ptr<fx::IBaseFX> bare;
    ASSERT_EQ(factory->CreateFX(0, bare), fx::eSuccess);
    test::FormsEffect effect;
    EXPECT_EQ(effect.CopyPropertiesFrom(bare), base_types::eNotImplemented);
}

}  // namespace
