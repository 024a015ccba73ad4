#include <filesystem>
#include <map>
#include <optional>
#include <utility>

#include "check/CheckReport.h"
#include "check/Subject.h"
#include "commands/Commands.h"
#include "description/LoadedDescription.h"
#include "frame/Session.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

std::string ReadScriptBytes(const std::string& name) {
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(ToPath(name), error);
    if (!error) RequireScriptSize(name, size);
    std::string bytes = ReadInput(name);
    if (IsArchive(bytes)) {
        throw Failure(ExitCode::kInputOutput, InQuotes(name) + " is an archive, not a script");
    }
    return bytes;
}

// Checks files one after the other and adds up what it found.
class Checking {
public:
    Checking(const Arguments& arguments, Session& session)
        : session_(session),
          strict_(arguments.Has("--strict")),
          short_(arguments.ValueOr("--format", "full") == "short") {}

    // The file's number is for whoever waits.
    void Check(const std::string& file, std::size_t number, std::size_t count) {
        const auto report = [&] { session_.Progress("Checking file", number, count); };
        report();
        std::string bytes;
        try {
            bytes = ReadScriptBytes(file);
        } catch (const Failure& failure) {
            AddFailure(file, failure);
            return;
        }
        ScriptVerdict verdict = checker_.Check(bytes, report);
        CompareTitle(file, verdict);
        if (session_.JsonWanted()) {
            documents_.push_back(VerdictDocument(file, bytes, verdict, strict_));
        } else if (short_) {
            PrintShortVerdict(session_.Out(), file, bytes, verdict, strict_);
        } else {
            PrintVerdict(session_.Out(), file, bytes, verdict, strict_);
        }
        errors_ += CountOf(verdict.diagnostics, Severity::kError, strict_);
        warnings_ += CountOf(verdict.diagnostics, Severity::kWarning, strict_);
        notes_ += CountOf(verdict.diagnostics, Severity::kNote, strict_);
    }

    ExitCode Finish() {
        Json& document = session_.Document();
        document["files"] = std::move(documents_);
        document["errors"] = errors_;
        document["warnings"] = warnings_;
        document["notes"] = notes_;
        if (failure_) return *failure_;
        return errors_ > 0 ? ExitCode::kFindings : ExitCode::kFine;
    }

private:
    // The others are checked all the same; what cannot be read outweighs what can.
    void AddFailure(const std::string& file, const Failure& failure) {
        session_.Warn(std::string(failure.what()) +
                      (failure.Hint().empty() ? "" : "; " + failure.Hint()));
        documents_.push_back(
            {{"file", file}, {"problem", failure.what()}, {"kind", ExitCodeName(failure.Code())}});
        if (!failure_ || *failure_ < failure.Code()) failure_ = failure.Code();
    }

    // A composition is registered under its name and category together.
    void CompareTitle(const std::string& file, ScriptVerdict& verdict) {
        if (verdict.title.empty()) return;
        const auto [first, isNew] = titles_.try_emplace(verdict.title, file);
        if (isNew) return;
        verdict.diagnostics.Add("C104", verdict.name,
                                Quoted(verdict.title) + " is registered already, by " +
                                    Printable(ValidUtf8(first->second)));
        verdict.diagnostics.Sort();
    }

    Session& session_;
    const bool strict_;
    const bool short_;
    ScriptChecker checker_;
    std::map<std::wstring, std::string> titles_;  // and the file that had each first
    Json documents_ = Json::array();
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
    std::size_t notes_ = 0;
    std::optional<ExitCode> failure_;
};

ExitCode RunCheck(const Arguments& arguments, Session& session) {
    const std::vector<std::string> files = arguments.Values("FILE");
    Checking checking(arguments, session);
    for (std::size_t i = 0; i < files.size(); ++i) {
        checking.Check(files[i], i + 1, files.size());
    }
    return checking.Finish();
}

}  // namespace

CommandSpec CheckCommand() {
    CommandSpec command;
    command.name = "check";
    command.summary = "reads composition scripts as the library does and explains what is lost";
    command.description = {
        "Every script is read with the library's own reader. What it refuses, where a section ends "
        "before the next header, which statements are passed over, names that nothing declares and "
        "declarations that nothing uses are told with their place and, where it is known, the "
        "cause.",
        "Exit code 1 when there are errors. Every finding has a code: \"tarnexctl explain CODE\" "
        "tells more, with an example.",
        "Columns count characters, a tab as one."};
    command.arguments = {
        {"FILE", "Scripts; compared with each other by name and category.", ValueKind::kFile}};
    command.arguments[0].repeats = true;
    command.options = {{"--strict", "-s", "", "Count warnings as errors."},
                       {"--format",
                        "-f",
                        "FORM",
                        "How findings are printed: with their source line, or one line each.",
                        ValueKind::kChoice,
                        {"full", "short"}}};
    command.examples = {
        {"tarnexctl check wipe.txt", "What is wrong with one script."},
        {"tarnexctl check --strict --format short compositions/*.txt",
         "Every script of a folder, one line per finding, for editors and build machines."},
        {"tarnexctl check --json wipe.txt", "The same for a program."}};
    command.run = RunCheck;
    return command;
}

}  // namespace tarnexctl
