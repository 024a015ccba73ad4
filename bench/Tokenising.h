#pragma once

// The floor of everything that reads scripts: one plain loop that classifies characters and cuts
// the text into words, numbers, strings and marks.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace bench {

enum CharacterClass : std::uint8_t { kOther, kBlank, kWord, kDigit, kQuoteMark, kComment };

constexpr std::array<std::uint8_t, 256> MakeClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (int c = 'a'; c <= 'z'; ++c) classes[c] = classes[c - 32] = kWord;
    for (int c = '0'; c <= '9'; ++c) classes[c] = kDigit;
    for (char c : {' ', '\t', '\r', '\n'}) classes[static_cast<unsigned char>(c)] = kBlank;
    classes['_'] = kWord;
    classes['"'] = kQuoteMark;
    classes[';'] = kComment;
    return classes;
}
inline constexpr std::array<std::uint8_t, 256> kClasses = MakeClasses();

inline std::uint8_t ClassOf(char c) {
    return kClasses[static_cast<unsigned char>(c)];
}

struct Token {
    std::uint8_t kind;
    std::string_view text;
};

// The floor: words, numbers, strings and marks of the text, in order.
inline void Tokenise(std::string_view text, std::vector<Token>& tokens) {
    tokens.clear();
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        const std::uint8_t kind = ClassOf(text[i++]);
        if (kind == kBlank) continue;
        if (kind == kComment) {
            while (i < text.size() && text[i] != '\n') ++i;
            continue;
        }
        if (kind == kQuoteMark) {
            while (i < text.size() && text[i] != '"') ++i;
            i = std::min(i + 1, text.size());
        } else if (kind == kWord || kind == kDigit) {
            while (i < text.size() && (ClassOf(text[i]) == kWord || ClassOf(text[i]) == kDigit))
                ++i;
        }
        tokens.push_back({kind, text.substr(begin, i - begin)});
    }
}

}  // namespace bench
