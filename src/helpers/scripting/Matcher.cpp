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

}  // namespace

bool Matcher::Match(const Program& program, std::uint32_t address, std::size_t& position,
                    std::size_t before, Report report) {
    program_ = &program;
    report_ = report;
    frames_.clear();
    pieces_.Start(before);
    return Run(address, position);
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
        if (!program.mayReport) from = scanner_.FindCandidate(entry, from);
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

bool Matcher::Run(std::uint32_t address, std::size_t& position) {
    const Instruction* const code = program_->code.data();
    Place place = PlaceAt(position);
    start_ = place.first;
    for (;;) {
        const Instruction& instruction = code[address];
        bool goesOn = true;
        switch (instruction.operation) {
            case Operation::kLexem:
                goesOn = ReadLexem(instruction, place);
                ++address;
                break;
            case Operation::kCall:
                goesOn = Call(instruction, address, place);
                break;
            case Operation::kReturn:
                address = Return(place);
                break;
            case Operation::kTest:
                address = StandsAt(place, instruction.first) ? address + 1 : instruction.target;
                break;
            case Operation::kChoice:
                if (StandsAt(place, instruction.first)) {
                    Choose(instruction, place);
                    ++address;
                } else {
                    address = instruction.target;
                }
                break;
            case Operation::kCommit:
                frames_.pop_back();
                address = instruction.target;
                break;
            case Operation::kJump:
                address = instruction.target;
                break;
            case Operation::kFail:
                goesOn = false;
                break;
            case Operation::kAddEmpty:
                pieces_.Add(0, 0);
                ++address;
                break;
            case Operation::kCheckJoin:
                if (pieces_.Count() == 0) report_(kJoinWithoutPieceLine);
                ++address;
                break;
            case Operation::kReport:
                report_(static_cast<int>(instruction.target));
                ++address;
                break;
            case Operation::kMatched:
                position = place.position;
                return true;
        }
        if (!goesOn && !Backtrack(address, place)) return false;
    }
}

inline bool Matcher::ReadLexem(const Instruction& instruction, Place& place) {
    if (place.first == kNoPosition) return false;
    const CompiledLexem& lexem = program_->lexems[instruction.lexem];
    LexemSpan span;
    if (scanner_.Read(lexem, place.first, span) != LexemOutcome::kRead) return false;
    last_ = {span.begin, static_cast<std::uint32_t>(span.length), lexem.kind};
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
    place = PlaceAt(span.next);
    return true;
}

inline bool Matcher::Call(const Instruction& call, std::uint32_t& address, Place& place) {
    if (call.mayLoop && IsOpenHere(call.target, place)) return false;
    if (memory_ && call.remember) {
        const auto found = memory_->find({call.target, place.first});
        if (found != memory_->end()) {
            ++address;
            return Recall(found->second, place);
        }
    } else if (call.tail && !call.mayLoop) {
        address = call.target;
        return true;
    }
    frames_.push_back({address + 1, call.target, place.position, reads_, 0, {}});
    address = call.target;
    return true;
}

inline std::uint32_t Matcher::Return(const Place& place) {
    const Frame frame = frames_.back();
    frames_.pop_back();
    if (memory_) Remember(frame, place.position);
    return frame.address;
}

// Without a set, whatever stands there will do.
inline bool Matcher::StandsAt(const Place& place, const CharacterSet& set) const {
    return set.table == nullptr ||
           (place.first != kNoPosition && set.Has(scanner_.Text()[place.first]));
}

inline void Matcher::Choose(const Instruction& choice, const Place& place) {
    frames_.push_back({choice.target, kNone, place.position, pieces_.Count(),
                       choice.rereads ? pieces_.SegmentCount() : kNoPosition, last_});
}

// Goes back to the last open choice; false when there is none.
bool Matcher::Backtrack(std::uint32_t& address, Place& place) {
    while (!frames_.empty()) {
        const Frame frame = frames_.back();
        frames_.pop_back();
        if (frame.callee != kNone) {
            if (memory_) Remember(frame, kNoPosition);
            continue;
        }
        address = frame.address;
        place = PlaceAt(frame.position);
        pieces_.CutTo(frame.count);
        if (frame.segments != kNoPosition) {
            pieces_.CutSegmentsTo(frame.segments);
            last_ = frame.last;
        }
        return true;
    }
    pieces_.CutToStart();
    return false;
}

// A rule that comes to itself without having read anything would do so for ever; it does not match.
bool Matcher::IsOpenHere(std::uint32_t callee, const Place& place) const {
    for (auto frame = frames_.rbegin(); frame != frames_.rend(); ++frame) {
        if (frame->position != place.position) return false;
        if (frame->callee == callee) return true;
    }
    return false;
}

void Matcher::Remember(const Frame& frame, std::size_t end) {
    if (!program_->code[frame.address - 1].remember) return;
    const std::size_t first = scanner_.SkipBlanks(frame.position);
    if (first == start_) return;  // the search goes on behind here and never asks again
    memory_->insert_or_assign({frame.callee, first}, Remembered{end, reads_ != frame.count, last_});
}

bool Matcher::Recall(const Remembered& remembered, Place& place) {
    if (remembered.readLexems) {
        last_ = remembered.last;
        ++reads_;
    }
    if (remembered.end == kNoPosition) return false;
    place = PlaceAt(remembered.end);
    return true;
}

}  // namespace helpers::scripting
