#pragma once

// What was found in one script, in the order of the text.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "check/DiagnosticKinds.h"
#include "compositions/ReadingObserver.h"

namespace tarnexctl {

using compositions::ByteRange;

struct Diagnostic {
    const DiagnosticKind* kind = nullptr;
    ByteRange range;                         // of the script's bytes
    std::string message;                     // one line, no full stop
    std::vector<std::string> expected = {};  // what could have stood there
    std::vector<std::string> help = {};      // a likely cause, what is lost; one line each
};

class Diagnostics {
public:
    // A script of nonsense may hold a million mistakes: behind this many they are only counted.
    static constexpr std::size_t kMost = 100;

    // False from the first one on that would only be counted: no more need to look for its place or
    // its cause.
    bool HasRoom() const { return list_.size() < kMost; }
    bool IsEmpty() const { return list_.empty(); }

    void Add(std::string_view code, ByteRange range, std::string message,
             std::vector<std::string> help = {}, std::vector<std::string> expected = {});

    // Puts them in order: by place, then by code.
    void Sort();

    const std::vector<Diagnostic>& List() const { return list_; }
    std::size_t Omitted() const { return omitted_; }
    // Those that were only counted included.
    std::size_t Count(Severity severity) const {
        return counts_[static_cast<std::size_t>(severity)];
    }

private:
    std::vector<Diagnostic> list_;
    std::size_t omitted_ = 0;
    std::size_t counts_[3] = {};
};

}  // namespace tarnexctl
