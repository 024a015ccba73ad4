#pragma once

// Reads little-endian values out of a file's bytes. Every access is checked: nothing that a file
// claims about itself is believed.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tarnexctl {

class ByteReader {
public:
    explicit ByteReader(std::span<const std::byte> bytes);

    std::size_t Size() const { return bytes_.size(); }

    // Whether `size` bytes stand at `offset`.
    bool Has(std::uint64_t offset, std::uint64_t size) const {
        return offset <= bytes_.size() && size <= bytes_.size() - offset;
    }

    // 0 when the file ends before the value's last byte.
    std::uint16_t U16(std::uint64_t offset) const {
        return static_cast<std::uint16_t>(Read(offset, 2));
    }
    std::uint32_t U32(std::uint64_t offset) const {
        return static_cast<std::uint32_t>(Read(offset, 4));
    }
    std::uint64_t U64(std::uint64_t offset) const { return Read(offset, 8); }

    // The zero-terminated text at `offset`; none when it does not end within `limit` bytes, or when
    // more texts were asked for than can stand in the file, so that tables which overlap cost no
    // more than the file's size.
    std::optional<std::string> Text(std::uint64_t offset, std::size_t limit = 512);

private:
    std::uint64_t Read(std::uint64_t offset, int size) const;

    std::span<const std::byte> bytes_;
    std::uint64_t textBudget_;
};

}  // namespace tarnexctl
