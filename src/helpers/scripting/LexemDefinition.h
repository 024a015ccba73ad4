#pragma once

// How lexems of one kind are cut from a text.

#include <cstdint>
#include <string>

namespace helpers::scripting {

struct LexemDefinition {
    std::uint32_t kind = 0;
    std::wstring start_set;  // a lexem begins with one of these; its body is not checked
    std::wstring stop_set;   // and ends before the next of these, the first character included
    bool keep_first = true;  // the first character belongs to the lexem
    bool keep_stop = false;  // the stop character belongs to the lexem
    bool skip_stop = false;  // the stop character is consumed although not kept
};

}  // namespace helpers::scripting
