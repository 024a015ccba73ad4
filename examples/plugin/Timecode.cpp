#include <algorithm>
#include <cwchar>
#include <iterator>

#include "Effects.h"

namespace video {
namespace {

// The frame number as hours:minutes:seconds:frames, worked out whenever it is read.
class TimeText : public base_types::Property {
public:
    TimeText(const std::int64_t& frame, const std::int32_t& rate)
        : Property({sizeof(std::wstring), 0, base_types::eAccessRead, base_types::ePropertyString},
                   &text_),
          frame_(frame),
          rate_(rate) {}

    void* Value() override {
        const std::int64_t rate = std::max(rate_, 1);
        const std::int64_t frame = std::max<std::int64_t>(frame_, 0);
        const std::int64_t seconds = frame / rate;
        wchar_t text[64];
        std::swprintf(text, std::size(text), L"%02lld:%02lld:%02lld:%02lld",
                      static_cast<long long>(seconds / 3600),
                      static_cast<long long>(seconds / 60 % 60),
                      static_cast<long long>(seconds % 60), static_cast<long long>(frame % rate));
        text_ = text;
        return &text_;
    }
    void Assign(const void*) override {
        throw base_types::Exception(base_types::ePropertyNoAccessForWriting);
    }
    bool Range(void*, void*) override { return false; }
    bool Default(void*) override { return false; }

private:
    const std::int64_t& frame_;
    const std::int32_t& rate_;
    std::wstring text_;
};

}  // namespace

Timecode::Timecode() : EffectBase(L"Timecode\\Video", fx::eEffectStandard | fx::eEffectFilter, 1) {
    Bind(L"Frame", frame_,
         {.defaultValue = 0, .range = std::pair<std::int64_t, std::int64_t>(0, INT64_MAX)});
    Bind(L"Rate", rate_, {.defaultValue = 25, .range = std::pair(1, 240)});
    AddProperty(L"Text", std::make_unique<TimeText>(frame_, rate_));
}

}  // namespace video
