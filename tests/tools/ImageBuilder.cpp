#include "ImageBuilder.h"

#include <algorithm>

namespace tooltest {
namespace {

// Bytes that are written in any order.
class Bytes {
public:
    explicit Bytes(std::size_t size) : bytes_(size) {}

    void Put(std::size_t at, std::uint64_t value, int width) {
        if (at + 8 > bytes_.size()) bytes_.resize(at + 8);
        for (int i = 0; i < width; ++i) bytes_[at + i] = static_cast<std::byte>(value >> (8 * i));
    }
    std::size_t Append(const std::string& text) {
        const std::size_t at = bytes_.size();
        for (const char c : text) bytes_.push_back(static_cast<std::byte>(c));
        bytes_.push_back(std::byte{0});
        return at;
    }
    std::size_t Reserve(std::size_t size) {
        const std::size_t at = bytes_.size();
        bytes_.resize(at + size);
        return at;
    }
    std::size_t Size() const { return bytes_.size(); }
    std::vector<std::byte> Take() { return std::move(bytes_); }

private:
    std::vector<std::byte> bytes_;
};

constexpr std::size_t kPe = 0x80;
constexpr std::size_t kOptional = kPe + 24;
constexpr std::size_t kOptionalSize = 240;
constexpr std::size_t kData = 0x200;
// The one section stands in the file where it stands in memory, but for this distance.
constexpr std::uint64_t kShift = 0x1000 - kData;

}  // namespace

std::vector<std::byte> BuildPe(const ImageParts& parts) {
    Bytes file(kData);
    file.Put(0, 0x5A4D, 2);
    file.Put(0x3C, kPe, 4);
    file.Put(kPe, 0x4550, 4);
    file.Put(kPe + 4, parts.machine, 2);
    file.Put(kPe + 6, 1, 2);
    file.Put(kPe + 20, kOptionalSize, 2);
    file.Put(kPe + 22, parts.isLibrary ? 0x2000 : 0, 2);
    file.Put(kOptional, 0x20B, 2);
    file.Put(kOptional + 108, 16, 4);

    const std::size_t exports = file.Reserve(40);
    const std::size_t names = file.Reserve(parts.exports.size() * 4 + 8);
    file.Put(exports + 24, parts.exports.size(), 4);
    file.Put(exports + 32, names + kShift, 4);
    for (std::size_t i = 0; i < parts.exports.size(); ++i) {
        const std::size_t name = file.Append(parts.exports[i]);
        file.Put(names + i * 4, name + kShift, 4);
    }
    if (!parts.exports.empty()) file.Put(kOptional + 112, exports + kShift, 4);

    const std::size_t imports = file.Reserve((parts.imports.size() + 1) * 20);
    if (!parts.imports.empty()) file.Put(kOptional + 120, imports + kShift, 4);
    for (std::size_t i = 0; i < parts.imports.size(); ++i) {
        const auto& [library, functions] = parts.imports[i];
        const std::size_t lookup = file.Reserve((functions.size() + 1) * 8);
        file.Put(imports + i * 20, lookup + kShift, 4);
        file.Put(imports + i * 20 + 12, file.Append(library) + kShift, 4);
        for (std::size_t k = 0; k < functions.size(); ++k) {
            const std::size_t hint = file.Reserve(2);
            file.Append(functions[k]);
            file.Put(lookup + k * 8, hint + kShift, 8);
        }
    }
    file.Reserve(8);
    const std::size_t section = kOptional + kOptionalSize;
    file.Put(section, 0x72656E776F2EULL, 8);  // ".owner"
    file.Put(section + 8, file.Size() - kData, 4);
    file.Put(section + 12, 0x1000, 4);
    file.Put(section + 16, file.Size() - kData, 4);
    file.Put(section + 20, kData, 4);
    return file.Take();
}

std::vector<std::byte> BuildElf(const std::vector<std::string>& needed,
                                const std::string& runPath) {
    Bytes file(64 + 2 * 56);
    file.Put(0, 0x464C457F, 4);
    file.Put(4, 0x0102, 2);
    file.Put(16, 3, 2);
    file.Put(18, 62, 2);
    file.Put(32, 64, 8);
    file.Put(54, 56, 2);
    file.Put(56, 2, 2);
    const std::size_t dynamic = file.Reserve((needed.size() + 3) * 16);
    const std::size_t strings = file.Append("");
    std::size_t entry = dynamic;
    const auto put = [&](std::uint64_t tag, std::uint64_t value) {
        file.Put(entry, tag, 8);
        file.Put(entry + 8, value, 8);
        entry += 16;
    };
    for (const std::string& name : needed) put(1, file.Append(name) - strings);
    put(29, file.Append(runPath) - strings);
    put(5, strings);
    file.Reserve(8);
    file.Put(64, 1, 4);  // the whole file is loaded at address 0
    file.Put(64 + 32, file.Size(), 8);
    file.Put(120, 2, 4);
    file.Put(120 + 8, dynamic, 8);
    file.Put(120 + 16, dynamic, 8);
    file.Put(120 + 32, (needed.size() + 3) * 16, 8);
    return file.Take();
}

}  // namespace tooltest
