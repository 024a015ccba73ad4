#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include "commands/Commands.h"
#include "frame/Columns.h"
#include "frame/InputFile.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "logs/TraceLog.h"

namespace tarnexctl {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kChunk = 256 * 1024;

struct Wanted {
    bool errors = false;
    bool lines = false;
    bool follow = false;
    std::optional<std::uint64_t> thread;
    std::optional<std::uint64_t> seconds;

    bool Takes(const LogLine& line) const {
        if (errors && !line.error) return false;
        return !thread || (line.regular && line.thread == *thread);
    }
};

Wanted ReadWanted(const Arguments& arguments) {
    Wanted wanted;
    wanted.errors = arguments.Has("--errors");
    wanted.follow = arguments.Has("--follow");
    wanted.lines = arguments.Has("--lines") || wanted.errors || wanted.follow;
    wanted.thread = arguments.Number("--thread", 0, UINT32_MAX);
    wanted.seconds = arguments.Number("--for", 0, 1000000);
    if (wanted.follow && arguments.Has("--json")) {
        throw Failure(ExitCode::kUsage, "--follow has no end, so it goes without --json");
    }
    if (wanted.seconds && !wanted.follow) {
        throw Failure(ExitCode::kUsage, "--for goes with --follow");
    }
    return wanted;
}

Json LineDocument(const LogLine& line) {
    Json document;
    document["line"] = line.number;
    if (line.regular) {
        document["ageMs"] = line.ageMs;
        document["thread"] = line.thread;
    }
    document["text"] = line.text;
    if (line.error) {
        document["operation"] = line.error->operation;
        document["code"] = line.error->code;
        if (!line.error->property.empty()) document["property"] = line.error->property;
    }
    return document;
}

void PrintLine(Writer& out, const LogLine& line) {
    if (line.regular) {
        out << out.Paint(Style::kDim, "[" + std::to_string(line.thread) + "] ");
    }
    const std::string text = Printable(line.text);
    out << (line.error ? out.Paint(Style::kError, text) : text) << "\n";
}

void Show(Session& session, const LogLine& line, Json& lines) {
    PrintLine(session.Out(), line);
    if (session.JsonWanted()) lines.push_back(LineDocument(line));
}

void PrintSummary(Writer& out, const LogSummary& summary) {
    out << "Program: " << Printable(summary.program) << "\n";
    out << Count(summary.lines, "line", "lines") << ", "
        << Count(summary.errors, "reported error", "reported errors");
    if (summary.irregular > 0) out << ", " << std::to_string(summary.irregular) << " of other form";
    out << "\n";
    if (summary.errors > 0) {
        Columns errors({"COUNT", "ERROR", "OPERATION"});
        errors.AlignRight(0);
        for (const auto& [key, count] : summary.byOperation) {
            errors.Add({std::to_string(count), key.second, key.first.empty() ? "-" : key.first});
        }
        out << "\n";
        errors.Print(out);
    }
    if (summary.threads.empty()) return;
    Columns threads({"THREAD", "LINES", "ERRORS"});
    for (std::size_t column = 0; column < 3; ++column) threads.AlignRight(column);
    for (const auto& [thread, counts] : summary.threads) {
        threads.Add(
            {std::to_string(thread), std::to_string(counts.lines), std::to_string(counts.errors)});
    }
    out << "\n";
    threads.Print(out);
}

void FillSummary(Json& document, const LogSummary& summary) {
    document["program"] = summary.program;
    document["lines"] = summary.lines;
    document["irregular"] = summary.irregular;
    document["errors"] = summary.errors;
    Json& operations = document["byOperation"] = Json::array();
    for (const auto& [key, count] : summary.byOperation) {
        operations.push_back({{"operation", key.first}, {"code", key.second}, {"count", count}});
    }
    Json& threads = document["byThread"] = Json::array();
    for (const auto& [thread, counts] : summary.threads) {
        threads.push_back({{"thread", thread}, {"lines", counts.lines}, {"errors", counts.errors}});
    }
}

// Reads a log from the start, and on from where it ended the last time.
class LogReading {
public:
    LogReading(const Arguments& arguments, Session& session)
        : session_(session),
          wanted_(ReadWanted(arguments)),
          name_(arguments.ValueOr("FILE", "")),
          path_(ExistingFile(name_)) {
        std::error_code ignored;
        if (wanted_.follow && !std::filesystem::is_regular_file(path_, ignored)) {
            throw Failure(ExitCode::kInputOutput,
                          InQuotes(name_) + " is no plain file: it cannot be followed");
        }
    }

    ExitCode Run() {
        std::ifstream file = OpenInput(path_, name_);
        std::error_code error;
        size_ = std::filesystem::file_size(path_, error);
        if (error) size_ = 0;
        ReadOn(file);
        file.close();
        if (wanted_.follow) Follow();
        cutter_.End(Visitor());
        if (!wanted_.lines) PrintSummary(session_.Out(), summary_);
        FillSummary(session_.Document(), summary_);
        if (wanted_.lines) session_.Document()["shown"] = std::move(lines_);
        return summary_.errors > 0 ? ExitCode::kFindings : ExitCode::kFine;
    }

private:
    // The file is not kept open meanwhile, so that whoever writes it may replace it.
    void Follow() {
        session_.EndProgress();
        size_ = 0;
        const auto end = std::chrono::steady_clock::now() +
                         std::chrono::seconds(wanted_.seconds.value_or(1000000));
        while (std::chrono::steady_clock::now() < end) {
            session_.Out().Flush();
            if (session_.Out().Failed()) break;
            std::this_thread::sleep_for(50ms);
            std::ifstream file(path_, std::ios::binary);
            if (!file) continue;  // there may be another one in a moment
            if (!StartsAsBefore(file)) {
                session_.Warn("the log began anew");
                cutter_.End(Visitor());
                cutter_ = LineCutter();
                start_.clear();
                position_ = 0;
            }
            ReadOn(file);
        }
    }

    // Whether the file still holds the bytes that were read of it, as far as they are remembered.
    bool StartsAsBefore(std::ifstream& file) {
        file.seekg(0, std::ios::end);
        if (static_cast<std::uint64_t>(file.tellg()) < position_) return false;
        std::string start(start_.size(), '\0');
        file.seekg(0);
        file.read(start.data(), static_cast<std::streamsize>(start.size()));
        return start == start_;
    }

    void ReadOn(std::ifstream& file) {
        if (wanted_.follow) {  // then it is a plain file; a pipe cannot be positioned
            file.clear();
            file.seekg(static_cast<std::streamoff>(position_));
        }
        while (file.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size())),
               file.gcount() > 0) {
            const std::string_view bytes(buffer_.data(), static_cast<std::size_t>(file.gcount()));
            position_ += bytes.size();
            start_.append(bytes.substr(0, kRemembered - std::min(kRemembered, start_.size())));
            cutter_.Feed(bytes, Visitor());
            if (size_ > 0) {
                session_.Progress("Reading " + name_ + ": byte", position_, size_);
            }
        }
    }

    std::function<void(std::string_view, std::size_t)> Visitor() {
        return [this](std::string_view bytes, std::size_t number) { Visit(bytes, number); };
    }

    void Visit(std::string_view bytes, std::size_t number) {
        const LogLine line = ReadLogLine(bytes, number);
        if (summary_.threads.empty() && !line.regular && bytes.find('\0') != bytes.npos) {
            throw Failure(ExitCode::kInputOutput, InQuotes(name_) + " is not a text file");
        }
        summary_.Add(line);
        if (wanted_.lines && (number > 1 || line.regular) && wanted_.Takes(line)) {
            Show(session_, line, lines_);
        }
    }

    static constexpr std::size_t kRemembered = 4096;

    Session& session_;
    const Wanted wanted_;
    const std::string name_;
    const std::filesystem::path path_;
    std::uint64_t size_ = 0;  // of what is read at first; 0 when that is not known
    LogSummary summary_;
    LineCutter cutter_;
    Json lines_ = Json::array();
    std::uint64_t position_ = 0;
    std::string start_;
    std::vector<char> buffer_ = std::vector<char>(kChunk);
};

ExitCode RunLog(const Arguments& arguments, Session& session) {
    return LogReading(arguments, session).Run();
}

}  // namespace

CommandSpec LogCommand() {
    CommandSpec command;
    command.name = "log";
    command.summary = "reads a trace log: errors by operation and code, lines by thread";
    command.description = {
        "Without an option it counts: the reported errors by operation and code, and the lines by "
        "thread. With one it prints lines.",
        "Exit code 1 when the log reports an error. Times are not shown: a log holds how old a "
        "message was when it was written, not when it came."};
    command.arguments = {{"FILE", "The log, as the library wrote it.", ValueKind::kFile}};
    command.options = {
        {"--errors", "-e", "", "Print the lines that report an error."},
        {"--lines", "-l", "", "Print every line."},
        {"--thread", "-t", "ID", "Print or show only the lines of one thread.", ValueKind::kNumber},
        {"--follow", "-f", "", "Print every line and go on as the log grows, until interrupted."},
        {"--for", "", "SECONDS", "With --follow: end after that time.", ValueKind::kNumber}};
    command.examples = {
        {"tarnexctl log \"Logs/trace_2026-11-16 0-25-17.log\"", "What went wrong, and how often."},
        {"tarnexctl log --errors trace.log", "Every reported error, in order."},
        {"tarnexctl log --follow --errors trace.log", "Errors as they come."}};
    command.run = RunLog;
    return command;
}

}  // namespace tarnexctl
