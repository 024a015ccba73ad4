#include "VtableDump.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

#include "Compiler.h"
#include "SourceTree.h"

namespace structure {

namespace {

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
}

// "int fx::IBaseFX::GetRenderCost() [pure]" becomes "int GetRenderCost()". Arguments are printed as
// the header wrote them, so their namespaces go too.
std::string WithoutClass(std::string entry) {
    ReplaceAll(entry, " [pure]", "");
    ReplaceAll(entry, "fx::PropertyEffect::PropertyError ", "base_types::_eError ");
    if (entry.find("::~") != std::string::npos) return "~";
    const std::size_t arguments = entry.find('(');
    const std::size_t qualified = entry.find_last_of(" *&", arguments) + 1;
    const std::size_t name = entry.rfind("::", arguments);
    if (name != std::string::npos && name > qualified) entry.erase(qualified, name + 2 - qualified);
    std::string written = entry.substr(entry.find('('));
    for (const char* space : {"base_types::", "fx::", "tarnex::"}) ReplaceAll(written, space, "");
    return entry.substr(0, entry.find('(')) + written;
}

void AddSlot(Slots& slots, const std::string& entry) {
    const std::string slot = WithoutClass(entry);
    if (slot == "~" && !slots.empty() && slots.back() == "~") return;
    slots.push_back(slot);
}

// Reads one target's print-out line by line. Tables of both kinds hold entries that are no
// operations (type information, offsets); the rest are slots.
class Reader {
public:
    void Read(const std::string& line) {
        static const std::regex kQuoted("'([^']*)'");
        static const std::regex kAddressPoint("^ *-- \\((.*), [0-9]+\\) vtable address --$");
        static const std::regex kEntry("^ *[0-9]+ \\| (.*)$");
        std::smatch match;
        if (line.rfind("VFTable for ", 0) == 0 || line.rfind("Vtable for ", 0) == 0) {
            StartTable();
            for (std::sregex_iterator name(line.begin(), line.end(), kQuoted), end; name != end;
                 ++name) {
                if (bases_.empty()) bases_.push_back((*name)[1]);
                complete_ = (*name)[1];
            }
            if (line[1] == 't') bases_.clear();  // its bases are named at the address points
        } else if (line.rfind("V", 0) == 0 || line.rfind("Thunks", 0) == 0) {
            StartTable();
        } else if (complete_.empty()) {
            return;
        } else if (std::regex_match(line, match, kAddressPoint)) {
            bases_.push_back(match[1]);
        } else if (std::regex_match(line, match, kEntry)) {
            ReadEntry(match[1]);
        }
    }

    VtableDump Finish() {
        StartTable();
        return std::move(dump_);
    }

private:
    void ReadEntry(const std::string& entry) {
        if (entry.rfind("offset_to_top", 0) == 0) {
            StoreTable();
            bases_.clear();
        } else if (entry.size() < 5 || entry.substr(entry.size() - 5) != " RTTI") {
            AddSlot(slots_, entry);
        }
    }

    void StoreTable() {
        for (const std::string& base : bases_) dump_[{complete_, base}] = slots_;
        slots_.clear();
    }

    void StartTable() {
        StoreTable();
        bases_.clear();
        complete_.clear();
    }

    VtableDump dump_;
    std::string complete_;            // the class whose tables are being read; empty between
    std::vector<std::string> bases_;  // whose table the current one is
    Slots slots_;
};

}  // namespace

VtableDump DumpVtables(const std::string& target) {
    const std::string root = SourceRoot().string();
    const CommandResult result = Run({TARNEX_CLANG,
                                      "-std=c++20",
                                      "-target",
                                      target,
                                      "-ffreestanding",
                                      "-nostdlibinc",
                                      "-nostdinc++",
                                      "-I",
                                      root + "/tests/structure/stubs",
                                      "-I",
                                      root + "/include",
                                      "-I",
                                      root + "/src",
                                      "-Xclang",
                                      "-fdump-vtable-layouts",
                                      "-S",
                                      "-emit-llvm",
                                      "-o",
                                      "/dev/null",
                                      root + "/tests/structure/LayoutProbe.cc"});
    Reader reader;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ(line.find("error:"), std::string::npos) << line;
        reader.Read(line);
    }
    EXPECT_EQ(result.status, 0);
    return reader.Finish();
}

}  // namespace structure
