#include "extraction/SectionOrder.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "compositions/CompScript.h"
#include "compositions/ReadingObserver.h"

namespace tarnexctl {
namespace {

using compositions::kSectionCount;
using compositions::Section;

constexpr std::uint64_t kNone = ~std::uint64_t{0};

using Offsets = std::array<std::uint64_t, kSectionCount>;
using Before = std::set<std::pair<std::size_t, std::size_t>>;  // this one stands before that one

// Where the reader finds the headers.
class HeaderObserver : public compositions::ReadingObserver {
public:
    HeaderObserver() { offsets.fill(kNone); }
    void OnHeader(Section section, compositions::ByteRange range) override {
        offsets[static_cast<std::size_t>(section)] = range.begin;
    }
    Offsets offsets;
};

// The sections in an order that heeds every pair, close to the usual one; fewer of them when the
// pairs go in a circle.
std::vector<std::size_t> Sorted(const SectionTexts& texts, const Before& before) {
    std::vector<std::size_t> order;
    std::set<std::size_t> placed;
    const auto mayCome = [&](std::size_t section) {
        for (const auto& [first, second] : before) {
            if (second == section && !placed.contains(first)) return false;
        }
        return true;
    };
    for (bool found = true; found;) {
        found = false;
        for (std::size_t section = 0; section < kSectionCount && !found; ++section) {
            if (!texts[section] || placed.contains(section) || !mayCome(section)) continue;
            order.push_back(section);
            placed.insert(section);
            found = true;
        }
    }
    return order;
}

std::string Assembled(const SectionTexts& texts, const std::vector<std::size_t>& order,
                      Offsets& offsets) {
    std::string script;
    for (const std::size_t section : order) {
        if (!script.empty()) script += "\n";
        offsets[section] = script.size();
        script += std::string("[") + compositions::SectionKeyword(static_cast<Section>(section)) +
                  "]\n" + *texts[section];
    }
    return script;
}

// The section in whose text the offset lies.
std::size_t SectionAt(std::uint64_t offset, const std::vector<std::size_t>& order,
                      const Offsets& offsets) {
    std::size_t at = order.front();
    for (const std::size_t section : order) {
        if (offsets[section] <= offset) at = section;
    }
    return at;
}

}  // namespace

std::optional<std::string> InOrder(SectionTexts texts) {
    Before before;
    for (;;) {
        const std::vector<std::size_t> order = Sorted(texts, before);
        const auto wanted = std::count_if(texts.begin(), texts.end(),
                                          [](const auto& text) { return text.has_value(); });
        if (order.size() != static_cast<std::size_t>(wanted)) return std::nullopt;
        Offsets offsets;
        offsets.fill(kNone);
        const std::string script = Assembled(texts, order, offsets);
        HeaderObserver found;
        const compositions::CompositionScript read(std::string_view(script), &found);
        const std::size_t pairs = before.size();
        for (std::size_t section = 0; section < kSectionCount; ++section) {
            if (found.offsets[section] == kNone || found.offsets[section] == offsets[section]) {
                continue;
            }
            if (!texts[section]) texts[section] = "";  // an empty one in front takes the header
            before.emplace(section, SectionAt(found.offsets[section], order, offsets));
        }
        if (before.size() == pairs) return script;
    }
}

}  // namespace tarnexctl
