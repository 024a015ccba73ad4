#include "binary/ByteReader.h"

#include <algorithm>

namespace tarnexctl {
namespace {

constexpr std::uint64_t kTextBudgetPerByte = 4;
constexpr std::uint64_t kCostOfAnyText = 8;

}  // namespace

ByteReader::ByteReader(std::span<const std::byte> bytes)
    : bytes_(bytes), textBudget_(bytes.size() * kTextBudgetPerByte) {}

std::optional<std::string> ByteReader::Text(std::uint64_t offset, std::size_t limit) {
    if (!Has(offset, 1)) return std::nullopt;
    const auto rest = bytes_.subspan(offset, std::min<std::size_t>(limit, bytes_.size() - offset));
    const auto end = std::find(rest.begin(), rest.end(), std::byte{0});
    const auto length = static_cast<std::size_t>(end - rest.begin());
    const std::uint64_t cost = length + kCostOfAnyText;
    textBudget_ -= std::min(textBudget_, cost);
    if (end == rest.end() || textBudget_ == 0) return std::nullopt;
    return std::string(reinterpret_cast<const char*>(rest.data()), length);
}

std::uint64_t ByteReader::Read(std::uint64_t offset, int size) const {
    if (!Has(offset, static_cast<std::uint64_t>(size))) return 0;
    std::uint64_t value = 0;
    for (int i = size - 1; i >= 0; --i) {
        value = value << 8 | std::to_integer<std::uint64_t>(bytes_[offset + i]);
    }
    return value;
}

}  // namespace tarnexctl
