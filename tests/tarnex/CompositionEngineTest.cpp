// An engine in the library, as an example of one: it turns the description's properties into
// properties of the composition, builds the inner effects out of the plug-ins' and passes values on
// to them.

#include <gmock/gmock.h>

#include <map>
#include <utility>

#include "compositions/Composition.h"
#include "compositions/CompositionFactory.h"
#include "compositions/archive/TempFolder.h"
#include "sdk/TypedProperty.h"
#include "support/Text.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/TestPlugins.h"

namespace tarnex {
namespace {

using compositions::Composition;
using compositions::CompositionFactory;
using compositions::ICompositionReader;
using compositions::PropertyRecord;

// What the engine keeps for one composition.
struct Graph {
    std::map<std::wstring, std::shared_ptr<fx::IBaseFX>> effects;  // by instance name
};

class ExampleEngine : public compositions::ICompositionEngine {
public:
    // Where inner effects come from; the factory is there only after the engine.
    void UseEffectsOf(GlobalFXFactory* factory) { factory_ = factory; }

    void Complete(Composition& composition) override {
        const ICompositionReader& description = composition.Description();
        for (const PropertyRecord& record : description.GetProperties()) AddTo(composition, record);
        auto graph = std::make_shared<Graph>();
        bool whole = true;
        for (const auto& [instance, effect] : description.GetEffectInstances()) {
            auto& inner = graph->effects[std::wstring(instance.View())];
            whole = CreateByName(effect, inner) && whole;
        }
        last = graph;
        composition.Attach(std::move(graph));
        composition.SetValid(whole);
    }

    std::weak_ptr<Graph> last;

private:
    static void AddTo(Composition& composition, const PropertyRecord& record) {
        base_types::PropertyOptions<float> options;
        options.access = record.access;
        options.defaultValue = std::stof(record.value);
        composition.AddProperty(record.name,
                                std::make_unique<base_types::TypedProperty<float>>(options));
    }

    bool CreateByName(const std::wstring& name, std::shared_ptr<fx::IBaseFX>& out) const {
        for (std::uint32_t index = 0; index < factory_->GetFXCount(); ++index) {
            if (factory_->GetFXName(index) != name) continue;
            return factory_->CreateFX(index, out) == fx::eSuccess;
        }
        return false;
    }

    GlobalFXFactory* factory_ = nullptr;
};

std::string Script(const std::string& name, const std::string& effect) {
    return "[SETUP]\nNAME = \"" + name +
           "\"\nCATEGORY = \"Example\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\nSoft = \"" + effect +
           "\"\n[STRUCTURE]\nOUTPUT = Soft( Back )\n[PROPERTIES]\nREAD WRITE \"Amount\" = 0.5\n";
}

class CompositionEngine : public testing::Test {
protected:
    CompositionEngine() {
        CompositionFactory::SetDefaultEngine(engine_);
        factory_ = std::make_unique<GlobalFXFactory>(PluginFolder(), L"plain.plugin|", L"", 0);
        engine_->UseEffectsOf(factory_.get());
        WriteBytes(folder_ / "good.txt", Script("Good", "plain.first"));
        WriteBytes(folder_ / "lacking.txt", Script("Lacking", "no such effect"));
    }
    ~CompositionEngine() override { CompositionFactory::SetDefaultEngine(nullptr); }

    void ExpectComplete(const std::shared_ptr<fx::IBaseFX>& effect) {
        EXPECT_TRUE(effect->IsValid());
        float amount = 0;
        EXPECT_EQ(effect->GetProperty(L"Amount", amount), base_types::eSuccess);
        EXPECT_EQ(amount, 0.5f);
        const auto graph = engine_->last.lock();
        ASSERT_NE(graph, nullptr);
        ASSERT_EQ(graph->effects.count(L"SOFT"), 1u);
        EXPECT_EQ(graph->effects[L"SOFT"]->GetDescriptor()->id, L"plain.first");
    }

    TempFolder folder_;
    std::shared_ptr<ExampleEngine> engine_ = std::make_shared<ExampleEngine>();
    std::unique_ptr<GlobalFXFactory> factory_;
};

TEST_F(CompositionEngine, CompletesWhatTheGlobalFactoryCreates) {
    ASSERT_EQ(factory_->RegisterEffect(folder_.Wide("good.txt"), true), eSuccess);
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory_->CreateFX(2, effect), fx::eSuccess);
    ExpectComplete(effect);
    ASSERT_EQ(factory_->CreateFX(folder_.Wide("good.txt"), effect), fx::eSuccess);
    ExpectComplete(effect);
    effect.reset();
    EXPECT_TRUE(engine_->last.expired()) << "the composition took its inner effects along";
}

TEST_F(CompositionEngine, SaysWhichCompositionsAreValid) {
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory_->CreateFX(folder_.Wide("lacking.txt"), effect), fx::eSuccess);
    EXPECT_FALSE(effect->IsValid());
}

TEST_F(CompositionEngine, FactoriesMadeBeforeItStayWithoutIt) {
    CompositionFactory::SetDefaultEngine(nullptr);
    GlobalFXFactory plain(PluginFolder(), L"", L"", 0);
    CompositionFactory::SetDefaultEngine(engine_);
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(plain.CreateFX(folder_.Wide("good.txt"), effect), fx::eSuccess);
    EXPECT_FALSE(effect->IsValid());
    std::vector<std::wstring> names;
    EXPECT_EQ(effect->GetProperties(names), base_types::eSuccess);
    EXPECT_THAT(names, testing::IsEmpty());
}

}  // namespace
}  // namespace tarnex
