#pragma once

// What looks like a header: a word between square brackets, wherever it stands outside comments.

#include <optional>
#include <string_view>
#include <vector>

#include "check/Diagnostics.h"
#include "check/SourceText.h"
#include "check/Subject.h"

namespace tarnexctl {

struct BracketedWord {
    std::size_t begin;  // positions of the text
    std::size_t end;
    std::wstring_view word;
    bool blankBehind;                // as a header needs
    std::optional<Section> section;  // whose keyword the word is
};

// In the order of the text.
std::vector<BracketedWord> FindBracketedWords(std::wstring_view text);

// The headers of a script that was not read as a whole, and what lies between the parts that were.
class Headers {
public:
    Headers(const Subject& subject, const SourceText& source);

    // Says which headers are none, are there twice or are not what they seem, and what stands in
    // front of the first one.
    void Check(Diagnostics& diagnostics) const;

    // The bracketed word that begins there.
    const BracketedWord* At(std::size_t position) const;
    // A header of the section that does not count as one.
    const BracketedWord* FailedHeaderOf(Section section) const;
    // Whether the header that was found lies within a statement of another section.
    bool IsWithinText(Section section) const;

    // "not read: lines 5 to 9": from there to the next header that counts; nothing when there is
    // no text.
    std::vector<std::string> NotRead(std::uint64_t from) const;

private:
    bool IsRead(std::uint64_t offset) const;
    bool Counts(const BracketedWord& bracket) const;
    std::uint64_t NextHeader(std::uint64_t offset) const;
    void CheckBracket(const BracketedWord& bracket, Diagnostics& diagnostics) const;
    void CheckUnreached(Diagnostics& diagnostics) const;
    void CheckFront(Diagnostics& diagnostics) const;
    void CheckWithinText(Diagnostics& diagnostics) const;

    const Subject& subject_;
    const SourceText& source_;
    std::vector<BracketedWord> brackets_;
};

}  // namespace tarnexctl
