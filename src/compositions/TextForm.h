#pragma once

// What the next characters of a script can be the start of. Rules that begin otherwise need not be
// tried: they would not match.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace compositions {

enum class TextForm : std::uint8_t {
    kAny,  // unknown: everything is to be tried
    kWord,
    kString,
    kNumber,
    kVariable,
    kComma,
    kOpenParen,
    kCloseParen,
    kOther,
};

// Of what stands at the position, behind blanks.
TextForm FormAt(std::wstring_view text, std::size_t position);

// Of the value of an assignment, which is a name, "=" and the value; kVariable for a text that
// starts with a variable. kOther when the text is neither.
TextForm FormOfAssignment(std::wstring_view text, std::size_t position);

inline bool CanBe(TextForm form, TextForm wanted) {
    return form == wanted || form == TextForm::kAny;
}

}  // namespace compositions
