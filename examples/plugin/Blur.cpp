#include "Effects.h"

namespace video {

Blur::Blur() : EffectBase(L"Blur\\Video", fx::eEffectStandard | fx::eEffectFilter, 1) {
    Bind(L"Radius", radius_, {.defaultValue = 4.0f, .range = std::pair(0.0f, 100.0f)});
    Bind(L"Passes", passes_, {.defaultValue = 1, .range = std::pair(1, 16)});
    Bind(L"KeepEdges", keepEdges_, {.defaultValue = false});
}

}  // namespace video
