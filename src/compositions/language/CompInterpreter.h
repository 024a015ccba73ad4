#pragma once

// The composition language over one script's text. For one thread at a time; several interpreters
// may be made and used by as many threads.

#include <string>
#include <string_view>

#include "compositions/language/CompPreprocessor.h"
#include "compositions/language/Symbols.h"
#include "helpers/scripting/Interpreter.h"

namespace compositions {

using CompScriptFile = helpers::scripting::ScriptFile<std::wstring>;

// What a host's file dialog calls the files of scripts; nothing here reads it.
inline constexpr const wchar_t* kScriptFileType = L"VE composition script file";

class CompInterpreter
    : public helpers::scripting::Interpreter<CompPreprocessor, CompScriptFile, std::wstring> {
public:
    explicit CompInterpreter(const CompScriptFile& file);
    // From a script's bytes in memory, which may go once this returns.
    explicit CompInterpreter(std::string_view bytes);
};

}  // namespace compositions
