#pragma once

// One script as the checks look at it: its bytes, what the reader told of it, and the description
// that it was read into.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/Recording.h"
#include "compositions/CompScript.h"
#include "compositions/language/ByteOffsets.h"

namespace tarnexctl {

class Subject {
public:
    // All stay the caller's.
    Subject(std::string_view bytes, const compositions::CompositionScript& script,
            const Recording& recording)
        : bytes_(bytes), script_(script), recording_(recording) {}

    std::string_view Bytes() const { return bytes_; }
    // Without the zero that ends it.
    std::wstring_view Text() const {
        const std::wstring_view text = recording_.Text();
        return text.substr(0, text.empty() ? 0 : text.size() - 1);
    }
    std::int32_t Status() const { return script_.GetReadStatus(); }
    const compositions::CompositionDescription& Description() const {
        return script_.GetDescription();
    }
    const Recording& Record() const { return recording_; }

    // Whether the section was read up to the next header: what it declares is all there.
    bool IsWhole(Section section) const;

    // Of the text's first character behind a byte-order mark.
    std::size_t FirstPosition() const { return bytes_.starts_with("\xEF\xBB\xBF") ? 3 : 0; }
    // Between positions of the text and offsets of the bytes.
    std::uint64_t OffsetAt(std::size_t position) const { return Offsets().At(position); }
    std::size_t PositionOf(std::uint64_t offset) const;

    // Where a piece stands; the statement's own range for one that stands nowhere by itself.
    ByteRange RangeOf(const RecordedStatement& statement, std::wstring_view piece) const;
    // The same for a stretch of text.
    ByteRange RangeOf(std::size_t begin, std::size_t end) const;

    // The names that statements of the section declare, in the script's own spelling; of EFFECTS
    // mixes too.
    std::vector<std::wstring_view> NamesOf(Section section) const;

    // Whether a piece of the statement was written between quotes, or between percent signs.
    bool IsQuoted(const RecordedStatement& statement, std::size_t piece) const;
    bool IsVariable(std::wstring_view piece) const;
    // The number of the first piece between quotes: in PROPERTIES and MAPPING, the name's.
    std::size_t FirstQuoted(const RecordedStatement& statement) const;

private:
    const compositions::ByteOffsets& Offsets() const;
    wchar_t CharacterBefore(std::wstring_view piece) const;

    std::string_view bytes_;
    const compositions::CompositionScript& script_;
    const Recording& recording_;
    mutable std::optional<compositions::ByteOffsets> offsets_;  // made when first asked for
};

// A name or text of the script as messages show it: UTF-8, in quotes, cut when it is long.
std::string Quoted(std::wstring_view text);
// The same without the quotes.
std::string Unquoted(std::wstring_view text);

// Whether the word is the keyword of the section's header.
bool IsHeaderOf(std::wstring_view word, Section section);

// "did you mean ...?" as the help of a diagnostic; none when no candidate is near.
std::vector<std::string> DidYouMean(std::wstring_view word,
                                    const std::vector<std::wstring_view>& candidates);

}  // namespace tarnexctl
