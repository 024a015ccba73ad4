#include "logs/TraceLog.h"

#include <charconv>

#include "frame/Text.h"

namespace tarnexctl {
namespace {

// Takes texts off the front of a line; every function leaves the line as it was when it fails.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool Skip(std::string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    bool Number(std::uint64_t& value) {
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (error != std::errc()) return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }

    void SkipBlanks() {
        while (Skip(" ")) {
        }
    }

    // What stands before the next `mark`, which is taken as well.
    bool Until(std::string_view mark, std::string& text) {
        const std::size_t end = rest_.find(mark);
        if (end == std::string_view::npos) return false;
        text = rest_.substr(0, end);
        rest_.remove_prefix(end + mark.size());
        return true;
    }

    std::string_view Rest() const { return rest_; }

private:
    std::string_view rest_;
};

// "000012:345 [ 4711] text"
bool ReadFields(std::string_view bytes, LogLine& line, std::string_view& text) {
    Scanner scanner(bytes);
    std::uint64_t seconds = 0;
    std::uint64_t milliseconds = 0;
    std::uint64_t thread = 0;
    if (!scanner.Number(seconds) || !scanner.Skip(":") || !scanner.Number(milliseconds)) {
        return false;
    }
    if (!scanner.Skip(" [")) return false;
    scanner.SkipBlanks();
    if (!scanner.Number(thread) || !scanner.Skip("] ")) return false;
    const bool plausible = seconds <= 4000000 && milliseconds < 1000 && thread <= UINT32_MAX;
    if (!plausible) return false;
    line.ageMs = static_cast<std::uint32_t>(seconds * 1000 + milliseconds);
    line.thread = static_cast<std::uint32_t>(thread);
    text = scanner.Rest();
    return true;
}

}  // namespace

std::optional<ReportedError> ReadReportedError(std::string_view text) {
    Scanner scanner(text);
    ReportedError error;
    if (!scanner.Skip("Operation ")) return std::nullopt;
    if (scanner.Skip("\"") && !scanner.Until("\" ", error.operation)) return std::nullopt;
    if (!scanner.Skip("returned error <") || !scanner.Until(">", error.code)) return std::nullopt;
    if (scanner.Skip(", property: \"")) {
        error.property = scanner.Rest();
        if (!error.property.empty() && error.property.back() == '"') error.property.pop_back();
    }
    return error;
}

LogLine ReadLogLine(std::string_view bytes, std::size_t number) {
    LogLine line;
    line.number = number;
    std::string_view text = bytes;
    line.regular = ReadFields(bytes, line, text);
    line.text = FromSystemBytes(text);
    if (line.regular) line.error = ReadReportedError(line.text);
    return line;
}

void LogSummary::Add(const LogLine& line) {
    if (line.number == 1 && !line.regular) {
        program = line.text;
        return;
    }
    ++lines;
    if (!line.regular) {
        ++irregular;
        return;
    }
    Thread& thread = threads[line.thread];
    ++thread.lines;
    if (!line.error) return;
    ++errors;
    ++thread.errors;
    ++byOperation[{line.error->operation, line.error->code}];
}

}  // namespace tarnexctl
