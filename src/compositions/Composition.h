#pragma once

// The effect that stands for a composition: its identity comes from the description, its properties
// live in the inherited property set, which starts empty. Property operations from any thread;
// caller serialises the rest.

#include <memory>
#include <utility>

#include "compositions/ICompositionReader.h"
#include "fx/EffectDescriptor.h"
#include "sdk/PropertyEffect.h"

namespace compositions {

class Composition final : public fx::PropertyEffect {
public:
    // Keeps the description alive. Reads its identity and nothing else: no properties and no inner
    // effects are made. Throws what the reader throws, and std::bad_alloc.
    explicit Composition(std::shared_ptr<ICompositionReader> reader);
    ~Composition() override = default;

    /* 25 */ const fx::EffectDescriptor* GetDescriptor() override { return &descriptor_; }

    // For an engine that completes the composition (see ICompositionEngine); nobody else calls
    // these. Properties are added with AddProperty.
    const ICompositionReader& Description() const { return *reader_; }
    // What IsValid answers from now on; false until somebody says otherwise.
    using base_types::Validator::SetValid;
    // Keeps the engine's own state, inner effects for example, until the composition goes; it is
    // released before the description and the properties.
    void Attach(std::shared_ptr<void> state) { attached_ = std::move(state); }

private:
    std::shared_ptr<ICompositionReader> reader_;
    fx::EffectDescriptor descriptor_;
    std::shared_ptr<void> attached_;
};

}  // namespace compositions
