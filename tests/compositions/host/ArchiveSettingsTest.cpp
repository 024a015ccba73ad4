// When archives are read and written: every combination of the user's settings with every state of
// the files, in the built library.

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <optional>
#include <thread>

#include "compositions/archive/PlainDescription.h"
#include "compositions/host/ConverterValues.h"
#include "host/HostSession.h"
#include "platform/FileMove.h"

namespace host_test {
namespace {

namespace fs = std::filesystem;

enum class Files { kScriptNewer, kArchiveNewer, kScriptAlone, kArchiveAlone, kNone };
constexpr Files kFileStates[] = {Files::kScriptNewer, Files::kArchiveNewer, Files::kScriptAlone,
                                 Files::kArchiveAlone, Files::kNone};

const std::string kScript =
    "[SETUP]\nNAME = \"Script\"\nCATEGORY = \"C\"\n[SOURCES]\nBack = INPUT\n[EFFECTS]\n"
    "B = \"Blur\"\n[STRUCTURE]\nOUTPUT = B( Back )\n";

compositions::CompositionDescription Named(const wchar_t* name) {
    compositions::CompositionDescription description;
    description.name = name;
    description.category = L"C";
    return description;
}

// What kScript's archive must hold.
compositions::CompositionDescription Described() {
    compositions::CompositionDescription description = Named(L"Script");
    description.inputs.emplace_back(L"BACK");
    description.effectInstances[compositions::UpperName(L"B")] = L"Blur";
    description.structure = compositions::StructureNode(compositions::UpperName(L"B"));
    description.structure.inputs.emplace_back(compositions::UpperName(L"BACK"));
    return description;
}

using Setting = std::optional<std::string>;

struct Settings {
    Setting convertor;
    Setting type;
    Setting saveFx;

    ConverterValues Values() const {
        ConverterValues values;
        if (convertor) values["Convertor"] = *convertor;
        if (type) values["Type"] = *type;
        if (saveFx) values["SaveFx"] = *saveFx;
        return values;
    }
};

class ArchiveSettings : public HostTest {
protected:
    ArchiveSettings() : values_(sandbox_.Folder() / "settings.ini"), host_(sandbox_, &log_) {
        fs::create_directories(Folder());
        host_.Start("");
    }

    fs::path Folder() const { return sandbox_.Folder() / "compositions"; }
    fs::path ScriptPath() const { return Folder() / "fx.v1.txt"; }
    fs::path ArchivePath() const { return Folder() / "fx.v1.mxf"; }
    static void Put(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    static std::string Get(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    void Arrange(Files files) {
        fs::remove(ScriptPath());
        fs::remove(ArchivePath());
        const bool script = files != Files::kArchiveAlone && files != Files::kNone;
        const bool archive = files != Files::kScriptAlone && files != Files::kNone;
        if (script) Put(ScriptPath(), kScript);
        if (archive) Put(ArchivePath(), old_);
        const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1);
        if (files == Files::kScriptNewer) fs::last_write_time(ArchivePath(), past);
        if (files == Files::kArchiveNewer) fs::last_write_time(ScriptPath(), past);
    }
    std::string Create(const fs::path& path) { return host_.Do({"create_path", Utf8(path)}); }
    std::size_t FileCount() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(Folder()), fs::directory_iterator()));
    }

    const std::string old_ = plain::Write(Named(L"Archive")).bytes;
    const std::string new_ = plain::Write(Described()).bytes;
    ScopedConverterValues values_;
    Host host_;
};

bool IsLong(const Setting& setting) {
    return setting && setting->size() >= 260;
}

// The rule, told once more: what loading the script answers, and whether its archive is written.
struct Expected {
    std::string answer;
    bool written;
};

Expected ExpectScript(const Settings& settings, Files files) {
    const bool exists = files != Files::kArchiveAlone && files != Files::kNone;
    const bool anything = settings.convertor && !settings.convertor->empty();
    const bool tooLong =
        IsLong(settings.convertor) || IsLong(settings.type) || IsLong(settings.saveFx);
    if ((anything && tooLong) || !exists) return {"12 empty", false};
    const bool all = settings.convertor == "1" && settings.type == "1" && settings.saveFx == "1";
    return {"0 set Script\\C", all};
}

std::string ExpectArchive(const Settings& settings, Files files) {
    const bool exists = files != Files::kScriptAlone && files != Files::kNone;
    const bool anything = settings.convertor && !settings.convertor->empty();
    const bool tooLong =
        IsLong(settings.convertor) || IsLong(settings.type) || IsLong(settings.saveFx);
    const bool converting = settings.convertor == "1" && settings.saveFx == "1";
    if ((anything && tooLong) || converting || !exists) return "12 empty";
    return "0 set Archive\\C";
}

TEST_F(ArchiveSettings, EveryCombinationWithEveryStateOfTheFiles) {
    const Setting choices[] = {std::nullopt, "", "0", "1", std::string(260, '1')};
    int written = 0;
    for (const Setting& convertor : choices) {
        for (const Setting& type : choices) {
            for (const Setting& saveFx : choices) {
                const Settings settings{convertor, type, saveFx};
                values_.Set(settings.Values());
                for (const Files files : kFileStates) {
                    SCOPED_TRACE(testing::PrintToString(settings.Values()) + " files " +
                                 std::to_string(static_cast<int>(files)));
                    Arrange(files);
                    const std::size_t before = FileCount();
                    ASSERT_EQ(Create(ArchivePath()), ExpectArchive(settings, files));
                    ASSERT_EQ(FileCount(), before);
                    const Expected expected = ExpectScript(settings, files);
                    const std::string archive = Get(ArchivePath());
                    ASSERT_EQ(Create(ScriptPath()), expected.answer);
                    ASSERT_EQ(Get(ArchivePath()), expected.written ? new_ : archive);
                    written += expected.written ? 1 : 0;
                }
            }
        }
    }
    EXPECT_EQ(written, 3);  // the script with an older archive, a newer one, and none
}

TEST_F(ArchiveSettings, ArchiveIsWrittenOnEveryLoad) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kScriptAlone);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C");
        EXPECT_EQ(Get(ArchivePath()), new_);
        Put(ArchivePath(), "spoiled");
    }
}

TEST_F(ArchiveSettings, WrittenArchiveIsReadOnceTheSettingsAreGone) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kScriptAlone);
    ASSERT_EQ(Create(ScriptPath()), "0 set Script\\C");
    fs::remove(ScriptPath());
    EXPECT_EQ(Create(ArchivePath()), "12 empty");
    values_.Set({});
    EXPECT_EQ(Create(ArchivePath()), "0 set Script\\C");
}

TEST_F(ArchiveSettings, ValuesOfTwoHundredFiftyNineCharactersAreShortEnough) {
    Arrange(Files::kScriptAlone);
    for (const char* name : {"Convertor", "Type", "SaveFx"}) {
        ConverterValues values{{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}};
        values[name] = std::string(259, '1');
        values_.Set(values);
        EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C") << name;
        values[name] += '1';
        values_.Set(values);
        EXPECT_EQ(Create(ScriptPath()), "12 empty") << name;
    }
    EXPECT_FALSE(fs::exists(ArchivePath()));
}

TEST_F(ArchiveSettings, OnlyExactlyOneCounts) {
    Arrange(Files::kArchiveAlone);
    for (const char* value : {"01", "11", " 1", "1 ", "yes", "TRUE"}) {
        values_.Set({{"Convertor", value}, {"Type", "1"}, {"SaveFx", "1"}});
        EXPECT_EQ(Create(ArchivePath()), "0 set Archive\\C") << value;
    }
}

// The bytes of a UTF-16 text.
std::string Units(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

TEST_F(ArchiveSettings, ValuesEndAtTheirFirstZeroWhateverTheirType) {
    Arrange(Files::kScriptNewer);
    const std::u16string zero(1, u'\0');
    const std::u16string beyond = u"1" + zero + std::u16string(300, u'x');
    for (const std::u16string& one : {std::u16string(u"1"), u"1" + zero, beyond}) {
        values_.SetBytes({{"Convertor", Units(one)}, {"Type", Units(one)}, {"SaveFx", Units(one)}});
        EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C") << one.size();
        EXPECT_EQ(Get(ArchivePath()), new_) << one.size();
        EXPECT_EQ(Create(ArchivePath()), "12 empty") << one.size();
        Put(ArchivePath(), old_);
    }
    // Something, but no text: nothing is converted, and lengths count.
    values_.SetBytes({{"Convertor", Units(zero + u"1")}, {"SaveFx", Units(u"1")}});
    EXPECT_EQ(Create(ArchivePath()), "0 set Archive\\C");
    values_.SetBytes(
        {{"Convertor", Units(zero + u"1")}, {"SaveFx", Units(std::u16string(260, u'1'))}});
    EXPECT_EQ(Create(ArchivePath()), "12 empty");
}

TEST_F(ArchiveSettings, ValuesThatAreNoTextAreAbsent) {
    Arrange(Files::kArchiveAlone);
    const std::string one = Units(u"1");
    for (const std::string& bytes : {one + '\0', std::string("1"), std::string(2, '\0')}) {
        values_.SetBytes({{"Convertor", bytes}, {"Type", one}, {"SaveFx", one}});
        EXPECT_EQ(Create(ArchivePath()), "0 set Archive\\C") << bytes.size();
    }
}

// A folder whose path is longer than systems once allowed, gone at the end.
class DeepFolder {
public:
    explicit DeepFolder(const fs::path& parent) : path_(test_support::Wide(Utf8(parent))) {
        for (int level = 0; level < 3; ++level) {
            path_ += L'\\' + std::wstring(100, L'd');
            fs::create_directory(platform::StreamPath(path_));
            levels_.push_back(path_);
        }
    }
    DeepFolder(const DeepFolder&) = delete;
    DeepFolder& operator=(const DeepFolder&) = delete;
    ~DeepFolder() {
        for (const std::wstring& name : platform::ListFolder(path_ + L'\\', L"fx.")) {
            EXPECT_TRUE(platform::RemoveFile(*this / name));
        }
        for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
            std::error_code ignored;
            fs::remove(platform::StreamPath(*level), ignored);
        }
    }

    std::wstring operator/(const std::wstring& name) const { return path_ + L'\\' + name; }

private:
    std::wstring path_;
    std::vector<std::wstring> levels_;
};

TEST_F(ArchiveSettings, LongPathLoadsUnlessItIsConverted) {
    const DeepFolder deep(Folder());
    const std::wstring script = deep / L"fx.txt";
    const std::wstring archive = deep / L"fx.mxf";
    ASSERT_GT(script.size(), 300u);
    Put(platform::StreamPath(script), kScript);
    const std::string path = test_support::Utf8(script);
    EXPECT_EQ(host_.Do({"create_path", path}), "0 set Script\\C");
    EXPECT_EQ(host_.Do({"register", path, "path"}), "0");
    Put(platform::StreamPath(archive), old_);
    EXPECT_EQ(host_.Do({"create_path", test_support::Utf8(archive)}), "0 set Archive\\C");
    values_.Set({{"Convertor", "1"}, {"SaveFx", "0"}});
    EXPECT_EQ(host_.Do({"create_path", path}), "0 set Script\\C");
    for (const char* type : {"", "1"}) {
        values_.Set({{"Convertor", "1"}, {"Type", type}, {"SaveFx", "1"}});
        EXPECT_EQ(host_.Do({"create_path", path}), "12 empty");
    }
    EXPECT_EQ(Get(platform::StreamPath(archive)), old_);
}

TEST_F(ArchiveSettings, PathsOfTwoHundredFiftyNineCharactersAreShortEnough) {
    Arrange(Files::kScriptAlone);
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    const auto padded = [this](const std::string& name, std::size_t size) {
        std::string path = Utf8(Folder());
        if ((size - path.size() - name.size()) % 2 != 0) path += '/';
        while (path.size() + name.size() + 2 < size) path += "./";
        return path.insert(Utf8(Folder()).size(), "/") + '/' + name;
    };
    Put(Folder() / "fx", kScript);
    const std::string longest = padded("fx.v1.txt", 259);
    ASSERT_EQ(longest.size(), 259u);
    EXPECT_EQ(host_.Do({"create_path", longest}), "0 set Script\\C");
    EXPECT_EQ(Get(ArchivePath()), new_);
    fs::remove(ArchivePath());
    EXPECT_EQ(host_.Do({"create_path", padded("fx.v1.txt", 260)}), "12 empty");
    // The archive's path is four characters longer.
    EXPECT_EQ(host_.Do({"create_path", padded("fx", 255)}), "0 set Script\\C");
    EXPECT_EQ(Get(Folder() / "fx.mxf"), new_);
    fs::remove(Folder() / "fx.mxf");
    EXPECT_EQ(host_.Do({"create_path", padded("fx", 256)}), "12 empty");
    EXPECT_EQ(FileCount(), 2u);
}

TEST_F(ArchiveSettings, ArchivesAreWrittenIntoFoldersOfAnyLettersWithEitherSeparator) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    const fs::path folder =
        Folder() / test_support::PathFromUtf8("\xC4\x8D\xE4\xB8\xAD \xC3\xA9.d");
    fs::create_directory(folder);
    Put(folder / "fx", kScript);
    for (const char separator : {'/', '\\'}) {
        std::string path = Utf8(folder / "fx");
        for (char& character : path) {
            if (character == '/' || character == '\\') character = separator;
        }
        EXPECT_EQ(host_.Do({"create_path", path}), "0 set Script\\C") << separator;
        EXPECT_EQ(Get(folder / "fx.mxf"), new_) << separator;
        fs::remove(folder / "fx.mxf");
    }
}

TEST_F(ArchiveSettings, FaultyScriptLeavesTheOldArchive) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kScriptNewer);
    Put(ScriptPath(), "[SETUP]\nNAME = \"Script\"\n");
    EXPECT_EQ(Create(ScriptPath()), "12 empty");
    EXPECT_EQ(Get(ArchivePath()), old_);
    EXPECT_EQ(FileCount(), 2u);
}

TEST_F(ArchiveSettings, ScriptCalledLikeItsArchiveIsNotOverwritten) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    for (const char* name : {"fx.mxf", "fx.MXF"}) {
        const fs::path script = Folder() / name;
        Put(script, kScript);
        for (int times = 0; times < 2; ++times) {
            EXPECT_EQ(Create(script), "0 set Script\\C") << name;
            EXPECT_EQ(Get(script), kScript) << name;
        }
        fs::remove_all(Folder());
        fs::create_directory(Folder());
    }
    Put(ArchivePath(), kScript);
    std::error_code unsupported;
    fs::create_symlink(ArchivePath(), ScriptPath(), unsupported);
    if (!unsupported) {
        EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C");
        EXPECT_EQ(Get(ArchivePath()), kScript);
    }
}

TEST_F(ArchiveSettings, ArchiveThatCannotBeWrittenFailsNothing) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kScriptAlone);
    fs::create_directory(ArchivePath());
    EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C");
    EXPECT_EQ(FileCount(), 2u);
    EXPECT_TRUE(fs::is_directory(ArchivePath()));
    fs::remove(ArchivePath());
}

TEST_F(ArchiveSettings, OldArchiveHeldOpenIsThereWholeOrReplaced) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kScriptNewer);
    {
        std::ifstream holder(ArchivePath(), std::ios::binary);
        ASSERT_TRUE(holder.is_open());
        EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C");
        const std::string bytes = Get(ArchivePath());
        EXPECT_TRUE(bytes == old_ || bytes == new_);
        EXPECT_EQ(FileCount(), 2u);
    }
    EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C");
    EXPECT_EQ(Get(ArchivePath()), new_);
}

// Where holding a file open forbids replacing it, the write waits for a moment.
TEST_F(ArchiveSettings, OldArchiveHeldForAMomentIsReplacedAfterAll) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    bool replaced = false;
    // On a busy machine the moment may be over before the holder lets go.
    for (int attempt = 0; attempt < 20 && !replaced; ++attempt) {
        Arrange(Files::kScriptNewer);
        std::ifstream holder(ArchivePath(), std::ios::binary);
        ASSERT_TRUE(holder.is_open());
        host_.Send({"create_path", Utf8(ScriptPath())});
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        holder.close();
        std::string line;
        ASSERT_TRUE(host_.NextLine(line));
        EXPECT_EQ(line, "0 set Script\\C");
        ASSERT_TRUE(host_.NextLine(line));  // the answer's end
        replaced = Get(ArchivePath()) == new_;
        ASSERT_TRUE(replaced || Get(ArchivePath()) == old_);
        EXPECT_EQ(FileCount(), 2u);
    }
    EXPECT_TRUE(replaced);
}

TEST_F(ArchiveSettings, LeftoversOfKilledProcessesGoWithTheNextWrite) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kScriptAlone);
    Put(Folder() / "~tarnex-2000000011-89abcdef.tmp", "half an arch");
    EXPECT_EQ(Create(ScriptPath()), "0 set Script\\C");
    EXPECT_EQ(FileCount(), 2u);
    EXPECT_EQ(Get(ArchivePath()), new_);
}

TEST_F(ArchiveSettings, RegistrationIgnoresSettingsAndArchives) {
    values_.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Arrange(Files::kArchiveNewer);
    EXPECT_EQ(host_.Do({"register", "fx.v1.txt", "name"}), "0");
    EXPECT_EQ(host_.Do({"name", "0"}), "<Script\\C>");
    EXPECT_EQ(Get(ArchivePath()), old_);
}

}  // namespace
}  // namespace host_test
