#pragma once

// Effects that the tests of the interface work on.

#include <cstdint>
#include <string>
#include <vector>

#include "sdk/EffectBase.h"

namespace test {

// Every typed form and a raw one, with ranges and defaults; "Hidden" is write-only, "Fixed"
// read-only.
class FormsEffect : public fx::EffectBase {
public:
    FormsEffect() : EffectBase(L"Forms\\Test", 0x84, 3) {
        Bind(L"Int", integer, {.defaultValue = 3, .range = std::pair(-10, 10)});
        Bind(L"Float", number, {.defaultValue = 0.5f, .range = std::pair(0.0f, 1.0f)});
        Bind(L"Bool", flag, {.defaultValue = true});
        Bind(L"Int64", wide,
             {.defaultValue = 1LL << 33,
              .range = std::pair<std::int64_t, std::int64_t>(0, 1LL << 40)});
        Bind(L"String", text, {.defaultValue = L"default"});
        BindRaw(L"Raw", bytes, sizeof bytes);
        Bind(L"Hidden", hidden, {.defaultValue = 1, .access = base_types::eAccessWrite});
        Bind(L"Fixed", fixed, {.defaultValue = 2, .access = base_types::eAccessRead});
    }

    using fx::EffectBase::SetValid;

    std::int32_t integer = 0;
    float number = 0;
    bool flag = false;
    std::int64_t wide = 0;
    std::wstring text;
    unsigned char bytes[6] = {1, 2, 3, 4, 5, 6};
    std::int32_t hidden = 0;
    std::int32_t fixed = 0;
};

}  // namespace test
