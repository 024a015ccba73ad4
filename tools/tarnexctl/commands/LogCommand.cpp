#include <chrono>
#include <filesystem>
#include <fstream>
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

// Reads what the file holds from `position` on.
template <typename Visit>
void ReadOn(std::ifstream& file, std::uint64_t& position, std::vector<char>& buffer, Visit visit) {
    file.clear();
    file.seekg(static_cast<std::streamoff>(position));
    while (file.read(buffer.data(), static_cast<std::streamsize>(buffer.size())),
           file.gcount() > 0) {
        const auto count = static_cast<std::size_t>(file.gcount());
        position += count;
        visit(std::string_view(buffer.data(), count));
    }
}

ExitCode RunLog(const Arguments& arguments, Session& session) {
    const Wanted wanted = ReadWanted(arguments);
    const std::string name = arguments.ValueOr("FILE", "");
    const std::filesystem::path path = ExistingFile(name);
    std::ifstream file = OpenInput(path, name);
    std::error_code ignored;
    const std::uint64_t size = std::filesystem::file_size(path, ignored);

    LogSummary summary;
    LineCutter cutter;
    Json lines = Json::array();
    const auto visitLine = [&](std::string_view bytes, std::size_t number) {
        const LogLine line = ReadLogLine(bytes, number);
        if (number == 1 && bytes.find('\0') != std::string_view::npos) {
            throw Failure(ExitCode::kInputOutput, "\"" + name + "\" is not a text file");
        }
        summary.Add(line);
        if (wanted.lines && (number > 1 || line.regular) && wanted.Takes(line)) {
            Show(session, line, lines);
        }
    };
    std::uint64_t position = 0;
    std::vector<char> buffer(kChunk);
    const auto feed = [&](std::string_view bytes) {
        cutter.Feed(bytes, visitLine);
        session.Progress("Reading " + name + ": byte", position, size);
    };
    ReadOn(file, position, buffer, feed);

    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(wanted.seconds.value_or(1000000));
    while (wanted.follow && std::chrono::steady_clock::now() < end) {
        session.Out().Flush();
        if (session.Out().Failed()) break;
        std::this_thread::sleep_for(50ms);
        const std::uint64_t now = std::filesystem::file_size(path, ignored);
        if (!ignored && now < position) {  // written anew by another process
            session.Warn("the log began anew");
            position = 0;
            cutter = LineCutter();
        }
        ReadOn(file, position, buffer, feed);
    }
    cutter.End(visitLine);

    if (!wanted.lines) PrintSummary(session.Out(), summary);
    FillSummary(session.Document(), summary);
    if (wanted.lines) session.Document()["shown"] = std::move(lines);
    return summary.errors > 0 ? ExitCode::kFindings : ExitCode::kFine;
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
