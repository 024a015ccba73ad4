#include "compositions/TextForm.h"

#include <array>

#include "compositions/language/ScriptCharacters.h"

namespace compositions {
namespace {

// Of the ASCII characters; the others begin nothing and end nothing.
struct Facts {
    static constexpr std::uint8_t kIsBlank = 1;
    static constexpr std::uint8_t kEndsName = 2;

    std::array<TextForm, 128> form{};
    std::array<std::uint8_t, 128> flags{};
};

constexpr Facts MakeFacts() {
    Facts facts;
    facts.form.fill(TextForm::kOther);
    for (wchar_t c : characters::kIdentStart) facts.form[c] = TextForm::kWord;
    for (wchar_t c : characters::kDigits) facts.form[c] = TextForm::kNumber;
    for (wchar_t c : characters::kBlanks) facts.flags[c] |= Facts::kIsBlank;
    for (wchar_t c : characters::kAfterIdent) facts.flags[c] |= Facts::kEndsName;
    facts.form['-'] = TextForm::kNumber;
    facts.form['"'] = TextForm::kString;
    facts.form['%'] = TextForm::kVariable;
    facts.form[','] = TextForm::kComma;
    facts.form['('] = TextForm::kOpenParen;
    facts.form[')'] = TextForm::kCloseParen;
    return facts;
}

constexpr Facts kFacts = MakeFacts();

TextForm FormOf(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    return code < kFacts.form.size() ? kFacts.form[code] : TextForm::kOther;
}

bool Has(wchar_t character, std::uint8_t flag) {
    const auto code = static_cast<std::uint32_t>(character);
    return code < kFacts.flags.size() && (kFacts.flags[code] & flag) != 0;
}

const wchar_t* BehindBlanks(const wchar_t* at, const wchar_t* end) {
    while (at != end && Has(*at, Facts::kIsBlank)) ++at;
    return at;
}

TextForm FormAt(const wchar_t* at, const wchar_t* end) {
    at = BehindBlanks(at, end);
    return at != end ? FormOf(*at) : TextForm::kOther;
}

}  // namespace

TextForm FormAt(std::wstring_view text, std::size_t position) {
    if (position >= text.size()) return TextForm::kOther;
    return FormAt(text.data() + position, text.data() + text.size());
}

TextForm FormOfAssignment(std::wstring_view text, std::size_t position) {
    if (position >= text.size()) return TextForm::kOther;
    const wchar_t* const end = text.data() + text.size();
    const wchar_t* at = BehindBlanks(text.data() + position, end);
    if (at == end) return TextForm::kOther;
    const TextForm form = FormOf(*at);
    if (form != TextForm::kWord) {
        return form == TextForm::kVariable ? form : TextForm::kOther;
    }
    while (at != end && !Has(*at, Facts::kEndsName)) ++at;
    at = BehindBlanks(at, end);
    if (at == end || *at != L'=') return TextForm::kOther;
    const TextForm value = FormAt(at + 1, end);
    return value == TextForm::kVariable ? TextForm::kOther : value;
}

}  // namespace compositions
