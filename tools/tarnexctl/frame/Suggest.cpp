#include "frame/Suggest.h"

#include <algorithm>

namespace tarnexctl {
namespace {

constexpr std::size_t kLongestWord = 256;  // nothing longer is worth the work

std::string Folded(std::string_view text) {
    std::string folded(text);
    for (char& c : folded) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return folded;
}

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> older(b.size() + 1), previous(b.size() + 1), current(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) previous[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        current[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t changed = previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            current[j] = std::min({previous[j] + 1, current[j - 1] + 1, changed});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                current[j] = std::min(current[j], older[j - 2] + 1);
            }
        }
        std::swap(older, previous);
        std::swap(previous, current);
    }
    return previous[b.size()];
}

std::optional<std::string> Suggest(std::string_view word,
                                   const std::vector<std::string>& candidates) {
    if (word.empty() || word.size() > kLongestWord) return std::nullopt;
    const std::string wanted = Folded(word);
    std::size_t nearest = std::max<std::size_t>(1, wanted.size() / 3) + 1;
    std::optional<std::string> suggestion;
    for (const std::string& candidate : candidates) {
        if (candidate.size() > kLongestWord) continue;
        const std::size_t distance = EditDistance(wanted, Folded(candidate));
        if (distance < nearest) {
            nearest = distance;
            suggestion = candidate;
        }
    }
    return suggestion;
}

}  // namespace tarnexctl
