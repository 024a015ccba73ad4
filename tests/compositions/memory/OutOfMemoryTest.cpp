// The allocation that fails is the first, the second, and so on, until everything goes well; then
// that one and all behind it.

#include <gtest/gtest.h>

#include <filesystem>
#include <new>

#include "compositions/ArchiveWriter.h"
#include "compositions/CompositionFactory.h"
#include "compositions/ScriptArchive.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"
#include "helpers/report/CapturedOutput.h"
#include "tarnex/AllocationFault.h"

namespace {

using namespace compositions;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;

const std::string kScript =
    "[SETUP]\nNAME = \"A name that is not short\"\nCATEGORY = \"A category, neither\"\n[SOURCES]\n"
    "Back = INPUT\n[EFFECTS]\nB = \"An effect of some name\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";
const std::wstring kId = L"A name that is not short\\A category, neither";

std::size_t FileCount(const TempFolder& folder) {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
        ++count;
    }
    return count;
}

// The toolkit takes memory that runs out under a token for a statement that does not match: such a
// script is faulty, or ends early.
TEST(OutOfMemory, RegistrationThatFailsChangesNothing) {
    TempFolder folder;
    WriteBytes(folder / "script.txt", kScript);
    const std::wstring path = folder.Wide("script.txt");
    std::wstring first;
    CompositionFactory(L"").RegisterComposition(path, true, first);  // what is made once
    ForEachAllocation([&](int nth, bool lasts) {
        captured::TakeTraced();
        const std::int64_t live = LiveAllocations();
        auto factory = std::make_unique<CompositionFactory>(L"");
        std::wstring name = L"before";
        bool happened = true;
        bool added = false;
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            added = factory->RegisterComposition(path, true, name);
            happened = fault.Happened();
        } catch (const std::bad_alloc&) {
        }
        if (!added) {
            EXPECT_TRUE(happened) << nth;
            EXPECT_EQ(name, L"before") << nth;
            EXPECT_EQ(factory->GetFXCount(), 0u) << nth;
            EXPECT_EQ(factory->GetFXName(0), L"") << nth;
            EXPECT_TRUE(factory->RegisterComposition(path, true, name)) << nth;
        }
        EXPECT_EQ(name, kId) << nth;
        EXPECT_EQ(factory->GetFXCount(), 1u) << nth;
        EXPECT_EQ(factory->GetFXName(0), kId) << nth;
        EXPECT_EQ(factory->GetFXName(1), L"") << nth;
        factory.reset();
        captured::TakeTraced();
        std::wstring().swap(name);
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
            ScriptArchive archive(path, loading);
            bool whole = false;
            bool happened = false;
            {
                const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
                whole = archive.serialize(description);
                happened = fault.Happened();
            }
            EXPECT_EQ(whole, !happened) << nth;
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
        bool written = false;
        bool happened = false;
        {
            const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
            written = WriteArchive(path, description);
            happened = fault.Happened();
        }
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

}  // namespace
