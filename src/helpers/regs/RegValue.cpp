#include "helpers/regs/RegValue.h"

#include <vector>

namespace helpers::regs {

bool RegValue<std::wstring, StringConverter>::Read(platform::SettingsKey key) {
    std::uint8_t probe[4];
    std::uint32_t size = 0;
    // Only a value that has more than no bytes is there: an empty one reads as absent.
    if (platform::QuerySettingsValue(key, name_, probe, size) !=
        platform::SettingsResult::kMoreData) {
        return false;
    }
    std::vector<std::uint8_t> bytes(size);
    if (platform::QuerySettingsValue(key, name_, bytes.data(), size) !=
        platform::SettingsResult::kOk) {
        return false;
    }
    try {
        std::wstring text = StringConverter::Convert(bytes.data(), size);
        if (text.empty()) return false;  // nothing but terminators
        value_ = std::move(text);
        return true;
    } catch (const StringConverter::Exception&) {
        return false;
    }
}

}  // namespace helpers::regs
