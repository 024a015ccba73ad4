// The allocation that fails is the first, the second, and so on, until everything goes well.

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

constexpr int kMostAllocations = 5000;

// Calls `attempt(n)`, which lets the n-th allocation fail and answers whether it happened.
template <class Attempt>
void ForEachAllocation(Attempt attempt) {
    int failed = 0;
    while (failed < kMostAllocations && attempt(failed + 1)) {
        ++failed;
        ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "allocation " << failed;
    }
    EXPECT_GT(failed, 0);
    EXPECT_LT(failed, kMostAllocations) << "it never came through";
}

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
    ForEachAllocation([&](int nth) {
        CompositionFactory factory(L"");
        std::wstring name = L"before";
        bool happened = true;
        bool added = false;
        try {
            const AllocationFault fault(Fault::kBadAlloc, nth);
            added = factory.RegisterComposition(path, true, name);
            happened = fault.Happened();
        } catch (const std::bad_alloc&) {
        }
        if (!added) {
            EXPECT_TRUE(happened) << nth;
            EXPECT_EQ(name, L"before") << nth;
            EXPECT_EQ(factory.GetFXCount(), 0u) << nth;
            EXPECT_EQ(factory.GetFXName(0), L"") << nth;
            EXPECT_TRUE(factory.RegisterComposition(path, true, name)) << nth;
        }
        EXPECT_EQ(name, kId) << nth;
        EXPECT_EQ(factory.GetFXCount(), 1u) << nth;
        EXPECT_EQ(factory.GetFXName(0), kId) << nth;
        EXPECT_EQ(factory.GetFXName(1), L"") << nth;
        return happened;
    });
}

// Codes, `out` and the report of a creation.
template <class Create>
void ExpectCreatedOrReported(Create create) {
    const std::wstring reported =
        L"Operation \"compositions::CompositionFactory::CreateFX\" returned error "
        L"<eCouldNotCreateFX>";
    ForEachAllocation([&](int nth) {
        std::shared_ptr<fx::IBaseFX> out;
        captured::TakeTraced();
        bool happened = false;
        fx::_eError code = fx::eGenericException;
        {
            const AllocationFault fault(Fault::kBadAlloc, nth);
            code = create(out);
            happened = fault.Happened();
        }
        const std::vector<std::wstring> lines = captured::TakeTraced();
        if (code == fx::eSuccess) {
            EXPECT_NE(out, nullptr) << nth;
        } else {
            EXPECT_TRUE(happened) << nth;
            EXPECT_EQ(code, fx::eCouldNotCreateFX) << nth;
            EXPECT_EQ(out, nullptr) << nth;
            EXPECT_TRUE(!lines.empty() && lines.back() == reported) << nth;
        }
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
        ForEachAllocation([&](int nth) {
            const AllocationFault fault(Fault::kBadAlloc, nth);
            const ScriptArchive archive(path, loading);
            EXPECT_EQ(archive.Version(), fault.Happened() ? -1 : 2) << nth;
            EXPECT_EQ(archive.IsOpen(), !fault.Happened()) << nth;
            return fault.Happened();
        });
    }
}

TEST(OutOfMemory, SerializingAnswersFalse) {
    TempFolder folder;
    const std::wstring path = folder.Wide("a.mxf");
    CompositionDescription description = samples::Everything();
    for (const bool loading : {false, true}) {
        ForEachAllocation([&](int nth) {
            ScriptArchive archive(path, loading);
            const AllocationFault fault(Fault::kBadAlloc, nth);
            const bool whole = archive.serialize(description);
            EXPECT_EQ(whole, !fault.Happened()) << nth;
            return fault.Happened();
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
    ForEachAllocation([&](int nth) {
        WriteBytes(folder / "a.mxf", old);
        bool written = false;
        bool happened = false;
        {
            const AllocationFault fault(Fault::kBadAlloc, nth);
            written = WriteArchive(path, description);
            happened = fault.Happened();
        }
        EXPECT_TRUE(written || happened) << nth;
        EXPECT_EQ(ReadBytes(folder / "a.mxf"), written ? whole : old) << nth;
        EXPECT_EQ(FileCount(folder), 1u) << nth;
        return happened;
    });
}

}  // namespace
