#pragma once

// The composition language: its lexems and its grammar.

#include <memory>

#include "helpers/scripting/ScriptCore.h"

namespace compositions {

// The 17 lexem kinds and 40 rules, built by the first caller and shared by all. Any thread; lives
// until the process ends.
const std::shared_ptr<const helpers::scripting::Language>& CompositionLanguage();

}  // namespace compositions
