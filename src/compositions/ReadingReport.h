#pragma once

// Tells an observer about a reading. Exists only while there is an observer.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/ReadingObserver.h"
#include "compositions/language/ByteOffsets.h"
#include "helpers/scripting/Pieces.h"

namespace compositions {

class ReadingReport {
public:
    using Pieces = helpers::scripting::Pieces;

    // The observer and the text (the script as it is matched, without comments) stay the caller's;
    // the file's bytes are not kept.
    ReadingReport(ReadingObserver& observer, std::string_view file, std::wstring_view text)
        : observer_(observer),
          wantsExpected_(observer.WantsExpected()),
          offsets_(file),
          text_(text) {
        observer_.OnText(text);
    }

    bool WantsExpected() const { return wantsExpected_; }

    // All positions are positions of the text, as the matcher knows them.
    void OnHeaderSearch(Section section, std::uint32_t rule);
    void OnHeader(std::size_t begin, std::size_t end);
    void OnMatch(std::uint32_t rule, std::size_t begin, std::size_t end, const Pieces& pieces);
    void OnMatchMore(std::size_t end, const Pieces& pieces);
    // A rule that did not match, at a position where others may have been tried before.
    void OnMismatch(std::uint32_t rule);

    void OnStatement(StatementOutcome outcome);
    void OnRefusal(std::wstring_view culprit);
    void OnSectionEnd(std::int32_t status);

private:
    std::uint64_t OffsetOfText(std::size_t position) const;
    ByteRange RangeOf(std::size_t begin, std::size_t end) const;

    ReadingObserver& observer_;
    bool wantsExpected_;
    ByteOffsets offsets_;
    std::wstring_view text_;

    Section section_ = Section::kSetup;
    std::uint32_t rule_ = 0;  // of the statement matched last
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::vector<std::wstring_view> pieces_;
    std::vector<std::uint32_t> mismatches_;  // since then
    bool isRefused_ = false;
    std::wstring culprit_;
};

}  // namespace compositions
