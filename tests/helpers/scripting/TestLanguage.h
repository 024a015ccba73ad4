#pragma once

// A language for tests: no comments, every byte a character, nothing defined beforehand.

#include <string>
#include <string_view>
#include <vector>

#include "helpers/scripting/Interpreter.h"

namespace test_language {

struct Preprocessor {
    static constexpr const char* kTypeName = "class test_language::Preprocessor";

    bool preprocess(std::string_view bytes, std::wstring& text) const {
        text.clear();
        for (const char byte : bytes) text += static_cast<unsigned char>(byte);
        return true;
    }
};

using File = helpers::scripting::ScriptFile<std::wstring>;
using TestScript = helpers::scripting::Script<Preprocessor, File, std::wstring>;
using TestInterpreter = helpers::scripting::Interpreter<Preprocessor, File, std::wstring>;
using Strings = std::vector<std::wstring>;

}  // namespace test_language
