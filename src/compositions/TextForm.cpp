#include "compositions/TextForm.h"

#include <array>

#include "compositions/language/ScriptCharacters.h"

namespace compositions {
namespace {

struct CharacterFacts {
    TextForm form = TextForm::kOther;
    bool isBlank = false;
    bool endsName = false;
};

using Facts = std::array<CharacterFacts, 128>;

constexpr Facts MakeFacts() {
    Facts facts{};
    for (wchar_t c : characters::kIdentStart) facts[c].form = TextForm::kWord;
    for (wchar_t c : characters::kDigits) facts[c].form = TextForm::kNumber;
    for (wchar_t c : characters::kBlanks) facts[c].isBlank = true;
    for (wchar_t c : characters::kAfterIdent) facts[c].endsName = true;
    facts['-'].form = TextForm::kNumber;
    facts['"'].form = TextForm::kString;
    facts['%'].form = TextForm::kVariable;
    facts[','].form = TextForm::kComma;
    facts['('].form = TextForm::kOpenParen;
    facts[')'].form = TextForm::kCloseParen;
    return facts;
}

constexpr Facts kFacts = MakeFacts();

CharacterFacts FactsAt(std::wstring_view text, std::size_t position) {
    const auto code = static_cast<std::uint32_t>(text[position]);
    return code < kFacts.size() ? kFacts[code] : CharacterFacts{};
}

std::size_t BehindBlanks(std::wstring_view text, std::size_t position) {
    while (position < text.size() && FactsAt(text, position).isBlank) ++position;
    return position;
}

}  // namespace

TextForm FormAt(std::wstring_view text, std::size_t position) {
    position = BehindBlanks(text, position);
    return position < text.size() ? FactsAt(text, position).form : TextForm::kOther;
}

TextForm FormOfAssignment(std::wstring_view text, std::size_t position) {
    position = BehindBlanks(text, position);
    if (position >= text.size()) return TextForm::kOther;
    const TextForm form = FactsAt(text, position).form;
    if (form != TextForm::kWord) {
        return form == TextForm::kVariable ? form : TextForm::kOther;
    }
    while (position < text.size() && !FactsAt(text, position).endsName) ++position;
    position = BehindBlanks(text, position);
    if (position >= text.size() || text[position] != L'=') return TextForm::kOther;
    const TextForm value = FormAt(text, position + 1);
    return value == TextForm::kVariable ? TextForm::kOther : value;
}

}  // namespace compositions
