#include "compositions/CompositionFactory.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

#include "compositions/CompScript.h"
#include "compositions/Composition.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "helpers/report/CapturedOutput.h"
#include "sdk/TypedProperty.h"

namespace {

using namespace compositions;

std::string Script(const std::string& name, const std::string& category, int inputs = 1) {
    std::string text = "[SETUP]\nNAME = \"" + name + "\"\nCATEGORY = \"" + category +
                       "\"\n[SOURCES]\nBack = INPUT\n";
    for (int i = 1; i < inputs; ++i) text += "Back" + std::to_string(i) + " = INPUT\n";
    return text + "[EFFECTS]\nB = \"Blur\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";
}

std::wstring Reported(const std::wstring& error) {
    return L"Operation \"compositions::CompositionFactory::CreateFX\" returned error <" + error +
           L">";
}

class CompositionFactoryTest : public ::testing::Test {
protected:
    CompositionFactoryTest() : factory_(folder_.Wide("").substr(0, folder_.Wide("").size() - 1)) {
        captured::TakeTraced();
    }

    void Put(const std::string& file, const std::string& text) { WriteBytes(folder_ / file, text); }
    bool Register(const std::wstring& file, std::wstring& name) {
        const bool added = factory_.RegisterComposition(file, false, name);
        captured::TakeTraced();  // what reading the script said
        return added;
    }
    std::wstring IdAt(std::uint64_t index) {
        std::shared_ptr<fx::IBaseFX> effect;
        const fx::_eError code = factory_.CreateFX(index, effect);
        return code == fx::eSuccess ? effect->GetDescriptor()->id : std::to_wstring(code);
    }

    TempFolder folder_;
    CompositionFactory factory_;
};

TEST_F(CompositionFactoryTest, StartsEmptyWhateverTheFolderHolds) {
    Put("a.txt", Script("Glow", "Light"));
    EXPECT_EQ(factory_.GetFXCount(), 0u);
    EXPECT_EQ(factory_.GetFXName(0), L"");
    std::shared_ptr<fx::IBaseFX> effect;
    EXPECT_EQ(factory_.CreateFX(0, effect), fx::eWrongFXIdx);
    EXPECT_EQ(captured::TakeTraced(), std::vector{Reported(L"eWrongFXIdx")});
}

TEST_F(CompositionFactoryTest, RegistersByNameWithinTheFolder) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name = L"before";
    EXPECT_TRUE(Register(L"a.txt", name));
    EXPECT_EQ(name, L"Glow\\Light");
    EXPECT_EQ(factory_.GetFXCount(), 1u);
    EXPECT_EQ(factory_.GetFXName(0), L"Glow\\Light");
    EXPECT_EQ(IdAt(0), L"Glow\\Light");
}

TEST_F(CompositionFactoryTest, RegistersByPathAsItStands) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name;
    EXPECT_FALSE(factory_.RegisterComposition(L"a.txt", true, name));
    EXPECT_TRUE(factory_.RegisterComposition(folder_.Wide("a.txt"), true, name));
    EXPECT_EQ(name, L"Glow\\Light");
}

TEST_F(CompositionFactoryTest, SecondRegistrationOfAPathReadsNothingAndGivesTheFirstName) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    Put("a.txt", Script("Other", "Light"));
    name = L"before";
    EXPECT_FALSE(Register(L"a.txt", name));
    EXPECT_EQ(name, L"Glow\\Light");
    std::filesystem::remove(folder_ / "a.txt");
    name = L"before";
    EXPECT_FALSE(Register(L"a.txt", name));
    EXPECT_EQ(name, L"Glow\\Light");
    EXPECT_EQ(factory_.GetFXCount(), 1u);
}

TEST_F(CompositionFactoryTest, PathsAreTheSameOnlyLetterForLetter) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    EXPECT_TRUE(Register(L".\\a.txt", name));
}

TEST_F(CompositionFactoryTest, UnreadableScriptIsRefusedWithoutAWord) {
    std::wstring name = L"before";
    EXPECT_FALSE(factory_.RegisterComposition(L"none.txt", false, name));
    Put("empty.txt", "");
    EXPECT_FALSE(factory_.RegisterComposition(L"empty.txt", false, name));
    EXPECT_FALSE(factory_.RegisterComposition(L"", false, name));  // the folder itself
    EXPECT_EQ(name, L"before");
    EXPECT_EQ(factory_.GetFXCount(), 0u);
    EXPECT_TRUE(captured::TakeTraced().empty());
}

TEST_F(CompositionFactoryTest, FaultyScriptIsRefusedAndMayBeMended) {
    Put("a.txt", "[SETUP]\nNAME = \"Glow\"\n");
    std::wstring name = L"before";
    EXPECT_FALSE(Register(L"a.txt", name));
    EXPECT_EQ(name, L"before");
    Put("a.txt", Script("Glow", "Light"));
    EXPECT_TRUE(Register(L"a.txt", name));
}

TEST_F(CompositionFactoryTest, ArchivesAreNotConsultedByRegistration) {
    WriteBytes(folder_ / "a.mxf", plain::Write(samples::Everything()).bytes);
    std::wstring name;
    EXPECT_FALSE(Register(L"a.mxf", name));
    EXPECT_FALSE(Register(L"a.txt", name));
}

TEST_F(CompositionFactoryTest, SecondScriptOfANameReplacesTheFirstAndTakesAnIndex) {
    Put("a.txt", Script("Glow", "Light", 1));
    Put("b.txt", Script("Glow", "Light", 3));
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    std::shared_ptr<fx::IBaseFX> first;
    ASSERT_EQ(factory_.CreateFX(std::uint64_t{0}, first), fx::eSuccess);
    EXPECT_TRUE(Register(L"b.txt", name));
    EXPECT_EQ(factory_.GetFXCount(), 1u);
    EXPECT_EQ(factory_.GetFXName(0), L"Glow\\Light");
    EXPECT_EQ(factory_.GetFXName(1), L"Glow\\Light");
    std::shared_ptr<fx::IBaseFX> second;
    ASSERT_EQ(factory_.CreateFX(std::uint64_t{0}, second), fx::eSuccess);
    EXPECT_EQ(first->GetDescriptor()->inputs, 1u);
    EXPECT_EQ(second->GetDescriptor()->inputs, 3u);
    EXPECT_EQ(IdAt(1), L"9");  // beyond the count
}

TEST_F(CompositionFactoryTest, IndexesRunOnBehindADoubleName) {
    Put("a.txt", Script("Glow", "Light"));
    Put("b.txt", Script("Glow", "Light"));
    Put("c.txt", Script("Haze", "Light"));
    std::wstring name;
    for (const wchar_t* file : {L"a.txt", L"b.txt", L"c.txt"}) ASSERT_TRUE(Register(file, name));
    EXPECT_EQ(factory_.GetFXCount(), 2u);
    EXPECT_EQ(factory_.GetFXName(2), L"Haze\\Light");
    EXPECT_EQ(IdAt(1), L"Glow\\Light");
    EXPECT_EQ(IdAt(2), L"9");
}

TEST_F(CompositionFactoryTest, NameAndCategoryTogetherTellCompositionsApart) {
    Put("a.txt", Script("Glow", "Light"));
    Put("b.txt", Script("Glow", "Dark"));
    Put("c.txt", Script("glow", "Light"));
    std::wstring name;
    for (const wchar_t* file : {L"a.txt", L"b.txt", L"c.txt"}) ASSERT_TRUE(Register(file, name));
    EXPECT_EQ(factory_.GetFXCount(), 3u);
    EXPECT_EQ(IdAt(1), L"Glow\\Dark");
    EXPECT_EQ(IdAt(2), L"glow\\Light");
}

TEST_F(CompositionFactoryTest, UnknownIndexesAreRefusedAndReported) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    for (const std::uint64_t index :
         {std::uint64_t{1}, std::uint64_t{1} << 32, ~std::uint64_t{0}}) {
        std::shared_ptr<fx::IBaseFX> effect;
        EXPECT_EQ(factory_.GetFXName(index), L"");
        EXPECT_EQ(factory_.CreateFX(index, effect), fx::eWrongFXIdx);
        EXPECT_EQ(effect, nullptr);
        EXPECT_EQ(captured::TakeTraced(), std::vector{Reported(L"eWrongFXIdx")});
    }
}

// A factory of another's making over this one.
class OverriddenFactory : public CompositionFactory {
public:
    using CompositionFactory::CompositionFactory;
    std::uint32_t GetFXCount() override { return count; }
    std::wstring GetFXName(std::uint64_t) override { return name; }

    std::uint32_t count = 10;
    std::wstring name;
};

TEST_F(CompositionFactoryTest, CreationByIndexGoesByItsOwnVirtualCountAndName) {
    Put("a.txt", Script("Glow", "Light"));
    Put("b.txt", Script("Haze", "Light"));
    OverriddenFactory factory(L"");
    std::wstring name;
    ASSERT_TRUE(factory.RegisterComposition(folder_.Wide("a.txt"), true, name));
    ASSERT_TRUE(factory.RegisterComposition(folder_.Wide("b.txt"), true, name));
    factory.name = L"Haze\\Light";
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory.CreateFX(std::uint64_t{9}, effect), fx::eSuccess);
    EXPECT_EQ(effect->GetDescriptor()->id, L"Haze\\Light");
    const auto before = effect;
    captured::TakeTraced();
    factory.name = L"in no catalogue";
    EXPECT_EQ(factory.CreateFX(std::uint64_t{9}, effect), fx::eWrongFXIdx);
    factory.name = L"Haze\\Light";
    factory.count = 1;
    EXPECT_EQ(factory.CreateFX(std::uint64_t{1}, effect), fx::eWrongFXIdx);
    EXPECT_EQ(effect, before);
    EXPECT_EQ(captured::TakeTraced(), std::vector(2, Reported(L"eWrongFXIdx")));
}

TEST_F(CompositionFactoryTest, EffectsOutliveTheFactory) {
    Put("a.txt", Script("Glow", "Light"));
    std::shared_ptr<fx::IBaseFX> effect;
    {
        CompositionFactory factory(folder_.Wide(""));
        std::wstring name;
        ASSERT_TRUE(factory.RegisterComposition(folder_.Wide("a.txt"), true, name));
        ASSERT_EQ(factory.CreateFX(std::uint64_t{0}, effect), fx::eSuccess);
    }
    EXPECT_EQ(effect->GetDescriptor()->id, L"Glow\\Light");
    EXPECT_EQ(static_cast<Composition&>(*effect).Description().GetInputs().size(), 1u);
}

TEST_F(CompositionFactoryTest, EffectsOfOneCompositionShareItsDescription) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    std::shared_ptr<fx::IBaseFX> first;
    std::shared_ptr<fx::IBaseFX> second;
    ASSERT_EQ(factory_.CreateFX(std::uint64_t{0}, first), fx::eSuccess);
    ASSERT_EQ(factory_.CreateFX(std::uint64_t{0}, second), fx::eSuccess);
    EXPECT_NE(first, second);
    EXPECT_EQ(&static_cast<Composition&>(*first).Description(),
              &static_cast<Composition&>(*second).Description());
}

TEST_F(CompositionFactoryTest, CreationByPathLeavesTheCatalogueAlone) {
    Put("a.txt", Script("Glow", "Light"));
    std::shared_ptr<fx::IBaseFX> effect;
    EXPECT_EQ(factory_.CreateFX(folder_.Wide("a.txt"), effect), fx::eSuccess);
    EXPECT_EQ(effect->GetDescriptor()->id, L"Glow\\Light");
    EXPECT_EQ(factory_.GetFXCount(), 0u);
    EXPECT_EQ(factory_.GetFXName(0), L"");
    std::wstring name;
    EXPECT_TRUE(Register(L"a.txt", name));
}

TEST_F(CompositionFactoryTest, FailedCreationByPathIsReportedAndLeavesTheOutPointer) {
    Put("a.txt", Script("Glow", "Light"));
    Put("bad.txt", "[SETUP]\n");
    std::filesystem::create_directory(folder_ / "folder.txt");
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.txt"), effect), fx::eSuccess);
    const auto before = effect;
    captured::TakeTraced();
    for (const char* file : {"none.txt", "bad.txt", "folder.txt"}) {
        EXPECT_EQ(factory_.CreateFX(folder_.Wide(file), effect), fx::eCouldNotCreateFX) << file;
        EXPECT_EQ(effect, before);
        EXPECT_EQ(captured::TakeTraced(), std::vector{Reported(L"eCouldNotCreateFX")}) << file;
    }
    EXPECT_EQ(factory_.CreateFX(std::wstring(), effect), fx::eCouldNotCreateFX);
}

TEST_F(CompositionFactoryTest, ArchiveHandedInByPathIsRead) {
    WriteBytes(folder_ / "a.anything", plain::Write(samples::Everything()).bytes);
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.anything"), effect), fx::eSuccess);
    EXPECT_EQ(effect->GetDescriptor()->id, L"Every Thing\\" + std::wstring(L"Te\0sts", 6));
    EXPECT_EQ(effect->GetDescriptor()->inputs, 7u);
}

TEST_F(CompositionFactoryTest, ArchiveOfAnyVersionFromOneOnIsRead) {
    for (const std::int32_t version : {-1, 0, 1, 2, 3, 0x7FFFFFFF}) {
        WriteBytes(folder_ / "a.mxf", plain::Write(samples::Small(), version).bytes);
        std::shared_ptr<fx::IBaseFX> effect;
        EXPECT_EQ(factory_.CreateFX(folder_.Wide("a.mxf"), effect),
                  version >= 1 ? fx::eSuccess : fx::eCouldNotCreateFX)
            << version;
    }
}

TEST_F(CompositionFactoryTest, ArchiveIsBelievedWithoutTheScriptsChecks) {
    CompositionDescription description;  // a filter without an input, and without a name
    description.isFilter = true;
    WriteBytes(folder_ / "a.mxf", plain::Write(description).bytes);
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.mxf"), effect), fx::eSuccess);
    EXPECT_EQ(effect->GetDescriptor()->id, L"\\");
    EXPECT_EQ(effect->GetDescriptor()->flags, 132u);
    EXPECT_EQ(effect->GetDescriptor()->inputs, 0u);
}

TEST_F(CompositionFactoryTest, DamagedArchiveIsRefused) {
    const std::string bytes = plain::Write(samples::Small()).bytes;
    for (std::size_t size = 0; size < bytes.size(); size += 7) {
        WriteBytes(folder_ / "a.mxf", bytes.substr(0, size));
        std::shared_ptr<fx::IBaseFX> effect;
        ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.mxf"), effect), fx::eCouldNotCreateFX) << size;
        ASSERT_EQ(effect, nullptr);
    }
}

// An engine that turns the description's property records into properties and its effect instances
// into inner effects, as far as a test needs it.
class Engine : public ICompositionEngine {
public:
    struct InnerEffects {
        explicit InnerEffects(int& alive) : count(alive) { ++count; }
        ~InnerEffects() { --count; }
        std::vector<std::wstring> names;
        int& count;
    };

    void Complete(Composition& composition) override {
        const ICompositionReader& description = composition.Description();
        for (const PropertyRecord& record : description.GetProperties()) {
            base_types::PropertyOptions<float> options;
            options.access = record.access;
            options.defaultValue = std::stof(record.value);
            composition.AddProperty(record.name,
                                    std::make_unique<base_types::TypedProperty<float>>(options));
        }
        auto inner = std::make_shared<InnerEffects>(alive);
        for (const auto& [instance, effect] : description.GetEffectInstances()) {
            inner->names.push_back(effect);
        }
        built = inner->names;
        composition.Attach(std::move(inner));
        composition.SetValid(true);
    }

    int alive = 0;
    std::vector<std::wstring> built;
};

class FailingEngine : public ICompositionEngine {
public:
    void Complete(Composition&) override { throw std::runtime_error("engine"); }
};

TEST_F(CompositionFactoryTest, EngineCompletesEveryCompositionMade) {
    Put("a.txt", Script("Glow", "Light") + "[PROPERTIES]\nREAD WRITE \"Amount\" = 0.5\n");
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    const auto engine = std::make_shared<Engine>();
    factory_.SetEngine(engine);
    std::shared_ptr<fx::IBaseFX> byIndex;
    std::shared_ptr<fx::IBaseFX> byPath;
    ASSERT_EQ(factory_.CreateFX(std::uint64_t{0}, byIndex), fx::eSuccess);
    ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.txt"), byPath), fx::eSuccess);
    for (const auto& effect : {byIndex, byPath}) {
        float amount = 0;
        EXPECT_TRUE(effect->IsValid());
        EXPECT_EQ(effect->GetProperty(L"Amount", amount), base_types::eSuccess);
        EXPECT_EQ(amount, 0.5f);
    }
    EXPECT_EQ(engine->built, std::vector<std::wstring>{L"Blur"});
    EXPECT_EQ(engine->alive, 2);
    byIndex.reset();
    byPath.reset();
    EXPECT_EQ(engine->alive, 0);
}

TEST_F(CompositionFactoryTest, EngineLeavesEarlierCompositionsAlone) {
    Put("a.txt", Script("Glow", "Light") + "[PROPERTIES]\nREAD WRITE \"Amount\" = 0.5\n");
    std::shared_ptr<fx::IBaseFX> before;
    std::shared_ptr<fx::IBaseFX> after;
    ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.txt"), before), fx::eSuccess);
    factory_.SetEngine(std::make_shared<Engine>());
    factory_.SetEngine(nullptr);
    ASSERT_EQ(factory_.CreateFX(folder_.Wide("a.txt"), after), fx::eSuccess);
    for (const auto& effect : {before, after}) {
        std::vector<std::wstring> names;
        EXPECT_FALSE(effect->IsValid());
        EXPECT_EQ(effect->GetProperties(names), base_types::eSuccess);
        EXPECT_TRUE(names.empty());
    }
}

TEST_F(CompositionFactoryTest, ExceptionWhileCreatingIsReportedAsCouldNotCreate) {
    Put("a.txt", Script("Glow", "Light"));
    std::wstring name;
    ASSERT_TRUE(Register(L"a.txt", name));
    factory_.SetEngine(std::make_shared<FailingEngine>());
    std::shared_ptr<fx::IBaseFX> effect;
    EXPECT_EQ(factory_.CreateFX(std::uint64_t{0}, effect), fx::eCouldNotCreateFX);
    EXPECT_EQ(captured::TakeTraced(), std::vector{Reported(L"eCouldNotCreateFX")});
    EXPECT_EQ(factory_.CreateFX(folder_.Wide("a.txt"), effect), fx::eCouldNotCreateFX);
    EXPECT_EQ(effect, nullptr);
}

TEST(CompositionEntry, CountsOrdinaryInputsAlone) {
    CompositionDescription description = samples::Everything();
    const CompositionEntry entry(std::make_shared<CompositionScript>(description));
    EXPECT_EQ(entry.name, L"Every Thing");
    EXPECT_EQ(entry.category, description.category);
    EXPECT_EQ(entry.inputs, 5u);
}

}  // namespace
