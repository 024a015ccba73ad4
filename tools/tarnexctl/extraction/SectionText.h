#pragma once

// One section of a script that is written from a description: statements that are known to read as
// they should, since each goes through the library's own grammar first.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnexctl {

// Something that no script can say.
struct Gap {
    std::string where;  // "effect instance \"BLUR\""
    std::string why;
};
using Gaps = std::vector<Gap>;

class SectionText {
public:
    explicit SectionText(Gaps& gaps) : gaps_(gaps) {}

    // Takes up the statement when the rule reads it as exactly those pieces, and says whether it
    // did; else the gap is noted.
    bool Add(std::uint32_t rule, const std::wstring& statement,
             const std::vector<std::wstring>& pieces, const std::string& where);

    void AddGap(const std::string& where, const std::string& why) { gaps_.push_back({where, why}); }

    const std::string& Text() const { return text_; }

private:
    Gaps& gaps_;
    std::string text_;
};

// Whether the rule reads those bytes, all of them, as exactly those pieces.
bool ReadsAs(std::uint32_t rule, std::string_view bytes, const std::vector<std::wstring>& pieces);
// The same for a text; one that has no bytes does not read at all.
bool ReadsAs(std::uint32_t rule, std::wstring_view text, const std::vector<std::wstring>& pieces);

std::wstring QuotedText(std::wstring_view text);

// "effect instance \"BLUR\""
std::string Where(const char* what, std::wstring_view name);

// Whether a name is as the reader would have it, in upper case.
bool IsUpper(std::wstring_view text);
inline constexpr const char* kNotUpper = "a script's names are in upper case";

}  // namespace tarnexctl
