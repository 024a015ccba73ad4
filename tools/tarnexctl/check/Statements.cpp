#include "check/Statements.h"

#include <algorithm>
#include <string>

#include "compositions/AccessWords.h"
#include "compositions/UpperName.h"
#include "compositions/language/ScriptCharacters.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;

constexpr std::wstring_view kAccessWords[] = {L"READ", L"WRITE", L"EXPENSIVE", L"ENVELOPED",
                                              L"NO_INTERPOLATION"};

bool IsAccessWord(std::wstring_view word) {
    for (const std::wstring_view known : kAccessWords) {
        if (IsKeyword(word, known)) return true;
    }
    return false;
}

void AddUnknownWord(const Subject& subject, const RecordedStatement& statement,
                    std::wstring_view word, Diagnostics& diagnostics) {
    std::vector<std::string> help =
        DidYouMean(word, {std::begin(kAccessWords), std::end(kAccessWords)});
    const std::vector<std::string> expected = {"READ", "WRITE", "EXPENSIVE", "ENVELOPED",
                                               "NO_INTERPOLATION"};
    if (statement.rule == R46) {
        diagnostics.Add("C411", subject.RangeOf(statement, word),
                        Quoted(word) + " is no access word and is passed over", help, expected);
        return;
    }
    const std::wstring_view name =
        subject.Record().Pieces(statement)[subject.FirstQuoted(statement)];
    help.push_back("the property is called " + Quoted(word) + ", and " + Quoted(name) +
                   " is its value");
    diagnostics.Add("C409", subject.RangeOf(statement, word),
                    Quoted(word) + " is no access word and takes the name's place", help, expected);
}

void CheckAccessWordsOf(const Subject& subject, const RecordedStatement& statement,
                        Diagnostics& diagnostics) {
    const auto pieces = subject.Record().Pieces(statement);
    const std::size_t name = subject.FirstQuoted(statement);
    for (std::size_t i = 0; i < name; ++i) {
        if (IsAccessWord(pieces[i])) continue;
        AddUnknownWord(subject, statement, pieces[i], diagnostics);
        if (statement.rule == R30) return;  // what follows is the value
    }
    if (statement.rule == R30 && name < pieces.size() && IsAccessWord(pieces[name])) {
        diagnostics.Add("C410", subject.RangeOf(statement, pieces[name]),
                        "the name " + Quoted(pieces[name]) + " is taken for an access word",
                        {"the value takes the name's place"});
    }
}

bool IsNumber(std::wstring_view piece) {
    return piece.empty() || piece[0] == L'-' || (piece[0] >= L'0' && piece[0] <= L'9');
}

// Behind a kind stand the next key's time and value, or the last key's time, or nothing.
void CheckParameters(const Subject& subject, const RecordedStatement& statement,
                     Diagnostics& diagnostics) {
    const auto pieces = subject.Record().Pieces(statement);
    for (std::size_t i = 2; i < pieces.size(); ++i) {
        if (IsNumber(pieces[i]) || IsKeyword(pieces[i], L"HERMITE")) continue;
        std::size_t numbers = 0;
        while (i + 1 + numbers < pieces.size() && IsNumber(pieces[i + 1 + numbers])) ++numbers;
        const bool atEnd = i + 1 + numbers == pieces.size();
        if (numbers < 3 && !(numbers == 2 && atEnd)) continue;
        diagnostics.Add(
            "C516", subject.RangeOf(statement, pieces[i]),
            "the numbers behind " + Quoted(pieces[i]) + " mean nothing: HERMITE alone takes two");
    }
}

// Between a target's instance and the quote of its property stand a full stop and blanks.
void CheckTarget(const Subject& subject, const RecordedStatement& statement,
                 std::wstring_view instance, std::wstring_view property, Diagnostics& diagnostics) {
    const std::wstring_view text = subject.Text();
    const auto begin = static_cast<std::size_t>(instance.data() - text.data()) + instance.size();
    std::wstring_view between = text.substr(begin, text.find(L'"', begin) - begin);
    const auto skipBlanks = [&] {
        between.remove_prefix(
            std::min(between.find_first_not_of(characters::kBlanks), between.size()));
    };
    skipBlanks();
    between.remove_prefix(between.starts_with(L'.'));
    skipBlanks();
    between = between.substr(0, between.find_last_not_of(characters::kBlanks) + 1);
    if (between.empty()) return;
    diagnostics.Add("C321", subject.RangeOf(statement, between),
                    Quoted(between) + " is passed over",
                    {"the target is " + Unquoted(instance) + "." + Quoted(property)});
}

void CheckTargets(const Subject& subject, const RecordedStatement& statement,
                  Diagnostics& diagnostics) {
    const auto pieces = subject.Record().Pieces(statement);
    std::size_t target = statement.rule == R46 ? subject.FirstQuoted(statement) + 1 : 0;
    for (; target + 1 < pieces.size(); target += 2) {
        CheckTarget(subject, statement, pieces[target], pieces[target + 1], diagnostics);
    }
}

// Digits, with a "-" and perhaps blanks in front and a fraction behind if need be.
bool IsWellFormed(std::wstring_view number) {
    if (number.starts_with(L'-')) {
        number.remove_prefix(1);
        number.remove_prefix(
            std::min(number.find_first_not_of(characters::kBlanks), number.size()));
    }
    const std::size_t point = number.find(L'.');
    const auto isDigits = [](std::wstring_view text) {
        return !text.empty() && text.find_first_not_of(characters::kDigits) == text.npos;
    };
    return isDigits(number.substr(0, point)) &&
           (point == number.npos || isDigits(number.substr(point + 1)));
}

}  // namespace

void CheckAccessWords(const Subject& subject, Diagnostics& diagnostics) {
    for (const Section section : {Section::kProperties, Section::kMapping}) {
        for (const RecordedStatement& statement : subject.Record().Statements(section)) {
            if (statement.outcome == StatementOutcome::kTaken) {
                CheckAccessWordsOf(subject, statement, diagnostics);
            }
        }
    }
}

void CheckEnvelopeStatements(const Subject& subject, Diagnostics& diagnostics) {
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kEnvelopes)) {
        CheckParameters(subject, statement, diagnostics);
    }
}

void CheckTimelineStatements(const Subject& subject, Diagnostics& diagnostics) {
    const EffectInstances& instances = subject.Description().effectInstances;
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kTimeline)) {
        const auto pieces = subject.Record().Pieces(statement);
        if (statement.outcome == StatementOutcome::kSkipped) {
            diagnostics.Add("C312", statement.range, "what follows is no value: nothing is set", {},
                            {"a number", "a text in quotes", "a variable", "an envelope's name"});
        }
        for (std::size_t i = 0; i + 1 < pieces.size(); i += 2) {
            if (instances.contains(UpperName(pieces[i]))) continue;
            diagnostics.Add("C412", subject.RangeOf(statement, pieces[i]),
                            "EFFECTS declares no " + Quoted(pieces[i]),
                            diagnostics.HasRoom()
                                ? DidYouMean(pieces[i], subject.NamesOf(Section::kEffects))
                                : std::vector<std::string>());
        }
    }
}

void CheckTargets(const Subject& subject, Diagnostics& diagnostics) {
    for (const Section section : {Section::kMapping, Section::kTimeline}) {
        for (const RecordedStatement& statement : subject.Record().Statements(section)) {
            CheckTargets(subject, statement, diagnostics);
        }
    }
}

void CheckNumbers(const Subject& subject, Diagnostics& diagnostics) {
    const auto add = [&](ByteRange range, std::wstring_view number) {
        diagnostics.Add("C322", range, Quoted(number) + " is read as one number",
                        {"a digit follows \"-\" and \".\" directly"});
    };
    for (const JoinedPiece& number : subject.Record().Joined()) {
        if (IsWellFormed(number.text)) continue;
        add(subject.Record().Statement(number.statement).range, number.text);
    }
    for (const Section section : {Section::kProperties, Section::kEnvelopes, Section::kTimeline}) {
        for (const RecordedStatement& statement : subject.Record().Statements(section)) {
            const auto pieces = subject.Record().Pieces(statement);
            for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
                const std::wstring_view text = pieces[piece];
                if (text.empty() || !IsNumber(text) || IsWellFormed(text)) continue;
                if (subject.IsQuoted(statement, piece)) continue;
                add(subject.RangeOf(statement, text), text);
            }
        }
    }
}

void CheckLostBlanks(const Subject& subject, Diagnostics& diagnostics) {
    for (std::size_t i = 0; i < kSectionCount; ++i) {
        if (static_cast<Section>(i) == Section::kStructure) continue;  // has no texts
        for (const RecordedStatement& statement :
             subject.Record().Statements(static_cast<Section>(i))) {
            const auto pieces = subject.Record().Pieces(statement);
            for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
                const std::wstring_view text = pieces[piece];
                if (text.empty() || text.data() == subject.Text().data()) continue;
                if (characters::kBlanks.find(text.data()[-1]) == std::wstring_view::npos) continue;
                if (!subject.IsQuoted(statement, piece)) continue;
                diagnostics.Add("C320", subject.RangeOf(statement, text),
                                "the blanks in front of " + Quoted(text) + " are lost");
            }
        }
    }
}

}  // namespace tarnexctl
