#include "check/EndCauses.h"

#include <algorithm>

#include "compositions/language/ScriptCharacters.h"
#include "compositions/language/Symbols.h"

namespace tarnexctl {
namespace {

using namespace compositions;

bool Holds(std::wstring_view set, wchar_t character) {
    return set.find(character) != std::wstring_view::npos;
}

class Cause {
public:
    Cause(const Subject& subject, const SectionStop& stop, const std::vector<std::string>& notRead,
          Diagnostics& diagnostics)
        : subject_(subject),
          stop_(stop),
          notRead_(notRead),
          diagnostics_(diagnostics),
          text_(subject.Text()) {}

    bool Add() {
        return AddOpenText() || AddTextStart() || AddNumber() || AddRegisterBlock() ||
               AddLastKey() || AddEarlyKey();
    }

private:
    wchar_t At(std::size_t position) const {
        return position < text_.size() ? text_[position] : L'\0';
    }
    // The last character in front of the position that is no blank; its own position.
    std::size_t Before(std::size_t position) const {
        if (position == 0) return text_.npos;
        return text_.find_last_not_of(characters::kBlanks, position - 1);
    }
    // The position of a character in front of another one.
    std::size_t Back(wchar_t character, std::size_t from) const {
        const std::size_t found = from == text_.npos ? from : text_.rfind(character, from);
        return found == text_.npos ? stop_.begin : found;
    }

    bool Say(const char* code, std::size_t begin, std::size_t end, const std::string& message,
             std::vector<std::string> help = {}) {
        help.push_back(std::string(SectionKeyword(stop_.section)) + " ends here");
        help.insert(help.end(), notRead_.begin(), notRead_.end());
        diagnostics_.Add(code, subject_.RangeOf(begin, end), message, help);
        return true;
    }

    // A text that runs over a line end, in the statement in front or from here on: the next text's
    // first quote closed it.
    bool AddOpenText() {
        const bool atBody = stop_.furthest.Expects(LxStringBody);
        if (atBody && Holds(characters::kStringStart, At(stop_.begin))) {
            const std::size_t quote = Back(L'"', Before(stop_.begin));
            return Say("C303", quote, quote + 1, "this text has no closing quote");
        }
        const bool behindQuote = stop_.position > 0 && text_[stop_.position - 1] == L'"';
        if (stop_.previous == nullptr || !behindQuote) return false;
        for (const std::wstring_view piece : subject_.Record().Pieces(*stop_.previous)) {
            if (piece.find(L'\n') == piece.npos) continue;
            const auto begin = static_cast<std::size_t>(piece.data() - text_.data());
            const std::size_t quote = Back(L'"', begin);
            const std::size_t lineEnd = text_.find_first_of(L"\r\n", quote);
            return Say("C303", quote, lineEnd, "this text has no closing quote on its line",
                       {"it ends at the next quote, on a later line"});
        }
        return false;
    }

    bool AddTextStart() {
        if (!stop_.furthest.Expects(LxStringBody)) return false;
        std::size_t end = stop_.begin + 1;  // of the whole character, in UTF-8
        while ((At(end) & 0xC0) == 0x80) ++end;
        return Say(
            "C302", stop_.begin, end,
            "a text cannot start with " + Quoted(text_.substr(stop_.begin, end - stop_.begin)),
            {"it starts with a letter, a digit or one of []=:\\.(){},-%"});
    }

    bool AddNumber() {
        const wchar_t found = At(stop_.begin);
        if (stop_.furthest.Expects(LxDigits) && (found == L'+' || found == L'.')) {
            return Say(
                "C306", stop_.begin, stop_.end + (found == L'.' ? 1 : 0),
                found == L'+' ? "a number takes no \"+\"" : "a number starts with a digit",
                {found == L'+' ? "leave the \"+\" out" : "put a 0 in front of the full stop"});
        }
        const std::wstring_view digits = characters::kDigits;
        const bool betweenDigits = stop_.begin > 0 && Holds(digits, At(stop_.begin - 1)) &&
                                   Holds(digits, At(stop_.begin + 1));
        if (found == L',' && betweenDigits && stop_.begin == stop_.position) {
            return Say("C306", stop_.begin, stop_.end, "a fraction stands behind a full stop");
        }
        const bool wantsWhole =
            stop_.previous && (stop_.previous->rule == R56 || stop_.previous->rule == R57);
        if (found != L'.' || !wantsWhole || stop_.begin != stop_.position) return false;
        return Say("C306", stop_.begin, stop_.end, "only a whole number can stand here");
    }

    bool AddRegisterBlock() {
        if (stop_.section != Section::kSetup || At(stop_.position) != L'%') return false;
        if (stop_.furthest.Expects(LxComma) && At(stop_.begin) == L'}') {
            return Say("C307", stop_.begin, stop_.end, "a register block of one text",
                       {"it takes two texts or three: a key, a value's name, perhaps a default"});
        }
        if (!stop_.furthest.Expects(LxCloseBrace) || At(stop_.begin) != L',') return false;
        return Say("C307", stop_.begin, stop_.end, "a register block of more than three texts",
                   {"it takes two texts or three: a key, a value's name, perhaps a default"});
    }

    // The keys match one by one, and then a comma and another key are asked for.
    bool AddLastKey() {
        const std::size_t close = Before(stop_.begin);
        const bool behindKey = stop_.section == Section::kEnvelopes &&
                               stop_.begin > stop_.position && close != text_.npos &&
                               text_[close] == L'}' && stop_.furthest.Expects(LxComma);
        if (!behindKey) return false;
        const std::size_t open = Back(L'{', close);
        if (text_.substr(open, close - open).find(L',') == text_.npos) return false;
        return Say("C308", open, close + 1, "the last key has a value",
                   {"the last key always stands for 1.0: write {time, KIND}"});
    }

    // The first key without a value ends its statement.
    bool AddEarlyKey() {
        const bool behindEnvelope = stop_.section == Section::kEnvelopes && stop_.previous &&
                                    stop_.previous->rule == R52 && At(stop_.position) == L',';
        if (!behindEnvelope) return false;
        const std::size_t close = Before(stop_.position);
        return Say("C309", Back(L'{', close), close + 1,
                   "a key without a value, and it is not the last",
                   {"only the last key has none: write {time, value, KIND}"});
    }

    const Subject& subject_;
    const SectionStop& stop_;
    const std::vector<std::string>& notRead_;
    Diagnostics& diagnostics_;
    const std::wstring_view text_;
};

}  // namespace

bool AddCause(const Subject& subject, const SectionStop& stop,
              const std::vector<std::string>& notRead, Diagnostics& diagnostics) {
    return Cause(subject, stop, notRead, diagnostics).Add();
}

void AddTrouble(const CommentTrouble& trouble, const std::vector<std::string>& help,
                Diagnostics& diagnostics) {
    std::vector<std::string> lines;
    if (trouble.kind == CommentTrouble::Kind::kWithinText) {
        lines.push_back("there is no way to write a \";\" in a text");
        lines.insert(lines.end(), help.begin(), help.end());
        diagnostics.Add("C304", trouble.range, "the \";\" starts a comment, within a text too",
                        lines);
        return;
    }
    lines.push_back("put a blank in front of the \";\"");
    lines.insert(lines.end(), help.begin(), help.end());
    diagnostics.Add("C305", trouble.range,
                    "the comment takes the line end with it: the words around it become one",
                    lines);
}

bool WantsQuotes(const FurthestMatch& furthest, std::wstring_view found) {
    return furthest.Expects(LxQuote) && !found.empty() &&
           Holds(characters::kIdentStart, found.front());
}

}  // namespace tarnexctl
