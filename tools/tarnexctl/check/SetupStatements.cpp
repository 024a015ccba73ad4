#include <algorithm>
#include <array>
#include <string>

#include "check/Statements.h"
#include "compositions/CompScriptSections.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;

constexpr std::array<std::wstring_view, 5> kKeywords = {L"NAME", L"CATEGORY", L"SPEED", L"SWAP",
                                                        L"IS_FILTER"};

// "-" directly before the digits, no other character among them, within 32 bits: such a number
// reads as it is written.
bool ReadsAsWritten(std::wstring_view number) {
    const std::wstring_view digits = number.substr(number.starts_with(L'-') ? 1 : 0);
    if (digits.empty() || digits.size() > 10) return false;
    if (digits.find_first_not_of(L"0123456789") != digits.npos) return false;
    std::int64_t value = 0;
    for (const wchar_t digit : digits) value = value * 10 + (digit - L'0');
    return NumberOf(number) == (number.starts_with(L'-') ? -value : value);
}

void CheckNumber(const Subject& subject, const RecordedStatement& statement,
                 Diagnostics& diagnostics) {
    const std::wstring_view number = subject.Record().Pieces(statement)[1];
    if (number.empty() || ReadsAsWritten(number)) return;
    diagnostics.Add("C515", subject.RangeOf(statement, number),
                    Quoted(number) + " reads as " + std::to_string(NumberOf(number)));
}

// A keyword that is unknown, or known with a value of another form.
void AddSkipped(const Subject& subject, const RecordedStatement& statement,
                Diagnostics& diagnostics) {
    const auto pieces = subject.Record().Pieces(statement);
    if (statement.rule == R28) {
        diagnostics.Add("C311", subject.RangeOf(statement, pieces[0]),
                        "the variable " + Quoted(pieces[0]) + " is no register block", {},
                        {"%name% = REGS : {\"text\", \"text\"}"});
        return;
    }
    std::vector<std::string> help;
    std::vector<std::string> expected;
    const bool known = std::any_of(kKeywords.begin(), kKeywords.end(), [&](std::wstring_view word) {
        return IsKeyword(pieces[0], word);
    });
    if (known) {
        help.push_back("it takes a value of another form");
    } else {
        help = DidYouMean(pieces[0], {kKeywords.begin(), kKeywords.end()});
    }
    if (known || help.empty()) {
        expected = {"NAME = \"text\"", "CATEGORY = \"text\"", "SPEED = number", "SWAP = TRUE",
                    "IS_FILTER = TRUE or FALSE"};
    }
    diagnostics.Add("C310", subject.RangeOf(statement, pieces[0]),
                    Quoted(pieces[0]) + " is passed over", help, expected);
}

// Every statement that a later one of its keyword replaces.
class Repetitions {
public:
    void Add(const Subject& subject, const RecordedStatement& statement, Diagnostics& diagnostics) {
        const std::wstring_view word = subject.Record().Pieces(statement)[0];
        for (std::size_t i = 0; i < kKeywords.size(); ++i) {
            if (!IsKeyword(word, kKeywords[i])) continue;
            if (last_[i] != nullptr) {
                diagnostics.Add("C513", last_[i]->range,
                                "a later " + std::string(kKeywords[i].begin(), kKeywords[i].end()) +
                                    " replaces this one");
            }
            last_[i] = &statement;
        }
    }

private:
    std::array<const RecordedStatement*, kKeywords.size()> last_ = {};
};

void AddRepeatedVariables(const Subject& subject, Diagnostics& diagnostics) {
    std::map<UpperName, const RecordedStatement*> last;
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kSetup)) {
        if (statement.rule != R28 || statement.outcome != StatementOutcome::kTaken) continue;
        const std::wstring_view name = subject.Record().Pieces(statement)[0];
        const RecordedStatement*& earlier = last[UpperName(name)];
        if (earlier != nullptr) {
            diagnostics.Add("C513", earlier->range,
                            "a later %" + Unquoted(name) + "% replaces this one");
        }
        earlier = &statement;
    }
}

}  // namespace

void CheckSetupStatements(const Subject& subject, Diagnostics& diagnostics) {
    Repetitions repetitions;
    std::size_t variables = 0;
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kSetup)) {
        if (statement.outcome == StatementOutcome::kSkipped) {
            AddSkipped(subject, statement, diagnostics);
            continue;
        }
        if (statement.rule == R28) {
            ++variables;
            continue;
        }
        const auto pieces = subject.Record().Pieces(statement);
        repetitions.Add(subject, statement, diagnostics);
        if (statement.rule == R57) CheckNumber(subject, statement, diagnostics);
        if (statement.rule == R17 && IsKeyword(pieces[0], L"SWAP") &&
            IsKeyword(pieces[1], L"FALSE")) {
            diagnostics.Add("C514", subject.RangeOf(statement, pieces[1]),
                            "SWAP sets the mark, whatever its value: leave the statement out");
        }
    }
    if (variables != subject.Description().registryValues.size()) {
        AddRepeatedVariables(subject, diagnostics);
    }
}

void CheckSourceStatements(const Subject& subject, Diagnostics& diagnostics) {
    const RegistryValues& values = subject.Description().registryValues;
    const auto addUnknown = [&](const RecordedStatement& statement, std::wstring_view variable) {
        std::vector<std::wstring_view> names;
        if (!diagnostics.HasRoom()) return diagnostics.Add("C413", {}, "");
        for (const RecordedStatement& setup : subject.Record().Statements(Section::kSetup)) {
            if (setup.rule == R28) names.push_back(subject.Record().Pieces(setup)[0]);
        }
        diagnostics.Add("C413", subject.RangeOf(statement, variable),
                        "SETUP declares no variable %" + Unquoted(variable) + "%",
                        DidYouMean(variable, names));
    };
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kSources)) {
        if (statement.rule == R56) CheckNumber(subject, statement, diagnostics);
        if (statement.rule != R34 && statement.rule != R35) continue;
        const auto pieces = subject.Record().Pieces(statement);
        if (pieces.size() == 2 && subject.IsVariable(pieces[1])) {
            diagnostics.Add(
                "C414", subject.RangeOf(statement, pieces[1]),
                "a path of one part is never looked up: this one is the text " + Quoted(pieces[1]));
        }
        for (std::size_t i = 1; pieces.size() > 2 && i < pieces.size(); ++i) {
            if (subject.IsVariable(pieces[i]) && !values.contains(UpperName(pieces[i]))) {
                addUnknown(statement, pieces[i]);
            }
        }
    }
    for (const RecordedStatement& statement : subject.Record().Statements(Section::kTimeline)) {
        if (statement.outcome != StatementOutcome::kTaken) continue;
        const std::wstring_view value = subject.Record().Pieces(statement).back();
        if (subject.IsVariable(value) && !values.contains(UpperName(value))) {
            addUnknown(statement, value);
        }
    }
}

}  // namespace tarnexctl
