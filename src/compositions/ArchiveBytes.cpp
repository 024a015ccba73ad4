#include "compositions/ArchiveBytes.h"

#include <algorithm>

namespace compositions {
namespace {

constexpr std::size_t kUnitBytes = 2;
// Where a wide character has 32 bits, a text is converted between its characters and 16-bit units.
constexpr bool kWideIsUnit = sizeof(wchar_t) == kUnitBytes;

std::uint16_t UnitAt(const char* units, std::uint64_t index) {
    std::uint16_t unit;
    std::memcpy(&unit, units + index * kUnitBytes, kUnitBytes);
    return unit;
}

constexpr bool IsSurrogate(std::uint32_t unit) {
    return (unit & 0xF800) == 0xD800;
}
constexpr bool IsHighSurrogate(std::uint32_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(std::uint32_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}
constexpr bool TakesTwoUnits(std::uint32_t character) {
    return character > 0xFFFF && character <= 0x10FFFF;
}

// Joins pairs of surrogates in place, and answers how many characters are left; one without a
// partner stays.
std::size_t JoinSurrogates(wchar_t* characters, std::size_t count) {
    std::size_t end = 0;
    for (std::size_t i = 0; i < count; ++i) {
        auto character = static_cast<std::uint32_t>(characters[i]);
        if (IsHighSurrogate(character) && i + 1 < count) {
            const auto next = static_cast<std::uint32_t>(characters[i + 1]);
            if (IsLowSurrogate(next)) {
                character = 0x10000 + ((character & 0x3FF) << 10) + (next & 0x3FF);
                ++i;
            }
        }
        characters[end++] = static_cast<wchar_t>(character);
    }
    return end;
}

// The number of 16-bit units that the text takes.
std::uint64_t UnitCount(std::wstring_view text) {
    std::uint64_t count = text.size();
    if constexpr (!kWideIsUnit) {
        for (const wchar_t character : text) {
            count += TakesTwoUnits(static_cast<std::uint32_t>(character)) ? 1 : 0;
        }
    }
    return count;
}

char* PutUnit(char* to, std::uint32_t unit) {
    const auto value = static_cast<std::uint16_t>(unit);
    std::memcpy(to, &value, kUnitBytes);
    return to + kUnitBytes;
}

// Writes the text's 16-bit units, `count` of them.
void Narrow(std::wstring_view text, std::uint64_t count, char* to) {
    if constexpr (kWideIsUnit) {
        if (count > 0) std::memcpy(to, text.data(), count * kUnitBytes);
        return;
    }
    if (count == text.size()) {
        for (const wchar_t character : text)
            to = PutUnit(to, static_cast<std::uint32_t>(character));
        return;
    }
    for (const wchar_t character : text) {
        const auto value = static_cast<std::uint32_t>(character);
        if (TakesTwoUnits(value)) {
            to = PutUnit(to, 0xD800 | ((value - 0x10000) >> 10 & 0x3FF));
            to = PutUnit(to, 0xDC00 | (value & 0x3FF));
        } else {
            to = PutUnit(to, value);
        }
    }
}

}  // namespace

ArchiveByteReader::Units ArchiveByteReader::TakeUnits() {
    std::uint64_t count;
    Copy(&count, sizeof count);
    if (count > Left() / kUnitBytes) RefuseCount(count);
    return {Take(count * kUnitBytes), count};
}

std::size_t ArchiveByteReader::Widen(Units units, wchar_t* to) {
    if constexpr (kWideIsUnit) {
        if (units.count > 0) std::memcpy(to, units.begin, units.count * kUnitBytes);
        return units.count;
    }
    std::uint32_t surrogates = 0;
    for (std::uint64_t i = 0; i < units.count; ++i) {
        const std::uint16_t unit = UnitAt(units.begin, i);
        surrogates |= IsSurrogate(unit) ? 1 : 0;
        to[i] = static_cast<wchar_t>(unit);
    }
    return surrogates == 0 ? units.count : JoinSurrogates(to, units.count);
}

void ArchiveByteReader::Flag(bool& value) {
    value = *Take(1) != 0;
}

void ArchiveByteReader::NameText(WideText& text) {
    Text(text);
    text.CutTo(std::min(std::wstring_view(text).find(L'\0'), text.size()));
}

std::uint64_t ArchiveByteReader::Count(std::uint64_t elementBytes, std::uint64_t promised) {
    std::uint64_t count;
    Copy(&count, sizeof count);
    const std::uint64_t room = Left() / elementBytes;
    if (promised > room || count > room - promised) RefuseCount(count);
    return count;
}

// The count was read just now.
void ArchiveByteReader::RefuseCount(std::uint64_t count) const {
    throw arch_exception({.offset = position_ - kCountBytes, .isCount = true, .count = count});
}

void ArchiveByteWriter::Text(std::wstring_view text) {
    const std::uint64_t count = UnitCount(text);
    const std::size_t begin = bytes_.size();
    bytes_.resize(begin + kTextBytes + count * kUnitBytes);
    std::memcpy(bytes_.data() + begin, &count, sizeof count);
    Narrow(text, count, bytes_.data() + begin + kTextBytes);
}

}  // namespace compositions
