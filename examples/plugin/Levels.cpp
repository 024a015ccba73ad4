#include "Effects.h"

namespace video {

Levels::Levels() : EffectBase(L"Levels\\Video", fx::eEffectStandard | fx::eEffectFilter, 1) {
    Bind(L"Black", black_, {.defaultValue = 0.0f, .range = std::pair(0.0f, 1.0f)});
    Bind(L"White", white_, {.defaultValue = 1.0f, .range = std::pair(0.0f, 1.0f)});
    Bind(L"Gamma", gamma_, {.defaultValue = 1.0f, .range = std::pair(0.1f, 10.0f)});
    for (std::size_t i = 0; i < curve_.size(); ++i) {
        curve_[i] = static_cast<unsigned char>(i);
    }
    BindRaw(L"Curve", curve_.data(), static_cast<std::int32_t>(curve_.size()));
}

}  // namespace video
