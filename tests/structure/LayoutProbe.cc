// Not part of any program: a compiler reads it and prints the tables of virtual operations. Each
// constructor makes it lay the class out.

#include "base_types/IPropertySet.h"
#include "base_types/IValidator.h"
#include "compositions/CompositionFactory.h"
#include "compositions/ICompositionReader.h"
#include "fx/IBaseFX.h"
#include "fx/IVorelFXFactory.h"
#include "sdk/Property.h"
#include "sdk/PropertyEffect.h"
#include "sdk/PropertySet.h"
#include "tarnex/GlobalFxFactory.h"
#include "tarnex/IEffectsEnumerator.h"
#include "tarnex/ITarnex.h"

#define PROBE(Name, Base) \
    struct Name : Base {  \
        Name();           \
    };                    \
    Name::Name()

PROBE(PropertiesProbe, base_types::IPropertySet) {}
PROBE(ValidatorProbe, base_types::IValidator) {}
PROBE(PropertyProbe, base_types::Property) : Property({}, nullptr) {}
PROBE(PropertySetProbe, base_types::PropertySet) {}
PROBE(EffectProbe, fx::IBaseFX) {}
PROBE(PropertyEffectProbe, fx::PropertyEffect) {}
PROBE(FactoryProbe, fx::IVorelFXFactory) {}
PROBE(ManagerProbe, tarnex::ITarnex) {}
PROBE(EnumeratorProbe, tarnex::IEffectsEnumerator) {}
PROBE(GlobalFactoryProbe, tarnex::GlobalFXFactory) : GlobalFXFactory({}, {}, {}, 0) {}
PROBE(ReaderProbe, compositions::ICompositionReader) {}
PROBE(CompositionFactoryProbe, compositions::CompositionFactory) : CompositionFactory({}) {}
