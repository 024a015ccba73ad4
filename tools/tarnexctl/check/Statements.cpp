#include "check/Statements.h"

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
