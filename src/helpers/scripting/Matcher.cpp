#include "helpers/scripting/Matcher.h"

#include "platform/CharacterCase.h"

namespace helpers::scripting {
namespace {

// `keyword` is upper case. A lexem with a zero in it equals none.
bool EqualsKeyword(std::wstring_view lexem, const std::wstring& keyword) {
    if (lexem.size() != keyword.size()) return false;
    for (std::size_t index = 0; index < lexem.size(); ++index) {
        wchar_t character = lexem[index];
        if (character == 0) return false;
        if (character >= L'a' && character <= L'z') {
            character -= L'a' - L'A';
        } else if ((character & ~0x7F) != 0) {
            std::wstring upper(lexem);
            if (upper.find(L'\0') != upper.npos) return false;
            platform::ToUpperCase(upper.data(), upper.size());
            return upper == keyword;
        }
        if (character != keyword[index]) return false;
    }
    return true;
}

std::size_t NextCandidate(const Entry& entry, std::wstring_view text, std::size_t from) {
    if (entry.onlyFirst != 0) return text.find(entry.onlyFirst, from);
    while (from < text.size() && !entry.first.Has(text[from])) ++from;
    return from < text.size() ? from : kNoPosition;
}

}  // namespace

bool Matcher::Match(const Program& program, std::uint32_t address, std::size_t& position,
                    std::size_t before, Report report) {
    program_ = &program;
    report_ = report;
    frames_.clear();
    pieces_.Start(before);
    MoveTo(position);
    at_ = address;
    if (!Run()) return false;
    position = position_;
    return true;
}

// Every position is tried in turn, but where no match can begin. Blanks before a match belong to
// it, so the position where it began is that of the first of them.
bool Matcher::Find(const Program& program, const Entry& entry, std::size_t& position, bool peek,
                   Report report) {
    const std::wstring_view text = scanner_.Text();
    if (position >= text.size()) return false;
    if (entry.recursive && !program.mayReport && !program.mayLoop) {
        memory_ = std::make_unique<Memory>();
    }
    bool found = false;
    for (std::size_t from = position; from < text.size() && !found; ++from) {
        if (!program.mayReport) from = NextCandidate(entry, text, from);
        if (from == kNoPosition) break;
        std::size_t end = from;
        found = Match(program, entry.address, end, 0, report);
        if (!found) continue;
        while (from > position && program.blanks.Has(text[from - 1])) --from;
        position = peek ? from : end;
    }
    memory_.reset();
    return found;
}

bool Matcher::Run() {
    for (;;) {
        const Instruction& instruction = program_->code[at_];
        bool goesOn = true;
        switch (instruction.operation) {
            case Operation::kLexem:
                goesOn = ReadLexem(instruction);
                break;
            case Operation::kCall:
                goesOn = Call(instruction);
                break;
            case Operation::kReturn:
                Return();
                break;
            case Operation::kChoice:
                Choose(instruction);
                break;
            case Operation::kCommit:
                frames_.pop_back();
                at_ = instruction.target;
                break;
            case Operation::kFail:
                goesOn = false;
                break;
            case Operation::kAddEmpty:
                pieces_.Add(0, 0);
                ++at_;
                break;
            case Operation::kCheckJoin:
                if (pieces_.Count() == 0) report_(kJoinWithoutPieceLine);
                ++at_;
                break;
            case Operation::kReport:
                report_(static_cast<int>(instruction.target));
                ++at_;
                break;
            case Operation::kMatched:
                return true;
        }
        if (!goesOn && !Backtrack()) return false;
    }
}

bool Matcher::ReadLexem(const Instruction& instruction) {
    if (first_ == kNoPosition) return false;
    const CompiledLexem& lexem = program_->lexems[instruction.lexem];
    LexemSpan span;
    if (scanner_.Read(lexem, first_, span) != LexemOutcome::kRead) return false;
    last_ = {lexem.kind, span.begin, span.length};
    ++reads_;
    if (instruction.keyword != kNone &&
        !EqualsKeyword(scanner_.Text().substr(span.begin, span.length),
                       program_->keywords[instruction.keyword])) {
        return false;
    }
    if (instruction.store && !memory_) {
        if (instruction.append) {
            pieces_.Append(span.begin, span.length);
        } else {
            pieces_.Add(span.begin, span.length);
        }
    }
    MoveTo(span.next);
    ++at_;
    return true;
}

bool Matcher::Call(const Instruction& instruction) {
    if (instruction.mayLoop && IsOpenHere(instruction.target)) return false;
    if (memory_ && instruction.remember) {
        const auto found = memory_->find({instruction.target, first_});
        if (found != memory_->end()) return Recall(found->second);
    } else if (instruction.tail && !instruction.mayLoop) {
        at_ = instruction.target;
        return true;
    }
    frames_.push_back({at_ + 1, instruction.target, position_, reads_});
    at_ = instruction.target;
    return true;
}

void Matcher::Return() {
    const Frame frame = frames_.back();
    frames_.pop_back();
    Remember(frame, position_);
    at_ = frame.address;
}

void Matcher::Choose(const Instruction& instruction) {
    const bool mayMatch = instruction.first.table == nullptr ||
                          (first_ != kNoPosition && instruction.first.Has(scanner_.Text()[first_]));
    if (!mayMatch) {
        at_ = instruction.target;
        return;
    }
    frames_.push_back({instruction.target, kNone, position_, pieces_.Count()});
    ++at_;
}

// Goes back to the last open choice; false when there is none.
bool Matcher::Backtrack() {
    while (!frames_.empty()) {
        const Frame frame = frames_.back();
        frames_.pop_back();
        if (frame.callee == kNone) {
            at_ = frame.address;
            MoveTo(frame.position);
            pieces_.CutTo(frame.count);
            return true;
        }
        Remember(frame, kNoPosition);
    }
    pieces_.CutToStart();
    return false;
}

// A rule that comes to itself without having read anything would do so for ever; it does not match.
bool Matcher::IsOpenHere(std::uint32_t callee) const {
    for (auto frame = frames_.rbegin(); frame != frames_.rend(); ++frame) {
        if (frame->position != position_) return false;
        if (frame->callee == callee) return true;
    }
    return false;
}

void Matcher::Remember(const Frame& frame, std::size_t end) {
    if (!memory_ || !program_->code[frame.address - 1].remember) return;
    const std::size_t first = scanner_.SkipBlanks(frame.position);
    memory_->insert_or_assign({frame.callee, first}, Remembered{end, reads_ != frame.count, last_});
}

bool Matcher::Recall(const Remembered& remembered) {
    if (remembered.readLexems) {
        last_ = remembered.last;
        ++reads_;
    }
    if (remembered.end == kNoPosition) return false;
    MoveTo(remembered.end);
    ++at_;
    return true;
}

void Matcher::MoveTo(std::size_t position) {
    position_ = position;
    first_ = scanner_.SkipBlanks(position);
}

}  // namespace helpers::scripting
