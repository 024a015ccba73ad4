#include "helpers/scripting/Matcher.h"

#include "helpers/scripting/AsciiCase.h"
#include "helpers/scripting/ShortTexts.h"
#include "platform/CharacterCase.h"

namespace helpers::scripting {
namespace {

// There is nowhere to go on from it: for what fails after it has read something.
const Instruction kDeadEnd{};

// `keyword` is upper case. A lexem with a zero in it equals none.
bool EqualsInUpperCase(std::wstring_view lexem, const std::wstring& keyword) {
    for (std::size_t index = 0; index < lexem.size(); ++index) {
        if (lexem[index] == 0) return false;
        if (!IsAscii(lexem[index])) {
            std::wstring upper(lexem);
            if (upper.find(L'\0') != upper.npos) return false;
            platform::ToUpperCase(upper.data(), upper.size());
            return upper == keyword;
        }
        if (UpperAscii(lexem[index]) != keyword[index]) return false;
    }
    return true;
}

// Most are written as the keyword is. No zero is in a plain keyword.
inline bool EqualsKeyword(std::wstring_view lexem, const Keyword& keyword) {
    if (lexem.size() != keyword.text.size()) return false;
    return (keyword.isPlain && AreSame(lexem, keyword.text)) ||
           EqualsInUpperCase(lexem, keyword.text);
}

}  // namespace

bool Matcher::MatchLexem(const CompiledLexem& lexem, std::size_t& position, Pieces& pieces) {
    const std::size_t begin = PlaceAt(position).first;
    const std::size_t end = scanner_.FindEnd(lexem, begin);
    pieces_.Start(pieces, 0);
    if (end == kNoPosition) return false;
    last_ = {begin, end, lexem.kind};
    pieces_.Add({scanner_.Text().data() + begin, end - begin});
    position = end;
    return true;
}

// Every position is tried in turn, but where no match can begin.
bool Matcher::Find(const Program& program, const Entry& entry, std::size_t& position, bool peek,
                   Report report) {
    const std::wstring_view text = scanner_.Text();
    if (position >= text.size()) return false;
    const Forgetting forgetting{memory_};
    if (entry.recursive && !program.mayReport && !program.mayLoop) {
        memory_ = std::make_unique<Memory>();
    } else if (entry.beforeKeyword != nullptr && !program.mayReport) {
        return FindKeyword(program, entry, position, peek, report);
    }
    for (std::size_t from = position; from < text.size(); ++from) {
        if (!program.mayReport) from = scanner_.FindCandidate(entry, from);
        if (from == kNoPosition) return false;
        if (MatchFound(program, entry, from, position, peek, report)) return true;
    }
    return false;
}

// The first letter of the keyword spares most candidates; the last of them is read all the same,
// for the sake of the last lexem.
bool Matcher::FindKeyword(const Program& program, const Entry& entry, std::size_t& position,
                          bool peek, Report report) {
    std::size_t passedOver = kNoPosition;  // the last candidate, unless it was read
    for (const Candidate& candidate : scanner_.FindCandidates(entry, position)) {
        if (candidate.behind != entry.keywordFirst && IsAscii(candidate.behind)) {
            passedOver = candidate.position;
            continue;
        }
        passedOver = kNoPosition;
        if (MatchFound(program, entry, candidate.position, position, peek, report)) return true;
    }
    if (passedOver != kNoPosition) {
        Pieces pieces;
        Match(entry, passedOver, pieces, 0, report);
    }
    return false;
}

// Blanks before a match belong to it, so the position where it began is that of the first of them.
bool Matcher::MatchFound(const Program& program, const Entry& entry, std::size_t from,
                         std::size_t& position, bool peek, Report report) {
    Pieces pieces;
    std::size_t end = from;
    Start(pieces, 0, report);
    const bool matches = memory_ ? Run<true>(entry.begin, end) : Run<false>(entry.begin, end);
    if (!matches) return false;
    if (peek) {
        while (from > position && program.blanks.Has(scanner_.Text()[from - 1])) --from;
        end = from;
    }
    position = end;
    return true;
}

// A search that remembers wants no pieces.
template <bool kRemembers>
bool Matcher::Run(const Instruction* at, std::size_t& position) {
    Place place = PlaceAt(position);
    start_ = place.first;
    for (;;) {
        switch (at->operation) {
            case Operation::kMark:
                if (!ReadMark<kRemembers>(*at, place)) [[unlikely]]
                    break;
                at = at->next;
                // What stands between quotes is the commonest of all: that spares looking it up.
                if (at->operation != Operation::kUntilMark) continue;
                [[fallthrough]];
            case Operation::kUntilMark:
                if (!ReadWord<kRemembers>(*at, EndOfUntil(*at, place), place)) [[unlikely]]
                    break;
                at = ReadMarkBehind<kRemembers>(*at, place) ? at->next : &kDeadEnd;
                continue;
            case Operation::kWord:
                if (!ReadWord<kRemembers>(*at, EndOfWord(*at, place), place)) [[unlikely]]
                    break;
                at = at->next;
                continue;
            case Operation::kUntil:
                if (!ReadWord<kRemembers>(*at, EndOfUntil(*at, place), place)) [[unlikely]]
                    break;
                at = at->next;
                continue;
            case Operation::kWordMark:
                if (!ReadWord<kRemembers>(*at, EndOfWord(*at, place), place)) [[unlikely]]
                    break;
                at = ReadMarkBehind<kRemembers>(*at, place) ? at->next : &kDeadEnd;
                continue;
            case Operation::kKeyword:
                if (!ReadKeyword<kRemembers>(*at, place)) [[unlikely]]
                    break;
                at = at->next;
                continue;
            case Operation::kLexem:
                if (!ReadLexem<kRemembers>(*at, *at->lexem, nullptr, place)) [[unlikely]]
                    break;
                at = at->next;
                continue;
            case Operation::kLexemWord:
                if (!ReadLexem<kRemembers>(*at, *at->keyword->lexem, at->keyword, place))
                    [[unlikely]]
                    break;
                at = at->next;
                continue;
            case Operation::kCall:
                if (kRemembers && at->remember && Recall(*at, place)) {
                    if (resumePlace_.position == kNoPosition) {
                        at = &kDeadEnd;
                        break;
                    }
                    place = resumePlace_;
                    at = at->next;
                } else if (Call<kRemembers>(*at, place)) {
                    at = at->other;
                } else {
                    at = &kDeadEnd;
                    break;
                }
                continue;
            case Operation::kReturn:
                at = Return<kRemembers>(place);
                continue;
            case Operation::kTest:
                if (!StandsAt(place, *at->first)) break;
                at = at->next;
                continue;
            case Operation::kChoice:
                if (at->first != nullptr && !StandsAt(place, *at->first)) break;
                Choose(*at, place);
                at = at->next;
                continue;
            case Operation::kCommit:
                frames_.pop_back();
                if (at->rereads) rereads_.pop_back();
                at = at->next;
                continue;
            case Operation::kAddEmpty:
                pieces_.Add({});
                at = at->next;
                continue;
            case Operation::kCheckJoin:
                if (pieces_.Count() == 0) report_(kJoinWithoutPieceLine);
                at = at->next;
                continue;
            case Operation::kReport:
                report_(static_cast<int>(at->number));
                at = at->next;
                continue;
            case Operation::kFail:
                break;
            case Operation::kMatched:
                position = place.position;
                return true;
        }
        at = at->other;
        if (at != nullptr) continue;
        if (!Backtrack()) return false;
        at = resumeAt_;
        place = resumePlace_;
    }
}

inline std::size_t Matcher::EndOfWord(const Instruction& instruction, Place place) {
    return scanner_.EndOfWord(*instruction.lexem, place.first);
}

inline std::size_t Matcher::EndOfUntil(const Instruction& instruction, Place place) {
    return scanner_.EndOfUntil(*instruction.lexem, place.first);
}

template <bool kRemembers>
inline bool Matcher::ReadMark(const Instruction& instruction, Place& place) {
    const std::size_t begin = place.first;
    if (!ReadMarkBehind<kRemembers>(instruction, place)) return false;
    if (!kRemembers && instruction.store) Store(instruction, {scanner_.Text().data() + begin, 1});
    return true;
}

template <bool kRemembers>
inline bool Matcher::ReadMarkBehind(const Instruction& instruction, Place& place) {
    const std::size_t begin = place.first;
    if (scanner_.Text().data()[begin] != instruction.mark) return false;
    last_ = {begin, begin + 1, instruction.markKind};
    if (kRemembers) ++reads_;
    place = {begin + 1, scanner_.SkipBlanks(begin + 1)};
    return true;
}

// `end`: where the lexem ends, or kNoPosition.
template <bool kRemembers>
inline bool Matcher::ReadWord(const Instruction& instruction, std::size_t end, Place& place) {
    const std::size_t begin = place.first;
    if (end == kNoPosition) return false;
    last_ = {begin, end, instruction.number};
    if (kRemembers) {
        ++reads_;
    } else if (instruction.store) {
        Store(instruction, {scanner_.Text().data() + begin, end - begin});
    }
    place = {end, scanner_.SkipBlanks(end)};
    return true;
}

template <bool kRemembers>
inline bool Matcher::ReadKeyword(const Instruction& instruction, Place& place) {
    const std::size_t begin = place.first;
    const Keyword& keyword = *instruction.keyword;
    const std::size_t end = scanner_.EndOfWord(*keyword.lexem, begin);
    if (end == kNoPosition) return false;
    last_ = {begin, end, instruction.number};
    if (kRemembers) ++reads_;
    const std::wstring_view lexem(scanner_.Text().data() + begin, end - begin);
    if (!EqualsKeyword(lexem, keyword)) return false;
    if (!kRemembers && instruction.store) Store(instruction, lexem);
    place = {end, scanner_.SkipBlanks(end)};
    return true;
}

template <bool kRemembers>
inline bool Matcher::ReadLexem(const Instruction& instruction, const CompiledLexem& lexem,
                               const Keyword* keyword, Place& place) {
    if (place.first == scanner_.End()) return false;
    LexemSpan span;
    if (scanner_.Read(lexem, place.first, span) != LexemOutcome::kRead) return false;
    last_ = {span.begin, span.begin + span.length, instruction.number};
    if (kRemembers) ++reads_;
    // One that begins behind its first character may lie behind the text's end.
    const std::wstring_view text = scanner_.Text().substr(span.begin, span.length);
    if (keyword != nullptr && !EqualsKeyword(text, *keyword)) return false;
    if (!kRemembers && instruction.store) Store(instruction, text);
    place = PlaceAt(span.next);
    return true;
}

inline void Matcher::Store(const Instruction& instruction, std::wstring_view lexem) {
    if (instruction.append) [[unlikely]] {
        pieces_.Append(lexem);
    } else {
        pieces_.Add(lexem);
    }
}

// False when the rule does not match here.
template <bool kRemembers>
inline bool Matcher::Call(const Instruction& call, Place place) {
    if (call.mayLoop && IsOpenHere(call.number, place)) return false;
    if (call.tail && !call.mayLoop && !kRemembers) return true;
    frames_.push_back({&call, call.number, reads_, place});
    return true;
}

// Where to go on behind the call that the rule belongs to.
template <bool kRemembers>
inline const Instruction* Matcher::Return(Place place) {
    const Frame& frame = frames_.back();
    const Instruction* const next = frame.opened->next;
    if (kRemembers) Remember(frame, place.position);
    frames_.pop_back();
    return next;
}

// At the text's end it is the zero behind it that stands there, which no lexem can begin with: at
// worst, what is gone into fails at once.
inline bool Matcher::StandsAt(Place place, const CharacterSet& set) const {
    return set.Has(scanner_.Text().data()[place.first]);
}

inline void Matcher::Choose(const Instruction& choice, Place place) {
    frames_.push_back({&choice, choice.rereads ? kRereadingChoice : kPlainChoice,
                       static_cast<std::uint32_t>(pieces_.Count()), place});
    if (choice.rereads) rereads_.push_back({pieces_.Save(), last_});
}

// Goes back to the last open choice; false when there is none.
bool Matcher::Backtrack() {
    while (!frames_.empty()) {
        const Frame frame = frames_.back();
        frames_.pop_back();
        if (frame.callee < kRereadingChoice) {
            if (memory_) Remember(frame, kNoPosition);
            continue;
        }
        resumeAt_ = frame.opened->other;
        resumePlace_ = frame.place;
        if (frame.callee == kRereadingChoice) {
            pieces_.CutTo(frame.count, rereads_.back().pieces);
            last_ = rereads_.back().last;
            rereads_.pop_back();
        } else {
            pieces_.CutTo(frame.count);
        }
        return true;
    }
    pieces_.CutToStart();
    return false;
}

// A rule that comes to itself without having read anything would do so for ever; it does not match.
bool Matcher::IsOpenHere(std::uint32_t callee, Place place) const {
    for (std::size_t index = frames_.size(); index-- > 0;) {
        if (frames_[index].place.position != place.position) return false;
        if (frames_[index].callee == callee) return true;
    }
    return false;
}

void Matcher::Remember(const Frame& frame, std::size_t end) {
    if (!frame.opened->remember) return;
    const std::size_t first = frame.place.first;
    if (first == start_) return;  // the search goes on behind here and never asks again
    memory_->insert_or_assign({frame.callee, first}, Remembered{end, reads_ != frame.count, last_});
}

// Whether it is known what the call comes to here; where then, is in resumePlace_.
bool Matcher::Recall(const Instruction& call, Place place) {
    const auto found = memory_->find({call.number, place.first});
    if (found == memory_->end()) return false;
    const Remembered& remembered = found->second;
    if (remembered.readLexems) {
        last_ = remembered.last;
        ++reads_;
    }
    const bool matches = remembered.end != kNoPosition;
    resumePlace_ = matches ? PlaceAt(remembered.end) : Place{kNoPosition, scanner_.End()};
    return true;
}

}  // namespace helpers::scripting
