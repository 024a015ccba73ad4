#pragma once

// The primitive encodings of an archive's body: a reader and a writer over bytes in memory with the
// same operations, so that one routine per container serves both directions. Integers are
// little-endian, texts are 16-bit units behind their number. Caller serialises.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compositions/ArchiveException.h"
#include "compositions/UpperName.h"
#include "compositions/WideText.h"

namespace compositions {

static_assert(std::endian::native == std::endian::little, "values are copied as they stand");

// The fewest bytes that each encoding takes: what a count is checked against.
inline constexpr std::uint64_t kNumberBytes = 4;
inline constexpr std::uint64_t kCountBytes = 8;
inline constexpr std::uint64_t kTextBytes = kCountBytes;

// Every operation throws arch_exception when the bytes do not suffice. No count or length is
// believed before as many bytes are there.
class ArchiveByteReader {
public:
    static constexpr bool kLoading = true;

    // The bytes, and the list that each field's offset goes to, must outlive the reader.
    explicit ArchiveByteReader(std::string_view bytes, std::vector<std::uint64_t>* fields = nullptr)
        : bytes_(bytes), fields_(fields) {}

    // Bytes that are still to be read.
    std::uint64_t Left() const { return bytes_.size() - position_; }

    // The body's next field begins here.
    ArchiveByteReader& Field() {
        if (fields_ != nullptr) fields_->push_back(position_);
        return *this;
    }

    void Number(std::uint32_t& value) { Copy(&value, sizeof value); }
    void Number(std::int32_t& value) { Copy(&value, sizeof value); }
    void Flag(bool& value);
    template <std::size_t kBytesInPlace>
    void Text(BasicWideText<kBytesInPlace>& text) {
        const Units units = TakeUnits();
        text.CutTo(Widen(units, text.Renew(units.count)));
    }
    // Cut at its first zero character; the case stays.
    void Name(UpperName& name) {
        name.WriteVerbatim([this](WideText& text) { Text(text); });
    }
    // A name that is kept as a text.
    void NameText(WideText& text);

    // Reads a number of elements of at least `elementBytes` each, beside `promised` further ones of
    // the same kind that earlier counts spoke of and that are still to come.
    std::uint64_t Count(std::uint64_t elementBytes, std::uint64_t promised = 0);

    // Replaces the list's elements by `element(new element)`, once for each.
    template <class List, class Element>
    void ForEach(List& list, std::uint64_t elementBytes, Element element) {
        const std::uint64_t count = Count(elementBytes);
        list.clear();
        list.reserve(count);
        for (std::uint64_t i = 0; i < count; ++i) element(list.emplace_back());
    }

    // The same for a map from names; of two entries with one key the later stays.
    template <class Map, class Value>
    void ForEachEntry(Map& map, std::uint64_t valueBytes, Value value) {
        const std::uint64_t count = Count(kTextBytes + valueBytes);
        map.clear();
        for (std::uint64_t i = 0; i < count; ++i) {
            UpperName key;
            Name(key);
            typename Map::mapped_type mapped{};
            value(mapped);
            map.insert_or_assign(map.end(), std::move(key), std::move(mapped));
        }
    }

private:
    const char* Take(std::uint64_t size) {
        if (size > Left()) throw arch_exception({.offset = bytes_.size()});
        const char* taken = bytes_.data() + position_;
        position_ += size;
        return taken;
    }
    void Copy(void* value, std::size_t size) { std::memcpy(value, Take(size), size); }
    // The 16-bit units of a text.
    struct Units {
        const char* begin;
        std::uint64_t count;
    };
    Units TakeUnits();
    // Writes the characters that the units stand for, and answers how many those are: at most as
    // many.
    static std::size_t Widen(Units units, wchar_t* to);
    [[noreturn]] void RefuseCount(std::uint64_t count) const;

    std::string_view bytes_;
    std::vector<std::uint64_t>* fields_;
    std::size_t position_ = 0;
};

// Appends to a string. Throws std::bad_alloc alone.
class ArchiveByteWriter {
public:
    static constexpr bool kLoading = false;

    // The bytes must outlive the writer.
    explicit ArchiveByteWriter(std::string& bytes) : bytes_(bytes) {}

    ArchiveByteWriter& Field() { return *this; }

    void Number(std::uint32_t value) { Append(&value, sizeof value); }
    void Number(std::int32_t value) { Append(&value, sizeof value); }
    void Flag(bool value) { bytes_.push_back(value ? 1 : 0); }
    void Text(std::wstring_view text);
    void Name(const UpperName& name) { Text(name.View()); }
    void NameText(std::wstring_view text) { Text(text.substr(0, text.find(L'\0'))); }

    void Count(std::uint64_t count) { Append(&count, sizeof count); }

    template <class List, class Element>
    void ForEach(const List& list, std::uint64_t, Element element) {
        Count(list.size());
        for (const auto& item : list) element(item);
    }

    template <class Map, class Value>
    void ForEachEntry(const Map& map, std::uint64_t, Value value) {
        Count(map.size());
        for (const auto& [key, mapped] : map) {
            Name(key);
            value(mapped);
        }
    }

private:
    void Append(const void* value, std::size_t size) {
        bytes_.append(static_cast<const char*>(value), size);
    }

    std::string& bytes_;
};

}  // namespace compositions
