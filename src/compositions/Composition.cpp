#include "compositions/Composition.h"

#include <cstdint>
#include <utility>

namespace compositions {

Composition::Composition(std::shared_ptr<ICompositionReader> reader) : reader_(std::move(reader)) {
    descriptor_.flags =
        fx::eEffectStandard | (reader_->IsFilter() ? fx::eEffectFilter : fx::eEffectMultipleInputs);
    descriptor_.inputs = static_cast<std::uint32_t>(reader_->GetNumberedInputs().size() +
                                                    reader_->GetInputs().size());
    descriptor_.id = reader_->GetName() + L'\\' + reader_->GetCategory();
}

}  // namespace compositions
