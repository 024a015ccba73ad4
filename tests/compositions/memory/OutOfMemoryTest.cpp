// The allocation that fails is the first, the second, and so on, until everything goes well; then
// that one and all behind it.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <new>

#include "compositions/ArchiveWriter.h"
#include "compositions/CompScript.h"
#include "compositions/CompositionFactory.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "compositions/host/ConverterValues.h"
#include "helpers/report/CapturedOutput.h"
#include "platform/SettingsStore.h"
#include "tarnex/AllocationFault.h"

namespace {

using namespace compositions;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;

const std::string kScript =
    "[SETUP]\nNAME = \"A name that is short on no system at all\"\nCATEGORY = \"A category that is "
    "none the shorter, neither\"\n[SOURCES]\n"
    "Back = INPUT\n[EFFECTS]\nB = \"An effect of some name\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";
const std::wstring kId =
    L"A name that is short on no system at all\\A category that is none the shorter, neither";

std::size_t FileCount(const TempFolder& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        ++count;
    }
    return count;
}

// Registers `composition` under each fault, of a factory that looks into `folder`.
void ExpectWholeOrNone(const std::wstring& folder, const std::wstring& composition, bool isPath) {
    std::wstring id;
    ASSERT_TRUE(CompositionFactory(folder).RegisterComposition(composition, isPath, id));
    ForEachAllocation([&](int nth, bool lasts) {
        captured::TakeTraced();
        const std::int64_t live = LiveAllocations();
        auto factory = std::make_unique<CompositionFactory>(folder);
        std::wstring name = L"before";
        bool happened = true;
        bool added = false;
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            added = factory->RegisterComposition(composition, isPath, name);
            happened = fault.Happened();
        } catch (const std::bad_alloc&) {
        }
        if (!added) {
            EXPECT_TRUE(happened) << nth;
            EXPECT_EQ(name, L"before") << nth;
            EXPECT_EQ(factory->GetFXCount(), 0u) << nth;
            EXPECT_EQ(factory->GetFXName(0), L"") << nth;
            EXPECT_TRUE(factory->RegisterComposition(composition, isPath, name)) << nth;
        }
        EXPECT_EQ(name, id) << nth;
        EXPECT_EQ(factory->GetFXCount(), 1u) << nth;
        EXPECT_EQ(factory->GetFXName(0), id) << nth;
        EXPECT_EQ(factory->GetFXName(1), L"") << nth;
        factory.reset();
        captured::TakeTraced();
        std::wstring().swap(name);
        EXPECT_EQ(LiveAllocations(), live) << nth;
        return happened;
    });
}

// Numbers with a gap within are put together, which takes memory while a statement is matched.
TEST(OutOfMemory, ADescriptionIsWholeOrNone) {
    const std::string text = kScript +
                             "[PROPERTIES]\n\"a\" = 123456789 .5\n\"b\" = -  987654321\n" +
                             "[TIMELINE]\nB.\"x\" = 123456789 . 5\nB.\"y\" = 1\n";
    const CompositionScript whole(text);
    ASSERT_EQ(whole.GetProperties().size(), 2u);
    ASSERT_EQ(whole.GetTimelineEntries().size(), 2u);
    ForEachAllocation([&](int nth, bool lasts) {
        captured::TakeTraced();
        const std::int64_t live = LiveAllocations();
        bool happened = true;
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            const CompositionScript script(text);
            happened = fault.Happened();
            EXPECT_EQ(script.GetReadStatus(), 0) << nth;
            EXPECT_TRUE(script.GetDescription() == whole.GetDescription()) << nth;
        } catch (const std::bad_alloc&) {
        }
        captured::TakeTraced();
        EXPECT_EQ(LiveAllocations(), live) << nth;
        return happened;
    });
}

TEST(OutOfMemory, RegistrationThatFailsChangesNothing) {
    TempFolder folder;
    WriteBytes(folder / "script.txt", kScript);
    ExpectWholeOrNone(L"", folder.Wide("script.txt"), true);
    const std::wstring inFolder = folder.Wide("script.txt");
    ExpectWholeOrNone(inFolder.substr(0, inFolder.size() - 11), L"script.txt", false);
}

// Scripts with everything that the language has.
TEST(OutOfMemory, RegistrationOfEveryExampleThatFailsChangesNothing) {
    for (const auto& file : std::filesystem::directory_iterator(TARNEX_EXAMPLES "/compositions")) {
        if (file.path().extension() != ".txt") continue;
        SCOPED_TRACE(file.path().filename().string());
        ExpectWholeOrNone(L"", TempFolder::WidePath(file.path()), true);
    }
}

TEST(OutOfMemory, NameIsTheNameOrTheFailureIsThrown) {
    TempFolder folder;
    WriteBytes(folder / "script.txt", kScript);
    CompositionFactory factory(L"");
    std::wstring name;
    ASSERT_TRUE(factory.RegisterComposition(folder.Wide("script.txt"), true, name));
    ForEachAllocation([&](int nth, bool lasts) {
        const std::int64_t live = LiveAllocations();
        bool happened = true;
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            const std::wstring got = factory.GetFXName(0);
            happened = fault.Happened();
            EXPECT_EQ(got, kId);
        } catch (const std::bad_alloc&) {
        }
        EXPECT_EQ(LiveAllocations(), live) << nth;
        return happened;
    });
}

// Codes, `out` and the report of a creation.
template <class Create>
void ExpectCreatedOrReported(Create create) {
    const std::wstring reported =
        L"Operation \"compositions::CompositionFactory::CreateFX\" returned error "
        L"<eCouldNotCreateFX>";
    std::shared_ptr<fx::IBaseFX> first;
    create(first);  // with what is made once
    ForEachAllocation([&](int nth, bool lasts) {
        captured::TakeTraced();
        const std::int64_t live = LiveAllocations();
        std::shared_ptr<fx::IBaseFX> out;
        bool happened = false;
        fx::_eError code = fx::eGenericException;
        {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            code = create(out);
            happened = fault.Happened();
        }
        std::vector<std::wstring> lines = captured::TakeTraced();
        if (code == fx::eSuccess) {
            EXPECT_NE(out, nullptr) << nth;
        } else {
            EXPECT_TRUE(happened) << nth;
            EXPECT_EQ(code, fx::eCouldNotCreateFX) << nth;
            EXPECT_EQ(out, nullptr) << nth;
            EXPECT_TRUE(lasts || (!lines.empty() && lines.back() == reported)) << nth;
        }
        out.reset();
        std::vector<std::wstring>().swap(lines);
        EXPECT_EQ(LiveAllocations(), live) << nth;
        return happened;
    });
}

TEST(OutOfMemory, CreationAnswersCouldNotCreate) {
    TempFolder folder;
    WriteBytes(folder / "script.txt", kScript);
    WriteBytes(folder / "archive.mxf", plain::Write(samples::Everything()).bytes);
    CompositionFactory factory(L"");
    std::wstring name;
    ASSERT_TRUE(factory.RegisterComposition(folder.Wide("script.txt"), true, name));
    ExpectCreatedOrReported([&](auto& out) { return factory.CreateFX(std::uint64_t{0}, out); });
    for (const char* file : {"script.txt", "archive.mxf"}) {
        SCOPED_TRACE(file);
        const std::wstring path = folder.Wide(file);
        ExpectCreatedOrReported([&](auto& out) { return factory.CreateFX(path, out); });
    }
}

TEST(OutOfMemory, OpeningAnArchiveEndsClosedAndWithoutAVersion) {
    TempFolder folder;
    const std::wstring path = folder.Wide("a.mxf");
    for (const bool loading : {false, true}) {
        WriteBytes(folder / "a.mxf", plain::Write(samples::Small()).bytes);
        ForEachAllocation([&](int nth, bool lasts) {
            std::int32_t version = 0;
            bool open = false;
            bool happened = false;
            const std::int64_t live = LiveAllocations();
            {
                const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
                const ScriptArchive archive(path, loading);
                version = archive.Version();
                open = archive.IsOpen();
                happened = fault.Happened();
            }
            EXPECT_EQ(version, happened ? -1 : 2) << nth;
            EXPECT_EQ(open, !happened) << nth;
            EXPECT_EQ(LiveAllocations(), live) << nth;
            return happened;
        });
    }
}

TEST(OutOfMemory, SerializingAnswersFalse) {
    TempFolder folder;
    const std::wstring path = folder.Wide("a.mxf");
    CompositionDescription description = samples::Everything();
    for (const bool loading : {false, true}) {
        ForEachAllocation([&](int nth, bool lasts) {
            const std::int64_t live = LiveAllocations();
            bool happened = false;
            {
                CompositionDescription loaded;
                bool whole = false;
                {
                    ScriptArchive archive(path, loading);
                    const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
                    whole = archive.serialize(loading ? loaded : description);
                    happened = fault.Happened();
                }
                EXPECT_EQ(whole, !happened) << nth;
                EXPECT_TRUE(!whole || !loading || plain::Of(loaded) == plain::Of(description));
            }
            EXPECT_EQ(LiveAllocations(), live) << nth;
            return happened;
        });
    }
    EXPECT_TRUE(plain::Of(description) == plain::Of(samples::Everything()));
}

TEST(OutOfMemory, WritingAnArchiveFailsWithoutATrace) {
    TempFolder folder;
    const std::wstring path = folder.Wide("a.mxf");
    const CompositionDescription description = samples::Everything();
    const std::string old = plain::Write(samples::Small()).bytes;
    const std::string whole = plain::Write(description).bytes;
    ForEachAllocation([&](int nth, bool lasts) {
        WriteBytes(folder / "a.mxf", old);
        const std::int64_t live = LiveAllocations();
        bool written = false;
        bool happened = false;
        {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            written = WriteArchive(path, description);
            happened = fault.Happened();
        }
        EXPECT_EQ(LiveAllocations(), live) << nth;
        EXPECT_TRUE(written || happened) << nth;
        EXPECT_EQ(ReadBytes(folder / "a.mxf"), written ? whole : old) << nth;
        if (lasts) {
            // The temporary file's removal asks for memory, too; the next write makes up for it.
            EXPECT_TRUE(WriteArchive(path, description)) << nth;
        }
        EXPECT_EQ(FileCount(folder), 1u) << nth;
        return happened;
    });
}

// What cannot be written is no reason not to have the effect.
TEST(OutOfMemory, ArchiveBesideTheScriptIsTheOldOneOrTheNewOne) {
    test_platform::ResetSettings();
    const char* file = std::getenv("TARNEX_SETTINGS");  // where settings are a file
    host_test::ScopedConverterValues values(file != nullptr ? file : "");
    values.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    TempFolder scripts;
    WriteBytes(scripts / "fx.txt", kScript);
    const std::wstring path = scripts.Wide("fx.txt");
    CompositionFactory factory(L"");
    std::shared_ptr<fx::IBaseFX> effect;
    ASSERT_EQ(factory.CreateFX(path, effect), fx::eSuccess);
    const std::string whole = ReadBytes(scripts / "fx.mxf");
    ASSERT_TRUE(plain::Read(whole).whole);
    const std::string old = plain::Write(samples::Small()).bytes;
    int replaced = 0;
    int kept = 0;
    effect.reset();
    ForEachAllocation([&](int nth, bool lasts) {
        captured::TakeTraced();
        WriteBytes(scripts / "fx.mxf", old);
        const std::int64_t live = LiveAllocations();
        bool happened = false;
        fx::_eError code = fx::eSuccess;
        {
            std::shared_ptr<fx::IBaseFX> out;
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            code = factory.CreateFX(path, out);
            happened = fault.Happened();
            EXPECT_EQ(out != nullptr, code == fx::eSuccess);
        }
        captured::TakeTraced();
        EXPECT_EQ(LiveAllocations(), live) << nth;
        EXPECT_TRUE(code == fx::eSuccess || (happened && code == fx::eCouldNotCreateFX)) << code;
        const std::string now = ReadBytes(scripts / "fx.mxf");
        EXPECT_TRUE(now == whole || (happened && now == old)) << now.size();
        ++(now == whole ? replaced : kept);
        return happened;
    });
    EXPECT_GT(replaced, 2);
    EXPECT_GT(kept, 2);
    ASSERT_EQ(factory.CreateFX(path, effect), fx::eSuccess);
    EXPECT_EQ(ReadBytes(scripts / "fx.mxf"), whole);
    EXPECT_EQ(FileCount(scripts), 2u) << "a temporary file stayed behind";
}

}  // namespace
