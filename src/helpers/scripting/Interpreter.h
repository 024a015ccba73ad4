#pragma once

// A script with a grammar: rules are matched at the position, or looked for further on. No text
// throws, and none costs more than its length, or needs more than a small stack. For one thread at
// a time; interpreters share nothing that changes.

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "helpers/scripting/Script.h"

namespace helpers::scripting {

template <class Preprocessor, class File, class String>
class Interpreter : public Script<Preprocessor, File, String> {
public:
    using Script<Preprocessor, File, String>::Script;

    // Enters a rule; false, and nothing changed, when the number is taken by a rule or a lexem.
    bool add_rule(std::uint32_t number, const GrammarNode& node) {
        return this->AddRule(number, node);
    }

    // Matches a rule, or reads a lexem kind, at the position. `out` is cleared first, and holds
    // the stored pieces after a match, with the position behind it. On failure, and a lack of
    // memory is one, `out` is empty and the position unchanged.
    bool get_expression(std::uint32_t rule, std::vector<String>& out) {
        return this->MatchRule(rule, out, &ReportLine);
    }
    // The same without copying the pieces; a lack of memory throws std::bad_alloc, leaves the
    // position unchanged and any pieces in `out`.
    bool get_expression(std::uint32_t rule, Pieces& out) {
        return this->MatchRule(rule, out, &ReportLine);
    }

    // Tries the rule at every character from the position on. The position comes to stand behind
    // the match, or with `peek` where the match began, blanks included; it stays when there is
    // none, and when a lack of memory throws std::bad_alloc.
    bool find_expression(std::uint32_t rule, bool peek) {
        return this->FindRule(rule, peek, &ReportLine);
    }

    // Matches any node. Adds to `out` what it stores (`store` reaches a lexem only, see
    // GrammarNode); with `append`, its first piece goes to the end of the last string of `out`,
    // where it stays even when the match fails later on. A lack of memory is a failure that adds no
    // string. Slow: the node is compiled anew each time.
    bool get_expression_lexem(const GrammarNode& node, std::vector<String>& out, bool store,
                              bool append) {
        return this->MatchNode(node, out, store, append, &ReportLine);
    }

private:
    static void ReportLine(int line) {
        const std::string name =
            OperationName<Preprocessor, File, String>("Interpreter", "get_expression_lexem");
        ReportAssertion("Common/Helpers/Interpreter", line, name.c_str());
    }
};

}  // namespace helpers::scripting
