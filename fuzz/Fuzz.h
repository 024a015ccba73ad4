#pragma once

// What the targets share: a check that a run must pass, and the input taken apart into values.

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

// Every target's entry: one run over the bytes. A failed check leaves it as an exception.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline void Check(bool holds, const std::string& what) {
    if (!holds) throw std::logic_error(what);
}

// Values out of an input, from its front on. An input that is used up gives zeros.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : bytes_(reinterpret_cast<const char*>(data), size) {}

    bool IsEmpty() const { return bytes_.empty(); }
    std::uint8_t Byte() {
        if (bytes_.empty()) return 0;
        const auto byte = static_cast<std::uint8_t>(bytes_.front());
        bytes_.remove_prefix(1);
        return byte;
    }
    // From 0 to limit - 1; one byte's worth.
    unsigned Below(unsigned limit) { return Byte() % limit; }
    bool Flag() { return (Byte() & 1) != 0; }
    std::uint16_t Word() {
        const unsigned low = Byte();
        return static_cast<std::uint16_t>(low | unsigned{Byte()} << 8);
    }
    std::uint32_t Number() {
        const std::uint32_t low = Word();
        return low | std::uint32_t{Word()} << 16;
    }
    std::uint64_t LongNumber() {
        const std::uint64_t low = Number();
        return low | std::uint64_t{Number()} << 32;
    }
    // At most that many bytes.
    std::string_view Bytes(std::size_t count) {
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(taken.size());
        return taken;
    }
    std::string_view Rest() { return Bytes(bytes_.size()); }

    template <class Container>
    const auto& Pick(const Container& container) {
        return container[Below(static_cast<unsigned>(std::size(container)))];
    }

private:
    std::string_view bytes_;
};

}  // namespace fuzz
