#pragma once

// For tools that explain a script: an observer hears, while the script is read, where each header,
// each statement and each section's end was found. Offsets are bytes of the file, comments
// included, so that a tool can count lines and columns. Called on the reading thread; what a call
// is given is valid until it returns. An exception from an observer leaves the reader's
// constructor.

#include <cstdint>
#include <span>
#include <string_view>

#include "compositions/ReadStatus.h"

namespace compositions {

// From the first byte to just behind the last one; surrounding blanks are left out.
struct ByteRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    bool operator==(const ByteRange&) const = default;
};

enum class StatementOutcome : std::uint8_t {
    kTaken,
    // It has a statement's form, but a keyword that the section does not know, or a value of no
    // known form: nothing was kept of it, and reading went on.
    kSkipped,
    // It ended the section with a status. Nothing was kept of it but what the status allows.
    kRefused,
};

struct Statement {
    Section section;
    // The grammar rule that matched. In STRUCTURE each lexem behind the output statement is told as
    // a statement of its own, with its lexem kind; in TIMELINE the targets and their value are one
    // statement, told with the rule of the targets.
    std::uint32_t rule;
    ByteRange range;
    StatementOutcome outcome;
    // What the rule stored, in the order of the script; in TIMELINE the targets, then the value.
    // Views into the text that OnText told, but for an empty piece and one joined across a gap.
    std::span<const std::wstring_view> pieces = {};
};

struct SectionEnd {
    Section section;
    std::int32_t status;
    // The first text that is no statement of the section, or the refused statement; the file's size
    // when nothing but blanks was left, or when the header was not found.
    std::uint64_t offset;
    // Rules and lexem kinds that were tried at the offset and did not match: what could have stood
    // there, if the observer wants all of them. For a missing header, the header's rule. Empty
    // behind a refused statement.
    std::span<const std::uint32_t> expected;
    // The name, word or value that the section refused, in the script's own spelling; empty when
    // none was refused.
    std::wstring_view culprit;
};

class ReadingObserver {
public:
    virtual ~ReadingObserver() = default;

    // Asked when a reading starts. Without the expected rules only those are tried that the next
    // characters allow, and reading takes hardly longer than without an observer.
    virtual bool WantsExpected() const;

    // The script as it is matched, without comments: before all else, also when it is empty. Valid
    // as long as the CompositionScript.
    virtual void OnText(std::wstring_view text);
    // The first place that reads as the section's header, be it within a string.
    virtual void OnHeader(Section section, ByteRange range);
    virtual void OnStatement(const Statement& statement);
    // Once for every section that was looked for, in the order of reading.
    virtual void OnSectionEnd(const SectionEnd& end);
};

}  // namespace compositions
