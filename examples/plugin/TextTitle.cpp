#include "Effects.h"

namespace video {

TextTitle::TextTitle()
    : EffectBase(L"TextTitle\\Video", fx::eEffectStandard | fx::eEffectFilter, 1) {
    Bind(L"Text", text_, {.defaultValue = L"Title"});
    Bind(L"Size", size_, {.defaultValue = 48, .range = std::pair(4, 1000)});
    Bind(L"Colour", colour_, {.defaultValue = 0xFFFFFFFF});
    Bind(L"Shadow", shadow_, {.defaultValue = true});
}

}  // namespace video
