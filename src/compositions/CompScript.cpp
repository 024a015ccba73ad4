#include "compositions/CompScript.h"

#include <utility>

namespace compositions {

CompositionScript::CompositionScript(CompositionDescription description, std::int32_t readStatus)
    : readStatus_(readStatus), description_(std::move(description)) {}

}  // namespace compositions
