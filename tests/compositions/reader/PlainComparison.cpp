#include "compositions/reader/PlainComparison.h"

#include "compositions/CompScript.h"
#include "compositions/ReadingObserver.h"
#include "compositions/language/CompLanguage.h"
#include "compositions/reader/PlainReader.h"
#include "helpers/report/CapturedOutput.h"
#include "helpers/scripting/PlainInterpreter.h"

using compositions::CompositionScript;
using compositions::Section;

namespace {

PlainResult ReadPlainly(const std::string& text) {
    static plain::Interpreter matcher(L"", compositions::CompositionLanguage()->Blanks(),
                                      compositions::CompositionLanguage()->Tables());
    matcher.TakeText(plain::Preprocess(text));
    const PlainToolkit toolkit{
        [](std::uint32_t rule, std::vector<std::wstring>& pieces) {
            return matcher.get_expression(rule, pieces);
        },
        [](std::uint32_t rule) { return matcher.find_expression(rule, false); },
        [](std::uint32_t kind, std::wstring& lexem) { return matcher.get_lexem(kind, lexem); },
        [] { return matcher.position; },
        [](std::size_t position) { matcher.position = position; },
    };
    return ReadPlainly(toolkit);
}

// Keeps whether what an observer is told is in order: within the file, and forwards.
class OrderObserver : public compositions::ReadingObserver {
public:
    explicit OrderObserver(std::size_t size) : size_(size) {}
    void OnHeader(Section, compositions::ByteRange range) override {
        last_ = 0;
        Check(range);
    }
    void OnStatement(const compositions::Statement& statement) override { Check(statement.range); }
    void OnSectionEnd(const compositions::SectionEnd& end) override {
        isGood = isGood && end.offset <= size_;
    }
    bool isGood = true;

private:
    void Check(compositions::ByteRange range) {
        isGood = isGood && last_ <= range.begin && range.begin < range.end && range.end <= size_;
        last_ = range.end;
    }
    std::uint64_t last_ = 0;
    std::size_t size_;
};

bool SameSections(const CompositionScript& script, const PlainResult& plain) {
    for (int i = 0; i < 8; ++i) {
        if (script.GetSectionStatuses()[static_cast<Section>(i)] != plain.sections[i]) return false;
    }
    return true;
}

bool SameAccess(const CompositionScript& script, const PlainResult& plain) {
    for (std::size_t i = 0; i < plain.mappingAccess.size(); ++i) {
        if (script.GetMappings()[i].access != plain.mappingAccess[i]) return false;
    }
    return true;
}

std::string Difference(const CompositionScript& script, const PlainResult& plain) {
    if (script.GetReadStatus() != plain.readStatus) {
        return "read status " + std::to_string(script.GetReadStatus()) + ", plainly " +
               std::to_string(plain.readStatus);
    }
    if (!SameSections(script, plain)) return "the sections' statuses";
    if (!(script.GetDescription() == plain.description)) return "the description";
    if (!SameAccess(script, plain)) return "a mapping's access";
    return {};
}

}  // namespace

PlainComparison CompareWithPlain(const std::string& text) {
    captured::TakeDebugged();
    captured::TakeTraced();
    const CompositionScript script(text);
    const std::size_t assertions = captured::TakeDebugged().size();
    const std::size_t traced = captured::TakeTraced().size();
    OrderObserver observer(text.size());
    const CompositionScript observed(text, &observer);
    captured::TakeDebugged();
    captured::TakeTraced();

    const PlainResult plain = ReadPlainly(text);
    std::string difference = Difference(script, plain);
    if (difference.empty() && assertions != static_cast<std::size_t>(plain.assertions)) {
        difference = "the assertions";
    }
    if (difference.empty() && traced != (plain.titleTraced ? 1u : 0u)) {
        difference = "the traced lines";
    }
    if (difference.empty() && !(observed.GetDescription() == script.GetDescription() &&
                                observed.GetSectionStatuses() == script.GetSectionStatuses())) {
        difference = "the observed reading";
    }
    if (difference.empty() && !observer.isGood) difference = "the observer's places";
    return {difference, plain.sections};
}
