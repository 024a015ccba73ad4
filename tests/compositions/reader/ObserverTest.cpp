#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "compositions/reader/ReadScript.h"

using compositions::ByteRange;
using compositions::ReadingObserver;
using compositions::Section;
using compositions::SectionEnd;
using compositions::Statement;
using compositions::StatementOutcome;
using testing::Contains;
using testing::ElementsAre;

namespace {

// What was told, in the script's own words.
class Recorder : public ReadingObserver {
public:
    explicit Recorder(std::string text) : text_(std::move(text)) {}

    void OnHeader(Section section, ByteRange range) override {
        told.push_back(std::string(SectionKeyword(section)) + " header: " + Text(range));
    }
    void OnStatement(const Statement& statement) override {
        static const char* const kOutcomes[] = {"taken", "skipped", "refused"};
        told.push_back(
            std::string(SectionKeyword(statement.section)) + " R" + std::to_string(statement.rule) +
            " " + kOutcomes[static_cast<int>(statement.outcome)] + ": " + Text(statement.range));
    }
    void OnSectionEnd(const SectionEnd& end) override {
        std::string line = std::string(SectionKeyword(end.section)) + " ends with " +
                           std::to_string(end.status) + " at " + std::to_string(end.offset) +
                           ", expected";
        for (std::uint32_t rule : end.expected) line += " " + std::to_string(rule);
        if (!end.culprit.empty()) {
            line += ", not " + std::string(end.culprit.begin(), end.culprit.end());
        }
        told.push_back(line);
    }

    std::vector<std::string> told;

private:
    std::string Text(ByteRange range) const {
        return text_.substr(range.begin, range.end - range.begin);
    }
    std::string text_;
};

std::vector<std::string> Told(const std::string& text) {
    Recorder recorder(text);
    ReadScript(text, &recorder);
    return recorder.told;
}

TEST(Observer, HearsOfEveryHeaderStatementAndEnd) {
    const std::string text =
        "; about\n[SETUP]\nNAME = \"n\" ; note\n  CATEGORY=\"c\"\n OTHER = 3\n[ sources ] \n"
        "A = INPUT\n[EFFECTS]\n[STRUCTURE] OUTPUT = MIX(a)\n";
    EXPECT_THAT(
        Told(text),
        ElementsAre(
            "SETUP header: [SETUP]", "SETUP R16 taken: NAME = \"n\"",
            "SETUP R16 taken: CATEGORY=\"c\"", "SETUP R57 skipped: OTHER = 3",
            "SETUP ends with 0 at " + std::to_string(text.find("[ sources")) +
                ", expected 16 57 17 28",
            "SOURCES header: [ sources ]", "SOURCES R33 taken: A = INPUT",
            "SOURCES ends with 0 at " + std::to_string(text.find("[EFFECTS")) +
                ", expected 56 33 34 35",
            "EFFECTS header: [EFFECTS]",
            "EFFECTS ends with 0 at " + std::to_string(text.find("[STRUCTURE")) + ", expected 37",
            "STRUCTURE header: [STRUCTURE]",
            "STRUCTURE R39 taken: OUTPUT =", "STRUCTURE R6 taken: MIX", "STRUCTURE R40 taken: (",
            "STRUCTURE R6 taken: a", "STRUCTURE R41 taken: )",
            "STRUCTURE ends with 0 at " + std::to_string(text.size()) + ", expected 22 40 41 6",
            "PROPERTIES ends with 2 at " + std::to_string(text.size()) + ", expected 29",
            "MAPPING ends with 9 at " + std::to_string(text.size()) + ", expected 42",
            "ENVELOPES ends with 15 at " + std::to_string(text.size()) + ", expected 47",
            "TIMELINE ends with 18 at " + std::to_string(text.size()) + ", expected 53"));
}

TEST(Observer, OffsetsCountTheCommentsInside) {
    const std::string text = "[SETUP] NAME ; what it is called\n = ; next\n \"n\" ; end";
    EXPECT_THAT(Told(text),
                Contains("SETUP R16 taken: NAME ; what it is called\n = ; next\n \"n\""));
}

TEST(Observer, AStatementEndsWhereACommentBeginsAtOnce) {
    const std::string text = "[SETUP] NAME = \"n\";note\nCATEGORY = \"c\";";
    EXPECT_THAT(Told(text), Contains("SETUP R16 taken: NAME = \"n\""));
    EXPECT_THAT(Told(text), Contains("SETUP R16 taken: CATEGORY = \"c\""));
}

TEST(Observer, ARefusedStatementIsNamedWithItsCulprit) {
    const std::string start = TextOf({.effects = "E = \"e\""});
    const auto last = [&](const std::string& section) {
        const std::string text = start + section;
        for (const std::string& line : Told(text)) {
            if (line.find(" refused: ") != line.npos) return line;
        }
        return std::string("none");
    };
    EXPECT_EQ(last("[PROPERTIES] EXPENSIVE enveloped \"p\" = 1"),
              "PROPERTIES R30 refused: EXPENSIVE enveloped \"p\" = 1");
    EXPECT_EQ(last("[MAPPING] \"p\" = E.\"q\", F.\"r\""),
              "MAPPING R46 refused: \"p\" = E.\"q\", F.\"r\"");
    EXPECT_EQ(last("[ENVELOPES] A = {1}, {0, Spline}"),
              "ENVELOPES R52 refused: A = {1}, {0, Spline}");
    EXPECT_EQ(last("[TIMELINE] E.\"p\" = Curve"), "TIMELINE R54 refused: E.\"p\" = Curve");
}

TEST(Observer, TheEndOfARefusalPointsAtTheStatementAndSaysWhy) {
    const std::string start = TextOf({.effects = "E = \"e\""});
    const std::string offset = std::to_string(start.size() + 12);
    EXPECT_THAT(Told(start + "[ENVELOPES] A = {1}, {0, Spline}"),
                Contains("ENVELOPES ends with 17 at " + offset + ", expected, not Spline"));
    EXPECT_THAT(Told(start + "[TIMELINE]  E.\"p\" = Curve"),
                Contains("TIMELINE ends with 12 at " + offset + ", expected, not Curve"));
    EXPECT_THAT(Told(start + "[MAPPING]   \"p\" = E.\"q\", other.\"r\""),
                Contains("MAPPING ends with 13 at " + offset + ", expected, not other"));
    EXPECT_THAT(Told(start + "[MAPPING]   \"p\" = E.\"twice\", e.\"twice\""),
                Contains("MAPPING ends with 14 at " + offset + ", expected, not twice"));
    EXPECT_THAT(Told("[SETUP] IS_FILTER = maybe"),
                Contains("SETUP ends with 12 at 8, expected, not maybe"));
}

TEST(Observer, TheCulpritOfOneSectionIsNotThatOfTheNext) {
    const std::string text = TextOf({.properties = "EXPENSIVE ENVELOPED \"p\" = 1", .mapping = ""});
    const auto told = Told(text);
    EXPECT_THAT(told, Contains("PROPERTIES ends with 11 at " + std::to_string(text.find("EXPENS")) +
                               ", expected, not ENVELOPED"));
    EXPECT_THAT(
        told, Contains("MAPPING ends with 0 at " + std::to_string(text.size()) + ", expected 46"));
}

// However long: the records that were made for the statement are gone when it is told.
TEST(Observer, AMappedTargetIsNamedAsItIsWritten) {
    for (const std::string property :
         {"Gain", "a property of more characters than stay in place"}) {
        const std::string start = TextOf({.effects = "E = \"e\"",
                                          .mapping = ("\"p\" = E.\"" + property + "\"").c_str(),
                                          .envelopes = "A = {1}, {0, HOLD}"});
        const std::string text = start + "[TIMELINE] E.\"free\", e.\"" + property + "\" = A";
        EXPECT_THAT(Told(text),
                    Contains("TIMELINE ends with 19 at " + std::to_string(start.size() + 11) +
                             ", expected, not " + property));
    }
}

TEST(Observer, AValueOfNoKnownFormIsSkippedAndItsPlaceIsTheEnd) {
    const std::string text = TextOf({.timeline = "E.\"p\" = {5}"});
    const auto told = Told(text);
    EXPECT_THAT(told, Contains("TIMELINE R54 skipped: E.\"p\" ="));
    EXPECT_THAT(told, Contains("TIMELINE ends with 0 at " + std::to_string(text.find("{5}")) +
                               ", expected 6 8 5 1 20 54"));
}

TEST(Observer, AnUnclosedParenthesisEndsWhereTheNamesDo) {
    const std::string text = TextOf({.structure = "OUTPUT = MIX("});
    EXPECT_THAT(Told(text), Contains("STRUCTURE ends with 12 at " + std::to_string(text.size()) +
                                     ", expected 22 40 41 6"));
}

// What a program that checks many scripts asks for.
class PieceRecorder : public ReadingObserver {
public:
    bool WantsExpected() const override { return false; }
    void OnText(std::wstring_view text) override { text_ = text; }
    void OnStatement(const Statement& statement) override {
        std::string line = "R" + std::to_string(statement.rule) + ":";
        for (const std::wstring_view piece : statement.pieces) {
            line += " " + std::string(piece.begin(), piece.end());
            const bool inText =
                piece.data() >= text_.data() && piece.data() <= text_.data() + text_.size();
            EXPECT_TRUE(inText) << line;
        }
        told.push_back(line);
    }
    void OnSectionEnd(const SectionEnd& end) override { ends.push_back(end.offset); }

    std::vector<std::string> told;
    std::vector<std::uint64_t> ends;

private:
    std::wstring_view text_;
};

TEST(Observer, HearsThePiecesOfEachStatementWhereTheyStandInTheText) {
    PieceRecorder recorder;
    const auto script = ReadScript(TextOf({.effects = "E = \"e\"",
                                           .properties = "READ ; note\n \"p\" = -0.5",
                                           .timeline = "E.\"p\", E.\"q\" = \"Text\""}),
                                   &recorder);
    EXPECT_EQ(script->GetReadStatus(), 0);
    EXPECT_THAT(recorder.told, Contains("R37: E e"));
    EXPECT_THAT(recorder.told, Contains("R30: READ p -0.5"));
    EXPECT_THAT(recorder.told, Contains("R54: E p E q Text"));
}

TEST(Observer, WithoutTheExpectedRulesHearsTheSameStatementsAndPlaces) {
    const std::string text = TextOf({.effects = "E = \"e\" F = MIX",
                                     .structure = "OUTPUT = F(E, MIX)",
                                     .timeline = "E.\"p\" = {5}"}) +
                             "[SETUP] OTHER = 3";
    struct Full : PieceRecorder {
        bool WantsExpected() const override { return true; }
    };
    PieceRecorder quick;
    Full full;
    EXPECT_TRUE(ReadScript(text, &quick)->GetDescription() ==
                ReadScript(text, &full)->GetDescription());
    EXPECT_EQ(quick.told, full.told);
    EXPECT_EQ(quick.ends, full.ends);
    EXPECT_FALSE(quick.ends.empty());
}

TEST(Observer, ChangesNothingOfWhatIsRead) {
    const std::string text = TextOf({.properties = "\"p\" = 1", .timeline = "E.\"p\" = 5"});
    Recorder recorder(text);
    EXPECT_TRUE(ReadScript(text, &recorder)->GetDescription() ==
                ReadScript(text)->GetDescription());
}

TEST(Observer, ItsExceptionLeavesTheConstructor) {
    class Thrower : public ReadingObserver {
        void OnHeader(Section, ByteRange) override { throw 5; }
    } thrower;
    EXPECT_THROW(ReadScript(TextOf({}), &thrower), int);
}

}  // namespace
