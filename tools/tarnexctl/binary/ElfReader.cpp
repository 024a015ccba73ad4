// The Linux form, 64-bit and little-endian: needed libraries and search folders from the dynamic
// segment, exports and sections from the section headers.

#include <algorithm>
#include <utility>

#include "binary/ByteReader.h"
#include "binary/LibraryImage.h"

namespace tarnexctl {
namespace {

constexpr std::uint16_t kSharedObject = 3;
constexpr std::uint16_t kClass64LittleEndian = 0x0102;
constexpr std::uint32_t kSegmentLoad = 1;
constexpr std::uint32_t kSegmentDynamic = 2;
constexpr std::uint32_t kSectionDynamicSymbols = 11;
constexpr std::uint64_t kNeeded = 1;
constexpr std::uint64_t kStringTable = 5;
constexpr std::uint64_t kSearchPath = 15;
constexpr std::uint64_t kRunSearchPath = 29;

std::string ElfMachineName(std::uint16_t machine) {
    switch (machine) {
        case 62:
            return "x64";
        case 3:
            return "x86";
        case 183:
            return "ARM64";
        case 40:
            return "ARM";
        default:
            return std::to_string(machine);
    }
}

struct Segment {
    std::uint64_t offset = 0;
    std::uint64_t address = 0;
    std::uint64_t fileSize = 0;
};

class ElfReader {
public:
    explicit ElfReader(std::span<const std::byte> file) : file_(file) {}

    LibraryImage Read() {
        image_.format = ImageFormat::kElf;
        if (!file_.Has(0, 64)) Damaged("it ends within its header");
        image_.machine = ElfMachineName(file_.U16(18));
        image_.isLibrary = file_.U16(16) == kSharedObject;
        if (file_.U16(4) == kClass64LittleEndian) {
            ReadSegments();
            ReadDynamic();
            ReadSections();
        }
        return std::move(image_);
    }

private:
    void Damaged(const char* what) {
        if (image_.problem.empty()) image_.problem = std::string("the file is damaged: ") + what;
    }

    void ReadSegments() {
        const std::uint64_t table = file_.U64(32);
        const std::uint64_t count = file_.U16(56);
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t at = table + i * 56;
            if (!file_.Has(at, 56)) return Damaged("it ends within its table of segments");
            const Segment segment = {file_.U64(at + 8), file_.U64(at + 16), file_.U64(at + 32)};
            if (file_.U32(at) == kSegmentLoad) segments_.push_back(segment);
            if (file_.U32(at) == kSegmentDynamic) dynamic_ = segment;
        }
    }

    std::uint64_t OffsetOf(std::uint64_t address) const {
        for (const Segment& segment : segments_) {
            if (address >= segment.address && address - segment.address < segment.fileSize) {
                return address - segment.address + segment.offset;
            }
        }
        return file_.Size();
    }

    // Calls `visit` with the tag and value of every entry of the dynamic segment.
    template <typename Visit>
    void ForEachDynamic(Visit visit) {
        for (std::uint64_t i = 0; i < dynamic_.fileSize / 16; ++i) {
            const std::uint64_t at = dynamic_.offset + i * 16;
            if (!file_.Has(at, 16)) return Damaged("it ends within its dynamic segment");
            const std::uint64_t tag = file_.U64(at);
            if (tag == 0) return;
            visit(tag, file_.U64(at + 8));
        }
    }

    void ReadDynamic() {
        std::uint64_t strings = file_.Size();
        ForEachDynamic([&](std::uint64_t tag, std::uint64_t value) {
            if (tag == kStringTable) strings = OffsetOf(value);
        });
        ForEachDynamic([&](std::uint64_t tag, std::uint64_t value) {
            if (tag != kNeeded && tag != kSearchPath && tag != kRunSearchPath) return;
            std::optional<std::string> text = file_.Text(strings + value, 4096);
            if (!text) return Damaged("a name lies outside of it");
            if (tag == kNeeded) {
                image_.imports.push_back({std::move(*text), {}, false});
            } else {
                AddSearchFolders(*text);
            }
        });
    }

    void AddSearchFolders(const std::string& list) {
        for (std::size_t begin = 0; begin < list.size();) {
            const std::size_t end = std::min(list.find(':', begin), list.size());
            if (end > begin) image_.searchFolders.push_back(list.substr(begin, end - begin));
            begin = end + 1;
        }
    }

    void ReadSections() {
        const std::uint64_t table = file_.U64(40);
        const std::uint64_t count = file_.U16(60);
        if (table == 0) return;  // a file without them is whole
        const std::uint64_t names = file_.U64(table + file_.U16(62) * 64ull + 24);
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t at = table + i * 64;
            if (!file_.Has(at, 64)) return Damaged("it ends within its table of sections");
            std::string name = file_.Text(names + file_.U32(at)).value_or("");
            image_.sections.push_back({std::move(name), file_.U64(at + 16), file_.U64(at + 32)});
            // Once: a table may claim any number of them over the same bytes.
            if (file_.U32(at + 4) == kSectionDynamicSymbols && image_.exports.empty()) {
                ReadSymbols(table, at);
            }
        }
    }

    void ReadSymbols(std::uint64_t table, std::uint64_t section) {
        const std::uint64_t offset = file_.U64(section + 24);
        const std::uint64_t count = file_.U64(section + 32) / 24;
        const std::uint64_t strings = file_.U64(table + file_.U32(section + 40) * 64ull + 24);
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t at = offset + i * 24;
            if (!file_.Has(at, 24)) return Damaged("it ends within its table of symbols");
            const bool defined = file_.U16(at + 6) != 0;
            const int binding = (file_.U16(at + 4) & 0xFF) >> 4;
            if (!defined || binding == 0) continue;
            std::optional<std::string> name = file_.Text(strings + file_.U32(at), 4096);
            if (!name) return Damaged("an exported name lies outside of it");
            image_.exports.push_back(std::move(*name));
        }
    }

    ByteReader file_;
    LibraryImage image_;
    std::vector<Segment> segments_;
    Segment dynamic_;
};

}  // namespace

LibraryImage ReadElf(std::span<const std::byte> file) {
    return ElfReader(file).Read();
}

}  // namespace tarnexctl
