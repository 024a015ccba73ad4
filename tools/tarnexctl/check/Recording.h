#pragma once

// What the reader tells while it reads one script, kept in few lists that are used again for the
// next one.

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "compositions/ReadingObserver.h"

namespace tarnexctl {

using compositions::ByteRange;
using compositions::Section;
using compositions::StatementOutcome;

struct RecordedStatement {
    std::uint32_t rule;
    StatementOutcome outcome;
    ByteRange range;
    std::size_t firstPiece;
    std::size_t pieceCount;
};

// A piece that was put together across blanks.
struct JoinedPiece {
    std::size_t statement;  // its number
    std::wstring text;
};

struct RecordedSection {
    bool found = false;
    ByteRange header;
    bool wasLookedFor = false;
    std::int32_t status = compositions::status::kNotRead;
    std::uint64_t end = 0;                     // where its statements end
    std::vector<std::uint32_t> expected = {};  // there
    std::wstring culprit = {};                 // of a refusal
    std::size_t firstStatement = 0;
    std::size_t statementCount = 0;
};

class Recording final : public compositions::ReadingObserver {
public:
    // Forgets everything, for the next script.
    void Start(bool wantsExpected);

    std::wstring_view Text() const { return text_; }
    const RecordedSection& Of(Section section) const {
        return sections_[static_cast<std::size_t>(section)];
    }
    std::span<const RecordedStatement> Statements(Section section) const {
        return std::span(statements_)
            .subspan(Of(section).firstStatement, Of(section).statementCount);
    }
    // Valid as long as the script that was read. A piece that the text does not hold in one stretch
    // is empty here.
    std::span<const std::wstring_view> Pieces(const RecordedStatement& statement) const {
        return std::span(pieces_).subspan(statement.firstPiece, statement.pieceCount);
    }
    // Those of all sections, in the order of reading: numbers with blanks before their full stop.
    std::span<const JoinedPiece> Joined() const { return joined_; }
    const RecordedStatement& Statement(std::size_t number) const { return statements_[number]; }
    bool AllTaken() const { return allTaken_; }

    bool WantsExpected() const override { return wantsExpected_; }
    void OnText(std::wstring_view text) override { text_ = text; }
    void OnHeader(Section section, ByteRange range) override;
    void OnStatement(const compositions::Statement& statement) override;
    void OnSectionEnd(const compositions::SectionEnd& end) override;

private:
    RecordedSection& At(Section section) { return sections_[static_cast<std::size_t>(section)]; }

    bool wantsExpected_ = false;
    bool allTaken_ = true;
    std::wstring_view text_;
    std::array<RecordedSection, compositions::kSectionCount> sections_;
    std::vector<RecordedStatement> statements_;
    std::vector<std::wstring_view> pieces_;
    std::vector<JoinedPiece> joined_;
};

}  // namespace tarnexctl
