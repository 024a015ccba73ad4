#pragma once

// The effects of this library, each in a source of its own.

#include <array>
#include <cstdint>
#include <string>

#include "sdk/EffectBase.h"

namespace video {

// Softens the picture. Numbers with ranges and defaults, and a switch.
class Blur : public fx::EffectBase {
public:
    Blur();

private:
    float radius_ = 0;  // pixels
    std::int32_t passes_ = 0;
    bool keepEdges_ = false;
};

// Stretches black and white, and bends what lies between by a curve of 256 bytes. A raw property.
class Levels : public fx::EffectBase {
public:
    Levels();

private:
    float black_ = 0;
    float white_ = 0;
    float gamma_ = 0;
    std::array<unsigned char, 256> curve_{};
};

// Writes a line of text over the picture. A wide string.
class TextTitle : public fx::EffectBase {
public:
    TextTitle();

private:
    std::wstring text_;
    std::int32_t size_ = 0;  // lines
    std::int64_t colour_ = 0;
    bool shadow_ = false;
};

// Burns the time into the picture. A 64-bit number, and a text that is worked out and read-only.
class Timecode : public fx::EffectBase {
public:
    Timecode();

private:
    std::int64_t frame_ = 0;
    std::int32_t rate_ = 0;  // frames per second
};

// Cuts the borders off. A write-only property that checks what it is given.
class Crop : public fx::EffectBase {
public:
    Crop();

private:
    std::int32_t left_ = 0;  // pixels, as the other three
    std::int32_t top_ = 0;
    std::int32_t right_ = 0;
    std::int32_t bottom_ = 0;
};

}  // namespace video
