#include "compositions/ScriptArchive.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "compositions/ArchiveException.h"
#include "compositions/archive/PlainDescription.h"
#include "compositions/archive/SampleDescriptions.h"
#include "compositions/archive/TempFolder.h"

namespace {

using namespace compositions;

const std::string kHeader("ScriptArchive\0\2\0\0\0", 18);

std::string Saved(const CompositionDescription& description) {
    TempFolder folder;
    ScriptArchive archive(folder.Wide("a.mxf"), false);
    EXPECT_EQ(archive.Version(), 2);
    EXPECT_TRUE(archive.serialize(description));
    EXPECT_TRUE(archive.Close());
    return ReadBytes(folder / "a.mxf");
}

// Whether two descriptions agree in everything: their own comparison leaves the mappings' flags
// out.
bool Same(const CompositionDescription& a, const CompositionDescription& b) {
    return a == b && plain::Of(a) == plain::Of(b);
}

struct Loaded {
    std::int32_t version;
    bool whole;
    CompositionDescription description;
};

Loaded Load(const std::string& bytes) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", bytes);
    ScriptArchive archive(folder.Wide("a.mxf"), true);
    Loaded loaded{archive.Version(), false, {}};
    loaded.whole = archive.serialize(loaded.description);
    return loaded;
}

TEST(ScriptArchive, WritesTheBytesOfThePublishedTable) {
    EXPECT_EQ(Saved(samples::Everything()), plain::Write(samples::Everything()).bytes);
    EXPECT_EQ(Saved(samples::Small()), plain::Write(samples::Small()).bytes);
}

TEST(ScriptArchive, LoadsWhatAnotherProgramWrote) {
    const Loaded loaded = Load(plain::Write(samples::Everything()).bytes);
    EXPECT_EQ(loaded.version, 2);
    EXPECT_TRUE(loaded.whole);
    EXPECT_TRUE(Same(loaded.description, samples::Everything()));
}

TEST(ScriptArchive, AgreesWithThePlainImplementationOnGeneratedDescriptions) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        const CompositionDescription description = samples::Generated(seed);
        const std::string bytes = Saved(description);
        ASSERT_EQ(bytes, plain::Write(description).bytes) << "seed " << seed;
        const Loaded loaded = Load(bytes);
        ASSERT_TRUE(loaded.whole) << "seed " << seed;
        ASSERT_TRUE(Same(loaded.description, description)) << "seed " << seed;
        ASSERT_TRUE(plain::Read(bytes).description == plain::Of(description)) << "seed " << seed;
    }
}

TEST(ScriptArchive, EmptyDescriptionIsAllZeroCountsAndLoadsBackEqual) {
    const std::string bytes = Saved({});
    // Ten counts and lengths up to the root, the root's three, two texts, two maps, the last three.
    EXPECT_EQ(bytes, kHeader + std::string(8 * (9 + 3 + 2 + 2) + 1 + 4 + 1, '\0'));
    const Loaded loaded = Load(bytes);
    EXPECT_TRUE(loaded.whole);
    EXPECT_TRUE(Same(loaded.description, {}));
}

TEST(ScriptArchive, LoadingReplacesWhatTheDescriptionHeld) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", plain::Write(samples::Small()).bytes);
    ScriptArchive archive(folder.Wide("a.mxf"), true);
    CompositionDescription description = samples::Everything();
    EXPECT_TRUE(archive.serialize(description));
    EXPECT_TRUE(Same(description, samples::Small()));
}

TEST(ScriptArchive, LoadsNamesWithoutUpperCasingThem) {
    CompositionDescription description;
    description.inputs = {UpperName::Verbatim(L"lower")};
    const Loaded loaded = Load(plain::Write(description).bytes);
    ASSERT_EQ(loaded.description.inputs.size(), 1u);
    EXPECT_EQ(loaded.description.inputs[0].View(), L"lower");
}

TEST(ScriptArchive, KeepsZeroCharactersInTextsAndCutsNamesAtThem) {
    // The name of an input, then everything else empty, then the composition's name.
    const std::string zero8(8, '\0');
    const std::string abc("\3\0\0\0\0\0\0\0A\0\0\0C\0", 14);
    const std::string one("\1\0\0\0\0\0\0\0", 8);
    std::string bytes = kHeader + one + abc;                      // inputs: A, zero, C
    bytes += one + one + std::string("K\0", 2) + abc;             // effect instance K: A, zero, C
    bytes += std::string(8 * (7 + 3), '\0');                      // up to and with the root
    bytes += abc + zero8 + zero8 + zero8 + std::string(6, '\0');  // name: A, zero, C
    const Loaded loaded = Load(bytes);
    ASSERT_TRUE(loaded.whole);
    EXPECT_EQ(loaded.description.inputs.at(0).View(), L"A");
    EXPECT_EQ(loaded.description.inputs.at(0).Capacity(), 2u);
    EXPECT_EQ(loaded.description.effectInstances.begin()->second, L"A");
    EXPECT_EQ(loaded.description.name, std::wstring(L"A\0C", 3));
}

TEST(ScriptArchive, NameOfLengthZeroHasNoBuffer) {
    CompositionDescription description;
    description.inputs = {UpperName()};
    const Loaded loaded = Load(plain::Write(description).bytes);
    ASSERT_EQ(loaded.description.inputs.size(), 1u);
    EXPECT_EQ(loaded.description.inputs[0].Data(), nullptr);
}

TEST(ScriptArchive, SavesAnEffectNameUpToItsFirstZero) {
    CompositionDescription description;
    description.effectInstances = {{UpperName::Verbatim(L"K"), std::wstring(L"ab\0c", 4)}};
    const Loaded loaded = Load(Saved(description));
    EXPECT_EQ(loaded.description.effectInstances.begin()->second, L"ab");
}

TEST(ScriptArchive, CharactersBeyondSixteenBitsAreTwoUnitsInTheFile) {
    CompositionDescription description;
    description.name = L"a\U0001F600z";
    const std::string bytes = Saved(description);
    EXPECT_NE(bytes.find(std::string("\4\0\0\0\0\0\0\0a\0\x3D\xD8\0\xDEz\0", 16)),
              std::string::npos);
    EXPECT_EQ(Load(bytes).description.name, description.name);
}

TEST(ScriptArchive, LoneSurrogatesComeBackAsTheyAre) {
    CompositionDescription description;
    description.name = std::wstring{wchar_t(0xDC00), wchar_t(0xD800), L'x', wchar_t(0xD83D)};
    EXPECT_EQ(Load(Saved(description)).description.name, description.name);
}

TEST(ScriptArchive, AnyByteButZeroIsTrue) {
    std::string bytes = plain::Write(plain::Description{}).bytes;
    bytes[bytes.size() - 1] = '\x80';
    bytes[bytes.size() - 6] = '\2';
    const Loaded loaded = Load(bytes);
    EXPECT_TRUE(loaded.description.swap);
    EXPECT_TRUE(loaded.description.isFilter);
}

TEST(ScriptArchive, IgnoresBytesBehindTheDescription) {
    const Loaded loaded = Load(plain::Write(samples::Small()).bytes + "anything");
    EXPECT_TRUE(loaded.whole);
    EXPECT_TRUE(Same(loaded.description, samples::Small()));
}

TEST(ScriptArchive, ReadsTheNextDescriptionBehindTheFirst) {
    TempFolder folder;
    const std::string body = plain::Write(samples::Small()).bytes.substr(18);
    WriteBytes(folder / "a.mxf", kHeader + body + body);
    ScriptArchive archive(folder.Wide("a.mxf"), true);
    CompositionDescription description;
    EXPECT_TRUE(archive.serialize(description));
    EXPECT_TRUE(archive.serialize(description));
    EXPECT_TRUE(Same(description, samples::Small()));
    EXPECT_FALSE(archive.serialize(description));
}

TEST(ScriptArchive, LaterOfTwoEqualKeysStays) {
    CompositionDescription first;
    first.numberedInputs = {{UpperName::Verbatim(L"A"), 1}, {UpperName::Verbatim(L"B"), 2}};
    std::string bytes = plain::Write(first).bytes;
    bytes[bytes.find('B')] = 'A';
    const Loaded loaded = Load(bytes);
    ASSERT_EQ(loaded.description.numberedInputs.size(), 1u);
    EXPECT_EQ(loaded.description.numberedInputs.begin()->second, 2);
}

TEST(ScriptArchive, EntriesInAnyOrderAreFoundInKeyOrder) {
    CompositionDescription first;
    first.numberedInputs = {{UpperName::Verbatim(L"A"), 1}, {UpperName::Verbatim(L"B"), 2}};
    std::string bytes = plain::Write(first).bytes;
    bytes[bytes.find('A', 18)] = 'C';
    const Loaded loaded = Load(bytes);
    ASSERT_EQ(loaded.description.numberedInputs.size(), 2u);
    EXPECT_EQ(loaded.description.numberedInputs.begin()->first.View(), L"B");
}

// Headers.

TEST(ScriptArchive, FileOfEighteenBytesHasAVersionAndFailsOnTheFirstCount) {
    const Loaded loaded = Load(kHeader);
    EXPECT_EQ(loaded.version, 2);
    EXPECT_FALSE(loaded.whole);
}

TEST(ScriptArchive, SavingWritesTheHeaderAtOnce) {
    TempFolder folder;
    ScriptArchive archive(folder.Wide("a.mxf"), false);
    EXPECT_FALSE(archive.Loading());
    EXPECT_TRUE(archive.Close());
    EXPECT_EQ(ReadBytes(folder / "a.mxf"), kHeader);
}

TEST(ScriptArchive, SavingTruncatesTheOldFile) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", std::string(5000, 'x'));
    ScriptArchive archive(folder.Wide("a.mxf"), false);
    EXPECT_TRUE(archive.serialize(samples::Small()));
    archive.Close();
    EXPECT_EQ(ReadBytes(folder / "a.mxf"), plain::Write(samples::Small()).bytes);
}

TEST(ScriptArchive, EveryVersionIsHandedOutAndReadWithTheSameLayout) {
    for (const std::int32_t version : {-1, 0, 1, 2, 3, 0x7FFFFFFF}) {
        const Loaded loaded = Load(plain::Write(samples::Small(), version).bytes);
        EXPECT_EQ(loaded.version, version);
        EXPECT_TRUE(loaded.whole) << version;
        EXPECT_TRUE(Same(loaded.description, samples::Small())) << version;
    }
}

TEST(ScriptArchive, WrongSignatureClosesTheFileWithoutFailing) {
    TempFolder folder;
    for (std::size_t i = 0; i < 14; ++i) {
        std::string bytes = plain::Write(samples::Small()).bytes;
        bytes[i] ^= 1;
        WriteBytes(folder / "a.mxf", bytes);
        ScriptArchive archive(folder.Wide("a.mxf"), true);
        EXPECT_EQ(archive.Version(), -1) << i;
        EXPECT_FALSE(archive.IsOpen()) << i;
        EXPECT_FALSE(archive.Failed()) << i;
        CompositionDescription description;
        EXPECT_FALSE(archive.serialize(description)) << i;
    }
}

TEST(ScriptArchive, FileShorterThanItsHeaderHasNoVersion) {
    for (std::size_t size = 0; size < 18; ++size) {
        const Loaded loaded = Load(kHeader.substr(0, size));
        EXPECT_EQ(loaded.version, -1) << size;
        EXPECT_FALSE(loaded.whole) << size;
    }
}

TEST(ScriptArchive, MissingFileSetsTheFailState) {
    TempFolder folder;
    ScriptArchive archive(folder.Wide("none.mxf"), true);
    EXPECT_EQ(archive.Version(), -1);
    EXPECT_TRUE(archive.Failed());
    EXPECT_FALSE(archive.IsOpen());
    EXPECT_TRUE(archive.Loading());
    CompositionDescription description;
    EXPECT_FALSE(archive.serialize(description));
    EXPECT_FALSE(archive.Close());
}

TEST(ScriptArchive, FileThatCannotBeMadeSetsTheFailState) {
    TempFolder folder;
    ScriptArchive archive(folder.Wide("no folder/a.mxf"), false);
    EXPECT_EQ(archive.Version(), -1);
    EXPECT_TRUE(archive.Failed());
    EXPECT_FALSE(archive.serialize(samples::Small()));
}

TEST(ScriptArchive, FolderInPlaceOfAFileHasNoVersion) {
    TempFolder folder;
    std::filesystem::create_directory(folder / "a.mxf");
    ScriptArchive loading(folder.Wide("a.mxf"), true);
    EXPECT_EQ(loading.Version(), -1);
    ScriptArchive saving(folder.Wide("a.mxf"), false);
    EXPECT_EQ(saving.Version(), -1);
}

TEST(ScriptArchive, ConstantDescriptionCannotBeLoadedInto) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", plain::Write(samples::Small()).bytes);
    ScriptArchive archive(folder.Wide("a.mxf"), true);
    const CompositionDescription description;
    EXPECT_FALSE(archive.serialize(description));
}

TEST(ScriptArchive, OthersMayHaveTheFileOpen) {
    TempFolder folder;
    WriteBytes(folder / "a.mxf", plain::Write(samples::Small()).bytes);
    std::fstream other(folder / "a.mxf", std::ios::in | std::ios::out | std::ios::binary);
    ASSERT_TRUE(other.is_open());
    ScriptArchive first(folder.Wide("a.mxf"), true);
    ScriptArchive second(folder.Wide("a.mxf"), true);
    CompositionDescription description;
    EXPECT_TRUE(first.serialize(description));
    EXPECT_TRUE(second.serialize(description));
}

TEST(ScriptArchive, ExceptionIsARuntimeErrorWithItsText) {
    static_assert(std::is_base_of_v<std::runtime_error, arch_exception>);
    EXPECT_STREQ(arch_exception().what(), "script archive error");
}

}  // namespace
