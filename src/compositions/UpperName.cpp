#include "compositions/UpperName.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "helpers/scripting/AsciiCase.h"
#include "helpers/scripting/ShortTexts.h"
#include "platform/CharacterCase.h"

namespace compositions {
namespace {

using helpers::scripting::UpperAscii;

// Of ASCII characters none has these bits, and a zero less one has them all.
constexpr auto kNotPlain = static_cast<wchar_t>(~0x7F);

wchar_t Combined(wchar_t character) {
    return static_cast<wchar_t>(character | (static_cast<std::uint32_t>(character) - 1));
}

// Characters that are upper-cased in one go.
using Block = std::array<wchar_t, 16 / sizeof(wchar_t)>;

void CopyUpperBlock(const wchar_t* from, wchar_t* to, Block& seen) {
    Block block;
    std::memcpy(block.data(), from, sizeof block);
    for (std::size_t i = 0; i < block.size(); ++i) {
        seen[i] |= Combined(block[i]);
        block[i] = UpperAscii(block[i]);
    }
    std::memcpy(to, block.data(), sizeof block);
}

// Writes the upper-case form of the ASCII characters. True when there were only those, and no zero.
inline bool CopyUpperAscii(std::wstring_view from, wchar_t* to) {
    const std::size_t size = from.size();
    wchar_t seen = 0;
    if (size < Block().size()) {
        for (std::size_t i = 0; i < size; ++i) {
            seen |= Combined(from[i]);
            to[i] = UpperAscii(from[i]);
        }
    } else {
        Block seenInBlocks{};
        const std::size_t last = size - seenInBlocks.size();  // goes over some of the block before
        for (std::size_t at = 0; at < last; at += seenInBlocks.size()) {
            CopyUpperBlock(from.data() + at, to + at, seenInBlocks);
        }
        CopyUpperBlock(from.data() + last, to + last, seenInBlocks);
        for (const wchar_t combined : seenInBlocks) seen |= combined;
    }
    return (seen & kNotPlain) == 0;
}

// A number that is ordered as the character's 16-bit code units are.
std::uint32_t OrderOf(wchar_t character) {
    constexpr std::uint32_t kFirstOfTwoUnits = 0x10000;
    constexpr std::uint32_t kFirstSurrogate = 0xD800;
    const auto code = static_cast<std::uint32_t>(character);
    if (code < kFirstOfTwoUnits) return code << 10;
    // Where characters are wider than that: the first unit, then what the second one adds.
    return (kFirstSurrogate << 10) + (code - kFirstOfTwoUnits);
}

std::wstring_view UpToZero(std::wstring_view text) {
    return text.substr(0, text.find(L'\0'));
}

// A short text is looked through for zeros while it is copied.
std::size_t LengthWorthCopying(std::wstring_view token) {
    return token.size() > WideText::kLongestInPlace ? UpToZero(token).size() : token.size();
}

}  // namespace

void UpperName::Assign(std::wstring_view token) {
    token = {token.data(), LengthWorthCopying(token)};
    wchar_t* const upper = text_.Renew(token.size());
    if (CopyUpperAscii(token, upper)) [[likely]]
        return;
    text_.CutTo(UpToZero(token).size());
    if (!text_.empty()) platform::ToUpperCase(text_.data(), text_.size());
}

UpperName UpperName::Verbatim(WideText characters) {
    UpperName name;
    name.text_ = std::move(characters);
    name.EndAtZero();
    return name;
}

void UpperName::EndAtZero() {
    text_.CutTo(UpToZero(text_).size());
}

// Of characters that differ.
std::strong_ordering UpperName::CompareUnits(wchar_t left, wchar_t right) {
    const std::strong_ordering order = OrderOf(left) <=> OrderOf(right);
    return std::is_neq(order) ? order : left <=> right;  // half a pair and a whole one begin alike
}

WideText UpperText(std::wstring_view text) {
    WideText upper;
    AssignUpper(text, upper);
    return upper;
}

void AssignUpper(std::wstring_view text, WideText& upper) {
    wchar_t* const to = upper.Renew(text.size());
    if (CopyUpperAscii(text, to)) [[likely]]
        return;
    // The platform stops at a zero: one call per run between zeros.
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\0', begin), text.size());
        if (end > begin) platform::ToUpperCase(to + begin, end - begin);
        begin = end + 1;
    }
}

bool IsWholeKeyword(std::wstring_view token, std::wstring_view keyword) {
    if (helpers::scripting::AreSame(token, keyword)) return true;  // as most are written
    if (token.size() < keyword.size()) return false;
    if (token.size() > keyword.size() && token[keyword.size()] != L'\0') return false;
    return std::ranges::equal(token.substr(0, keyword.size()), keyword, {}, UpperAscii);
}

}  // namespace compositions
