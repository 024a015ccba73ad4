#pragma once

// Reads the trace logs that the library writes: a first line with the program's name, then lines of
// an age, a thread and a text. Lines that are none of these are kept as they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnexctl {

// A failure that an operation reported.
struct ReportedError {
    std::string operation;  // empty when the line names none
    std::string code;       // the error's name
    std::string property;   // empty when the line names none
};

struct LogLine {
    std::size_t number = 0;   // 1 for the first line of the file
    bool regular = false;     // the fields below were there
    std::uint32_t ageMs = 0;  // how old the message was when it was written to the file
    std::uint32_t thread = 0;
    std::string text;  // the whole line when it is not regular
    std::optional<ReportedError> error;
};

// Takes one line apart, without its line end. The text comes out as valid UTF-8.
LogLine ReadLogLine(std::string_view bytes, std::size_t number);

// The failure that a message's text reports, if it does.
std::optional<ReportedError> ReadReportedError(std::string_view text);

// Cuts a stream of bytes into lines, however they come. The file's very last line may lack its end.
class LineCutter {
public:
    template <typename Visit>
    void Feed(std::string_view bytes, Visit visit) {
        while (!bytes.empty()) {
            const std::size_t length = std::min(bytes.find('\n'), bytes.size());
            const std::size_t taken = std::min(length, kLongestLine - rest_.size());
            rest_.append(bytes.substr(0, taken));
            bytes.remove_prefix(taken);
            if (bytes.empty()) return;
            if (bytes.front() == '\n') bytes.remove_prefix(1);  // else the line is cut here
            Emit(visit);
        }
    }
    template <typename Visit>
    void End(Visit visit) {
        if (!rest_.empty()) Emit(visit);
    }

private:
    // Far above what the library writes; a file without line ends is cut here.
    static constexpr std::size_t kLongestLine = 1u << 20;

    template <typename Visit>
    void Emit(Visit visit) {
        if (!rest_.empty() && rest_.back() == '\r') rest_.pop_back();
        visit(std::string_view(rest_), ++lines_);
        rest_.clear();
    }

    std::string rest_;
    std::size_t lines_ = 0;
};

// What a whole log holds, counted.
struct LogSummary {
    std::string program;    // of the first line
    std::size_t lines = 0;  // behind the first
    std::size_t irregular = 0;
    std::size_t errors = 0;
    std::map<std::pair<std::string, std::string>, std::size_t> byOperation;  // and code
    struct Thread {
        std::size_t lines = 0;
        std::size_t errors = 0;
    };
    std::map<std::uint32_t, Thread> threads;

    void Add(const LogLine& line);
};

}  // namespace tarnexctl
