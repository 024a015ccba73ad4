#include "compositions/CompositionEntry.h"

#include <utility>

#include "compositions/ICompositionReader.h"

namespace compositions {

CompositionEntry::CompositionEntry(std::shared_ptr<ICompositionReader> description)
    : reader(std::move(description)),
      name(reader->GetName()),
      category(reader->GetCategory()),
      inputs(reader->GetInputs().size()) {}

}  // namespace compositions
