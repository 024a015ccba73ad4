#include "frame/Session.h"

#include <utility>

#include "frame/Text.h"

namespace tarnexctl {
namespace {

bool WantsColour(ColourMode mode, platform::Stream stream) {
    if (mode != ColourMode::kAuto) return mode == ColourMode::kAlways;
    return platform::EnvironmentVariable("NO_COLOR").empty() &&
           platform::EnvironmentVariable("TERM") != "dumb" && platform::IsTerminal(stream);
}

}  // namespace

Session::Session(std::string command, bool json, ColourMode colour)
    : command_(std::move(command)),
      json_(json),
      out_(platform::Stream::kOutput, line_),
      err_(platform::Stream::kError, line_) {
    out_.SetColour(WantsColour(colour, platform::Stream::kOutput));
    err_.SetColour(WantsColour(colour, platform::Stream::kError));
    if (json_) out_.Mute();
    line_.Show("Working");
}

void Session::Warn(std::string_view message) {
    out_.Flush();
    err_ << "tarnexctl: " << err_.Paint(Style::kWarning, "warning: ") << message << "\n";
    err_.Flush();
}

void Session::Progress(std::string_view what) {
    line_.Show(std::string(what));
}

void Session::Progress(std::string_view what, std::uint64_t done, std::uint64_t total) {
    std::string text = std::string(what) + " " + std::to_string(done);
    if (total != 0) text += " of " + std::to_string(total);
    line_.Show(text);
}

ExitCode Session::Finish(ExitCode code) {
    out_.Flush();
    err_.Flush();
    return WriteDocument(code);
}

ExitCode Session::Finish(const Failure& failure) {
    out_.Flush();
    err_ << "tarnexctl: " << err_.Paint(Style::kError, "error: ") << failure.what() << "\n";
    if (!failure.Hint().empty()) {
        err_ << "tarnexctl: " << err_.Paint(Style::kNote, "note: ") << failure.Hint() << "\n";
    }
    err_.Flush();
    document_ = Json::object();
    Json& error = document_["error"];
    error["kind"] = ExitCodeName(failure.Code());
    error["message"] = failure.what();
    if (!failure.Hint().empty()) error["hint"] = failure.Hint();
    return WriteDocument(failure.Code());
}

ExitCode Session::WriteDocument(ExitCode code) {
    bool written = !out_.Failed();
    if (json_) {
        Json document;
        document["command"] = command_;
        document["exit"] = static_cast<int>(code);
        document.update(document_);
        const std::string text =
            document.dump(2, ' ', false, nlohmann::detail::error_handler_t::replace) + "\n";
        const auto paused = line_.Pause();
        written = platform::WriteStream(platform::Stream::kOutput, text);
    }
    if (written) return code;
    err_ << "tarnexctl: " << err_.Paint(Style::kError, "error: ")
         << "standard output cannot be written\n";
    err_.Flush();
    return ExitCode::kInputOutput;
}

}  // namespace tarnexctl
