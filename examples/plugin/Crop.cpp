#include "Effects.h"

namespace video {
namespace {

// Takes one number for all four borders, and no negative one.
class AllBorders : public base_types::TypedProperty<std::int32_t> {
public:
    explicit AllBorders(std::array<std::int32_t*, 4> borders)
        : TypedProperty({.range = std::pair(0, 4096), .access = base_types::eAccessWrite}),
          borders_(borders) {}

    void Assign(const void* value) override {
        const std::int32_t pixels = *static_cast<const std::int32_t*>(value);
        if (pixels < 0 || pixels > 4096) {
            throw base_types::Exception(base_types::eOutOfRange);
        }
        TypedProperty::Assign(value);
        for (std::int32_t* border : borders_) {
            *border = pixels;
        }
    }

private:
    std::array<std::int32_t*, 4> borders_;
};

}  // namespace

Crop::Crop() : EffectBase(L"Crop\\Video", fx::eEffectStandard | fx::eEffectFilter, 1) {
    const base_types::PropertyOptions<std::int32_t> border = {.defaultValue = 0,
                                                              .range = std::pair(0, 4096)};
    Bind(L"Left", left_, border);
    Bind(L"Top", top_, border);
    Bind(L"Right", right_, border);
    Bind(L"Bottom", bottom_, border);
    AddProperty(L"All", std::make_unique<AllBorders>(
                            std::array<std::int32_t*, 4>{&left_, &top_, &right_, &bottom_}));
}

}  // namespace video
