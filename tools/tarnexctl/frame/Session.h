#pragma once

// What a running command talks to: its results, its messages, its JSON document.
//
// A command prints for people through Out() and fills Document() for programs; it may do both
// without asking, since Out() is silent when JSON was asked for, and the document is printed only
// then, once, when the command has ended.

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/ExitCode.h"
#include "frame/Json.h"
#include "frame/ProgressLine.h"
#include "frame/Writer.h"

namespace tarnexctl {

enum class ColourMode { kAuto, kAlways, kNever };

class Session {
public:
    // `json` silences Out().
    Session(std::string command, bool json, ColourMode colour);

    bool JsonWanted() const { return json_; }
    Writer& Out() { return out_; }
    Writer& Err() { return err_; }
    Json& Document() { return document_; }

    // A line to standard error that is not a result.
    void Warn(std::string_view message);

    // What a terminal shows as being done once the command has taken a second; call it as often as
    // convenient. `total` 0 when it is not known.
    void Progress(std::string_view what);
    void Progress(std::string_view what, std::uint64_t done, std::uint64_t total);

    // From here on the command only waits for others: nothing is shown.
    void EndProgress() { line_.Hide(); }

    // Ends the session: the failure's message, if any, and the document. Returns the code to exit
    // with, which is another one when the output could not be written.
    ExitCode Finish(ExitCode code);
    ExitCode Finish(const Failure& failure);

private:
    ExitCode WriteDocument(ExitCode code);

    std::string command_;
    bool json_;
    ProgressLine line_;  // the writers use it
    Writer out_;
    Writer err_;
    Json document_ = Json::object();
};

}  // namespace tarnexctl
