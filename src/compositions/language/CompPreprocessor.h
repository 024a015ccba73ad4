#pragma once

// Turns a script's bytes into the text that is read: comments go, from ";" to the end of the line
// and the line feed with it, strings or not, and each byte becomes a character by sign extension to
// 16 bits (0xE9 gives 0xFFE9; no code page). A blank goes before the end, unless a comment swallows
// it, and a zero is the end. Stateless; any thread.

#include <ostream>
#include <string>
#include <string_view>

#include "helpers/scripting/ScriptFile.h"

namespace compositions {

class CompPreprocessor {
public:
    static constexpr const char* kTypeName = "class compositions::CompPreprocessor";

    using File = helpers::scripting::ScriptFile<std::wstring>;

    // Writes the file's text, which is the zero alone where the file has no buffer; false when
    // writing raised an exception, which goes no further.
    bool preprocess(const File& file, std::wostream& out) const;
    // Makes `text` the text of the bytes. True; a lack of memory throws and leaves it empty.
    bool preprocess(std::string_view bytes, std::wstring& text) const;
};

}  // namespace compositions
