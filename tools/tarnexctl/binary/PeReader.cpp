// The Windows form: a DOS stub, the PE header, a table of sections, and directories within them
// that are given by the addresses they would have when loaded.

#include <algorithm>
#include <cstdio>
#include <utility>

#include "binary/ByteReader.h"
#include "binary/LibraryImage.h"

namespace tarnexctl {
namespace {

constexpr std::uint32_t kPeSignature = 0x00004550;
constexpr std::uint16_t kCharacteristicDll = 0x2000;
constexpr std::uint16_t kMagic64 = 0x20B;
constexpr std::size_t kMostSections = 96;  // what the loader takes
constexpr int kDirectoryExport = 0;
constexpr int kDirectoryImport = 1;
constexpr int kDirectoryDelayImport = 13;

std::string PeMachineName(std::uint16_t machine) {
    switch (machine) {
        case 0x8664:
            return "x64";
        case 0x014C:
            return "x86";
        case 0xAA64:
            return "ARM64";
        case 0x01C4:
            return "ARM";
        default:
            break;
    }
    char number[16];
    std::snprintf(number, sizeof number, "0x%04X", machine);
    return number;
}

struct SectionHeader {
    std::uint32_t address;
    std::uint32_t fileSize;
    std::uint32_t fileOffset;
};

class PeReader {
public:
    explicit PeReader(std::span<const std::byte> file) : file_(file) {}

    LibraryImage Read() {
        image_.format = ImageFormat::kPe;
        if (ReadHeaders() && ReadSections()) {
            ReadExports();
            ReadImports(kDirectoryImport);
            ReadImports(kDirectoryDelayImport);
        }
        return std::move(image_);
    }

private:
    bool Damaged(const char* what) {
        if (image_.problem.empty()) image_.problem = std::string("the file is damaged: ") + what;
        return false;
    }

    bool ReadHeaders() {
        const std::uint64_t pe = file_.U32(0x3C);
        if (file_.U32(pe) != kPeSignature) {
            return Damaged("it begins like a Windows library but has no PE header");
        }
        image_.machine = PeMachineName(file_.U16(pe + 4));
        sectionCount_ = file_.U16(pe + 6);
        const std::uint64_t optionalSize = file_.U16(pe + 20);
        image_.isLibrary = (file_.U16(pe + 22) & kCharacteristicDll) != 0;
        const std::uint64_t optional = pe + 24;
        sectionTable_ = optional + optionalSize;
        is64_ = file_.U16(optional) == kMagic64;
        const std::uint64_t fixed = is64_ ? 112 : 96;
        if (optionalSize < fixed || !file_.Has(optional, optionalSize)) {
            return Damaged("it ends within its PE header");
        }
        directoryTable_ = optional + fixed;
        directoryCount_ =
            std::min<std::uint64_t>(file_.U32(directoryTable_ - 4), (optionalSize - fixed) / 8);
        return true;
    }

    bool ReadSections() {
        if (sectionCount_ > kMostSections) return Damaged("it claims more sections than can be");
        for (std::size_t i = 0; i < sectionCount_; ++i) {
            const std::uint64_t at = sectionTable_ + i * 40;
            if (!file_.Has(at, 40)) return Damaged("it ends within its table of sections");
            sections_.push_back({file_.U32(at + 12), file_.U32(at + 16), file_.U32(at + 20)});
            image_.sections.push_back({SectionName(at), file_.U32(at + 12), file_.U32(at + 8)});
        }
        return true;
    }

    // Eight bytes, zeros at the end.
    std::string SectionName(std::uint64_t at) const {
        std::string name;
        for (std::uint64_t k = 0; k < 8; ++k) name += static_cast<char>(file_.U16(at + k) & 0xFF);
        return name.substr(0, name.find('\0'));
    }

    // Where the byte with that address stands in the file; beyond its end when nowhere.
    std::uint64_t OffsetOf(std::uint64_t address) const {
        for (const SectionHeader& section : sections_) {
            if (address >= section.address && address - section.address < section.fileSize) {
                return address - section.address + section.fileOffset;
            }
        }
        return file_.Size();
    }

    std::uint64_t DirectoryAddress(std::uint64_t index) const {
        return index < directoryCount_ ? file_.U32(directoryTable_ + index * 8) : 0;
    }

    void ReadExports() {
        const std::uint64_t address = DirectoryAddress(kDirectoryExport);
        if (address == 0) return;
        const std::uint64_t table = OffsetOf(address);
        const std::uint64_t count = file_.U32(table + 24);
        const std::uint64_t names = OffsetOf(file_.U32(table + 32));
        if (!file_.Has(table, 40) || (count > 0 && !file_.Has(names, count * 4))) {
            Damaged("its exports lie outside of it");
            return;
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            std::optional<std::string> name = file_.Text(OffsetOf(file_.U32(names + i * 4)));
            if (!name) {
                Damaged("an exported name lies outside of it");
                return;
            }
            image_.exports.push_back(std::move(*name));
        }
    }

    void ReadImports(int directory) {
        const bool delayed = directory == kDirectoryDelayImport;
        const std::uint64_t size = delayed ? 32 : 20;
        const std::uint64_t address = DirectoryAddress(static_cast<std::uint64_t>(directory));
        if (address == 0) return;
        for (std::uint64_t entry = OffsetOf(address);; entry += size) {
            if (!file_.Has(entry, size)) {
                Damaged("its imports lie outside of it");
                return;
            }
            const std::uint32_t nameAddress = file_.U32(entry + (delayed ? 4 : 12));
            if (nameAddress == 0) return;
            std::optional<std::string> name = file_.Text(OffsetOf(nameAddress));
            if (!name || name->empty()) {
                Damaged("it imports from a library without a name");
                return;
            }
            const std::uint32_t lookup = file_.U32(entry + (delayed ? 16 : 0));
            const std::uint32_t bound = delayed ? 0 : file_.U32(entry + 16);
            ImageImport& import = image_.imports.emplace_back();
            import.library = std::move(*name);
            import.delayed = delayed;
            if (!ReadFunctions(OffsetOf(lookup != 0 ? lookup : bound), import)) return;
        }
    }

    bool ReadFunctions(std::uint64_t at, ImageImport& import) {
        const std::uint64_t width = is64_ ? 8 : 4;
        for (;; at += width) {
            const std::uint64_t entry = is64_ ? file_.U64(at) : file_.U32(at);
            if (entry == 0) return true;
            if (import.functions.size() >= file_.Size()) return Damaged("its imports never end");
            if ((entry >> (width * 8 - 1)) != 0) {
                import.functions.push_back("#" + std::to_string(entry & 0xFFFF));
                continue;
            }
            std::optional<std::string> name = file_.Text(OffsetOf(entry) + 2);
            if (!name) return Damaged("an imported name lies outside of it");
            import.functions.push_back(std::move(*name));
        }
    }

    ByteReader file_;
    LibraryImage image_;
    bool is64_ = false;
    std::uint64_t sectionCount_ = 0;
    std::uint64_t sectionTable_ = 0;
    std::uint64_t directoryTable_ = 0;
    std::uint64_t directoryCount_ = 0;
    std::vector<SectionHeader> sections_;
};

}  // namespace

LibraryImage ReadPe(std::span<const std::byte> file) {
    return PeReader(file).Read();
}

}  // namespace tarnexctl
