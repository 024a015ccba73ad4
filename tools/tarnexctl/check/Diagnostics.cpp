#include "check/Diagnostics.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tarnexctl {

void Diagnostics::Add(std::string_view code, ByteRange range, std::string message,
                      std::vector<std::string> help, std::vector<std::string> expected) {
    const DiagnosticKind* const kind = FindDiagnosticKind(code);
    if (kind == nullptr) throw std::logic_error("no such diagnostic: " + std::string(code));
    ++counts_[static_cast<std::size_t>(kind->severity)];
    if (!HasRoom()) {
        ++omitted_;
        return;
    }
    list_.push_back({kind, range, std::move(message), std::move(expected), std::move(help)});
}

void Diagnostics::Sort() {
    std::stable_sort(list_.begin(), list_.end(), [](const Diagnostic& a, const Diagnostic& b) {
        return std::pair(a.range.begin, std::string_view(a.kind->code)) <
               std::pair(b.range.begin, std::string_view(b.kind->code));
    });
}

}  // namespace tarnexctl
