// Scripts and archives when the system refuses a file operation: the first, the second and so on.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <set>

#include "SystemFault.h"
#include "compositions/ArchiveWriter.h"
#include "compositions/CompositionFactory.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "compositions/host/ConverterValues.h"
#include "helpers/scripting/ScriptFile.h"

namespace {

using namespace compositions;
using test_support::Fate;
using test_support::ForEachCall;
using test_support::SystemCall;
using test_support::SystemFault;

// More than a file stream's buffer holds, so that it is read and written in several calls.
std::string Script() {
    std::string text =
        "[SETUP]\nNAME = \"Name\"\nCATEGORY = \"Category\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\n"
        "B = \"Blur\"\n[STRUCTURE]\nOUTPUT = B( Back )\n[PROPERTIES]\n";
    for (int i = 0; i < 120; ++i) {
        text += "READ WRITE \"a property of a longer name " + std::to_string(i) +
                "\" = \"and a value that takes its room, too\"\n";
    }
    return text;
}

class FileFault : public testing::Test {
protected:
    FileFault() : values_(folder_ / "settings.ini") {
        setenv("TARNEX_SETTINGS", (folder_ / "settings.ini").c_str(), 1);
        WriteBytes(folder_ / "fx.txt", Script());
    }
    ~FileFault() override { unsetenv("TARNEX_SETTINGS"); }

    std::set<std::string> Files() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    // Registers under each fault; a failure changes nothing and the next call goes well.
    void RegisterUnder(SystemCall call, Fate fate, bool always) {
        int refused = 0;
        ForEachCall([&](int nth, bool lasts) {
            CompositionFactory factory(L"");
            std::wstring name = L"before";
            bool added = false;
            bool happened = false;
            {
                const SystemFault fault(call, nth, lasts, fate);
                added = factory.RegisterComposition(script_, true, name);
                happened = fault.Happened();
            }
            if (!added) {
                ++refused;
                EXPECT_TRUE(happened);
                EXPECT_FALSE(always);
                EXPECT_EQ(name, L"before");
                EXPECT_EQ(factory.GetFXCount(), 0u);
                EXPECT_TRUE(factory.RegisterComposition(script_, true, name));
            }
            EXPECT_EQ(name, L"Name\\Category");
            EXPECT_EQ(factory.GetFXCount(), 1u);
            return happened;
        });
        if (!always) {
            EXPECT_GT(refused, 0);
        }
    }
    // Creates from the path under each fault: code and `out` agree, and the next call goes well.
    void CreateUnder(SystemCall call, Fate fate, const std::wstring& path) {
        CompositionFactory factory(L"");
        ForEachCall([&](int nth, bool lasts) {
            std::shared_ptr<fx::IBaseFX> out;
            fx::_eError code;
            bool happened = false;
            {
                const SystemFault fault(call, nth, lasts, fate);
                code = factory.CreateFX(path, out);
                happened = fault.Happened();
            }
            if (code != fx::eSuccess) {
                EXPECT_TRUE(happened);
                EXPECT_EQ(code, fx::eCouldNotCreateFX);
                EXPECT_EQ(out, nullptr);
                EXPECT_EQ(factory.CreateFX(path, out), fx::eSuccess);
            }
            EXPECT_NE(out, nullptr);
            EXPECT_EQ(factory.GetFXCount(), 0u);
            return happened;
        });
    }

    TempFolder folder_;
    host_test::ScopedConverterValues values_;
    const std::wstring script_ = folder_.Wide("fx.txt");
    const std::wstring archive_ = folder_.Wide("fx.mxf");
};

TEST_F(FileFault, RegistrationThatCannotReadChangesNothing) {
    for (const SystemCall call : {SystemCall::kOpen, SystemCall::kLook, SystemCall::kRead}) {
        RegisterUnder(call, Fate::kFails, false);
    }
    RegisterUnder(SystemCall::kRead, Fate::kEnds, false);
}

TEST_F(FileFault, ScriptThatComesInPiecesIsReadWhole) {
    RegisterUnder(SystemCall::kRead, Fate::kShort, true);
}

TEST_F(FileFault, ScriptThatEndsBeforeItsSizeIsNotLoaded) {
    {
        const SystemFault fault(SystemCall::kRead, 1, true, Fate::kBreaksOff);
        const helpers::scripting::ScriptFile<std::wstring> file(script_);
        EXPECT_FALSE(file.loaded());
        EXPECT_TRUE(fault.Happened());
    }
    CompositionFactory factory(L"");
    std::wstring name = L"before";
    {
        const SystemFault fault(SystemCall::kRead, 1, true, Fate::kBreaksOff);
        EXPECT_FALSE(factory.RegisterComposition(script_, true, name));
    }
    EXPECT_EQ(name, L"before");
    EXPECT_EQ(factory.GetFXCount(), 0u);
    RegisterUnder(SystemCall::kRead, Fate::kBreaksOff, false);
    CreateUnder(SystemCall::kRead, Fate::kBreaksOff, script_);
}

TEST_F(FileFault, CreationFromAScriptOrAnArchiveGoesWellOrAnswersItsCode) {
    ASSERT_TRUE(WriteArchive(archive_, samples::Everything()));
    for (const std::wstring& path : {script_, archive_}) {
        for (const SystemCall call : test_support::kFileCalls) {
            CreateUnder(call, Fate::kFails, path);
        }
        for (const Fate fate : {Fate::kShort, Fate::kEnds}) {
            CreateUnder(SystemCall::kRead, fate, path);
        }
    }
}

// What cannot be written is no reason not to have the effect.
TEST_F(FileFault, ArchiveBesideTheScriptIsTheOldOneOrTheNewOne) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    CompositionFactory factory(L"");
    std::shared_ptr<fx::IBaseFX> out;
    ASSERT_EQ(factory.CreateFX(script_, out), fx::eSuccess);
    const std::string whole = ReadBytes(folder_ / "fx.mxf");
    ASSERT_TRUE(plain::Read(whole).whole);
    const std::string old = plain::Write(samples::Small()).bytes;
    for (const SystemCall call : {SystemCall::kWrite, SystemCall::kMove}) {
        for (const Fate fate : {Fate::kFails, Fate::kShort, Fate::kEnds}) {
            const int calls = ForEachCall([&](int nth, bool lasts) {
                WriteBytes(folder_ / "fx.mxf", old);
                bool happened = false;
                fx::_eError code;
                {
                    const SystemFault fault(call, nth, lasts, fate);
                    code = factory.CreateFX(script_, out);
                    happened = fault.Happened();
                }
                EXPECT_EQ(code, fx::eSuccess);
                const std::string now = ReadBytes(folder_ / "fx.mxf");
                EXPECT_TRUE(now == whole || (happened && now == old)) << now.size();
                // A temporary file stays where removing failed, too; the next write takes it along.
                EXPECT_EQ(factory.CreateFX(script_, out), fx::eSuccess);
                EXPECT_EQ(ReadBytes(folder_ / "fx.mxf"), whole);
                EXPECT_EQ(Files().size(), 3u);
                return happened;
            });
            EXPECT_GT(calls, 0);
        }
    }
    for (const SystemCall call : {SystemCall::kOpen, SystemCall::kLook, SystemCall::kRead}) {
        CreateUnder(call, Fate::kFails, script_);
    }
}

TEST_F(FileFault, SavingOrLoadingAnArchiveAnswersFalse) {
    CompositionDescription description = samples::Everything();
    description.properties.resize(300, description.properties.front());
    const std::string whole = plain::Write(description).bytes;
    for (const SystemCall call : {SystemCall::kOpen, SystemCall::kWrite}) {
        for (const Fate fate : {Fate::kFails, Fate::kEnds}) {
            if (call == SystemCall::kOpen && fate == Fate::kEnds) continue;  // opens well
            const int calls = ForEachCall([&](int nth, bool lasts) {
                bool saved = false;
                bool happened = false;
                {
                    const SystemFault fault(call, nth, lasts, fate);
                    ScriptArchive archive(archive_, false);
                    saved = archive.serialize(description);
                    saved = archive.Close() && saved;
                    happened = fault.Happened();
                }
                EXPECT_EQ(saved, !happened);
                if (saved) {
                    EXPECT_EQ(ReadBytes(folder_ / "fx.mxf"), whole);
                }
                return happened;
            });
            EXPECT_GT(calls, 0);
        }
    }
    for (const SystemCall call : {SystemCall::kOpen, SystemCall::kLook, SystemCall::kRead}) {
        for (const Fate fate : {Fate::kFails, Fate::kShort, Fate::kEnds}) {
            ForEachCall([&](int nth, bool lasts) {
                CompositionDescription loaded;
                bool read = false;
                bool happened = false;
                {
                    const SystemFault fault(call, nth, lasts, fate);
                    ScriptArchive archive(archive_, true);
                    read = archive.Version() == 2 && archive.serialize(loaded);
                    happened = fault.Happened();
                }
                if (!happened || fate == Fate::kShort) {
                    EXPECT_TRUE(read);
                }
                if (read) {
                    EXPECT_TRUE(plain::Of(loaded) == plain::Of(description));
                }
                return happened;
            });
        }
    }
}

}  // namespace
