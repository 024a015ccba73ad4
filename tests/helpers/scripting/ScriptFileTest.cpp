// Files, the preprocessor and the way from a text's positions back to the file's bytes.

#include "helpers/scripting/ScriptFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "compositions/language/ByteOffsets.h"
#include "compositions/language/CompInterpreter.h"
#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/PlainInterpreter.h"
#include "helpers/scripting/RandomTexts.h"

namespace {

using compositions::ByteOffsets;
using compositions::CompInterpreter;
using compositions::CompPreprocessor;
using compositions::CompScriptFile;

const std::string kNotLoaded =
    "ASSERT in file: Common/Helpers/Script, line: (159) name: "
    "helpers::scripting::Script<class compositions::CompPreprocessor,"
    "class helpers::scripting::ScriptFile<class std::basic_string<wchar_t,"
    "struct std::char_traits<wchar_t>,class std::allocator<wchar_t> > >,"
    "class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,"
    "class std::allocator<wchar_t> > >::Script\n";

class Files : public testing::Test {
protected:
    Files() { captured::TakeDebugged(); }
    ~Files() override { std::filesystem::remove(path_); }

    std::wstring Write(std::string_view bytes) {
        std::ofstream(path_, std::ios::binary) << bytes;
        return path_.wstring();
    }

    const std::filesystem::path path_ = std::filesystem::current_path() / "script_file_test.txt";
};

TEST(FileType, HasItsPublishedName) {
    EXPECT_EQ(compositions::kScriptFileType, std::wstring(L"VE composition script file"));
}

TEST_F(Files, AFileIsReadWholeWithABlankBehind) {
    CompScriptFile whole(Write(std::string_view("a\0b\r\n\xE9", 6)));
    EXPECT_TRUE(whole.loaded());
    EXPECT_EQ(whole.Length(), 7u);
    EXPECT_EQ(whole.Bytes(), std::string_view("a\0b\r\n\xE9 ", 7));
    EXPECT_EQ(whole.Character(6), ' ');
    EXPECT_FALSE(whole.read_error());
}

TEST_F(Files, AMissingFileIsNotLoaded) {
    CompScriptFile file(path_.wstring());
    EXPECT_FALSE(file.loaded());
    EXPECT_EQ(file.Length(), 0u);
    EXPECT_TRUE(file.Bytes().empty());
    EXPECT_FALSE(file.read_error());
    EXPECT_EQ(file.Character(0), ' ');
    EXPECT_TRUE(file.read_error());
}

TEST_F(Files, AnEmptyFileAndAFolderAreNotLoaded) {
    EXPECT_FALSE(CompScriptFile(Write("")).loaded());
    EXPECT_FALSE(CompScriptFile(std::filesystem::current_path().wstring()).loaded());
}

// Windows would keep the file for whoever has it open.
TEST_F(Files, AnEmptyFileIsNotKeptOpen) {
    const CompScriptFile file(Write(""));
    EXPECT_TRUE(std::filesystem::remove(path_));
}

TEST_F(Files, AFileTooLargeForItsLengthIsNotLoaded) {
    Write("a");
    for (const std::uint64_t size : {0xFFFFFFFFull, 0x100000000ull, 0x100000001ull}) {
        std::error_code error;
        std::filesystem::resize_file(path_, size, error);
        if (error) GTEST_SKIP() << "no room for a large sparse file";
        const CompScriptFile file(path_.wstring());
        EXPECT_FALSE(file.loaded()) << size;
        EXPECT_EQ(file.Length(), 0u);
    }
}

TEST_F(Files, AFileCanBeReplacedOnceItWasRead) {
    const CompScriptFile file(Write("abc"));
    EXPECT_TRUE(std::filesystem::remove(path_));
    EXPECT_EQ(file.Bytes(), "abc ");
}

TEST_F(Files, AScriptWithoutAFileIsReportedAndReadsNothing) {
    CompInterpreter interpreter{CompScriptFile(path_.wstring())};
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{kNotLoaded});
    EXPECT_FALSE(interpreter.has_text());
    EXPECT_TRUE(interpreter.Text().empty());
    std::vector<std::wstring> pieces;
    EXPECT_FALSE(interpreter.get_expression(compositions::R1, pieces));
    EXPECT_FALSE(interpreter.find_expression(compositions::R26, false));
    EXPECT_EQ(interpreter.Position(), 0u);
}

TEST_F(Files, NoBytesInMemoryCountAsNotLoaded) {
    CompInterpreter interpreter(std::string_view(""));
    EXPECT_EQ(captured::TakeDebugged(), std::vector<std::string>{kNotLoaded});
    EXPECT_FALSE(interpreter.has_text());
}

TEST_F(Files, AFileAndItsBytesGiveTheSameText) {
    const std::string bytes = "A=1 ;note\nB=\xFF\"x\";end";
    const CompScriptFile file(Write(bytes));
    EXPECT_EQ(CompInterpreter(file).Text(), CompInterpreter(std::string_view(bytes)).Text());
    EXPECT_TRUE(captured::TakeDebugged().empty());
}

std::wstring Text(std::string_view bytes) {
    return CompInterpreter(bytes).Text();
}

TEST(Preprocessor, ACommentTakesItsLineFeedWithIt) {
    EXPECT_EQ(Text("A=1 ;note\nB=2"), std::wstring(L"A=1 B=2 \0", 9));
    EXPECT_EQ(Text("\"a;b\"\nc"), std::wstring(L"\"ac \0", 5));
    EXPECT_EQ(Text(";\r\nA\r\n"), std::wstring(L"A\r\n \0", 5));
    EXPECT_EQ(Text(";;\n;\nA"), std::wstring(L"A \0", 3));
}

TEST(Preprocessor, ACommentAtTheEndSwallowsTheBlank) {
    EXPECT_EQ(Text("A;"), std::wstring(L"A\0", 2));
    EXPECT_EQ(Text(";"), std::wstring(L"\0", 1));
    EXPECT_EQ(Text("A;x\n"), std::wstring(L"A \0", 3));
}

// Whatever the size of the pieces in which a text is looked at, comments may begin and end
// anywhere.
TEST(Preprocessor, ACommentIsTakenOutWhereverItStands) {
    constexpr std::size_t kLength = 2200;
    std::string bytes(kLength, 'a');
    for (std::size_t i = 0; i < kLength; ++i) bytes[i] = static_cast<char>('a' + i % 23);
    for (const std::size_t length : {0, 1, 30, 1024}) {
        for (std::size_t begin = 0; begin + length + 2 < kLength; ++begin) {
            std::string with = bytes;
            with[begin] = ';';
            with[begin + length + 1] = '\n';
            const std::string rest =
                bytes.substr(0, begin) + bytes.substr(begin + length + 2) + ' ';
            std::wstring expected(rest.begin(), rest.end());
            expected.push_back(L'\0');
            ASSERT_EQ(Text(with), expected) << length << " at " << begin;
        }
    }
    for (std::size_t size = 1; size < kLength; ++size) {
        const std::string all = bytes.substr(0, size) + ' ';
        std::wstring expected(all.begin(), all.end());
        expected.push_back(L'\0');
        ASSERT_EQ(Text(bytes.substr(0, size)), expected) << size;
    }
}

TEST(Preprocessor, EveryByteIsWidenedBySignExtension) {
    for (unsigned byte = 1; byte < 256; ++byte) {
        if (byte == ';') continue;
        const std::string bytes(1, static_cast<char>(byte));
        const auto expected = static_cast<wchar_t>(byte < 0x80 ? byte : 0xFF00 + byte);
        EXPECT_EQ(Text(bytes)[0], expected) << byte;
    }
}

TEST_F(Files, AStreamGetsTheSameTextAByte0xFFIncluded) {
    std::string bytes;
    for (std::size_t count = 0; count < 3000; ++count) {
        bytes += std::string(count % 7, 'a') + "\xFF\xFF" + (count % 5 == 0 ? ";x\n" : "");
    }
    for (std::size_t dropped = 0; dropped < 40; ++dropped) {
        const CompScriptFile file(Write(std::string_view(bytes).substr(dropped)));
        std::wostringstream out;
        EXPECT_TRUE(CompPreprocessor().preprocess(file, out));
        ASSERT_EQ(out.str(), plain::Preprocess(std::string_view(bytes).substr(dropped)));
    }
}

TEST_F(Files, AStreamGetsTheZeroAloneOfAFileWithoutABuffer) {
    for (const std::wstring& path : {(path_.parent_path() / "none.txt").wstring(), Write("")}) {
        const CompScriptFile file(path);
        std::wostringstream out;
        EXPECT_TRUE(CompPreprocessor().preprocess(file, out));
        EXPECT_EQ(out.str(), std::wstring(1, L'\0'));
        EXPECT_FALSE(file.read_error());
    }
}

class FullBuffer : public std::wstreambuf {};

TEST_F(Files, AThrowingStreamGivesFalse) {
    const CompScriptFile file(Write("abc"));
    FullBuffer full;
    std::wostream out(&full);
    EXPECT_TRUE(CompPreprocessor().preprocess(file, out));
    out.clear();
    out.exceptions(std::ios_base::badbit);
    EXPECT_FALSE(CompPreprocessor().preprocess(file, out));
}

TEST(ByteOffsets, LeadBackOverComments) {
    const std::string_view bytes = "A;x\nB;;\n;\nC;";
    const ByteOffsets offsets(bytes);
    EXPECT_EQ(offsets.At(0), 0u);
    EXPECT_EQ(offsets.At(1), 4u);
    EXPECT_EQ(offsets.At(2), 10u);
    EXPECT_EQ(offsets.At(3), bytes.size());
    EXPECT_EQ(offsets.At(static_cast<std::size_t>(-1)), bytes.size());
}

TEST(ByteOffsets, LeadToTheByteThatBecameTheCharacter) {
    for (std::uint64_t seed = 0; seed < 3000; ++seed) {
        generated::Random random(seed);
        const std::string bytes = generated::Noise(random) + generated::Noise(random) + " ";
        const std::wstring text = plain::Preprocess(bytes);
        const ByteOffsets offsets(bytes);
        for (std::size_t position = 0; position < text.size(); ++position) {
            const std::size_t at = offsets.At(position);
            if (at == bytes.size()) continue;
            ASSERT_EQ(static_cast<unsigned char>(bytes[at]), text[position] & 0xFF) << bytes;
        }
        EXPECT_EQ(offsets.At(text.size() - 1), bytes.size());
    }
}

}  // namespace
