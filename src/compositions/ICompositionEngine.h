#pragma once

namespace compositions {

class Composition;

// What a rendering engine does to compositions that the library leaves open: filling the property
// set from the description, building the inner effects. An engine that is built together with the
// library gives it to CompositionFactory::SetDefaultEngine. Called on the thread that creates the
// composition.
class ICompositionEngine {
public:
    virtual ~ICompositionEngine() = default;

    // Completes a composition that was just made and that nobody else has seen. An exception undoes
    // the creation, which then answers fx::eCouldNotCreateFX. May create other effects, from the
    // same factory too.
    virtual void Complete(Composition& composition) = 0;
};

}  // namespace compositions
