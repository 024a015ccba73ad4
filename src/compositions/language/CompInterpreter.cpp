#include "compositions/language/CompInterpreter.h"

#include "compositions/language/CompLanguage.h"

namespace compositions {

CompInterpreter::CompInterpreter(const CompScriptFile& file)
    : Interpreter(file, CompositionLanguage()) {}

CompInterpreter::CompInterpreter(std::string_view bytes)
    : Interpreter(bytes, CompositionLanguage()) {}

}  // namespace compositions
