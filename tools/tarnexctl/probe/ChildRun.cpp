#include "probe/ChildRun.h"

#include <sstream>

#include "frame/ExitCode.h"
#include "frame/Text.h"
#include "platform/Module.h"

namespace tarnexctl {
namespace {

// A line that the child did not finish is passed over.
void ReadReport(const std::string& report, ChildOutcome& outcome) {
    std::istringstream lines(report);
    for (std::string text; std::getline(lines, text);) {
        const Json line = Json::parse(text, nullptr, false);
        if (!line.is_object()) continue;
        if (line.contains("step")) outcome.lastStep = line.value("step", "");
        if (line.contains("done")) outcome.finished = true;
        if (line.contains("finding")) {
            outcome.findings.push_back({line.value("finding", ""), line.value("detail", "")});
        }
        if (line.contains("key")) outcome.values.emplace_back(line.value("key", ""), line["value"]);
    }
}

std::string At(const ChildOutcome& outcome) {
    return outcome.lastStep.empty() ? " before its first step" : " in " + outcome.lastStep;
}

void AddEnd(const platform::ChildResult& result, ChildOutcome& outcome) {
    switch (result.end) {
        case platform::ChildEnd::kCrashed:
            outcome.finished = false;
            outcome.findings.push_back({"P901", result.reason + At(outcome)});
            break;
        case platform::ChildEnd::kTimedOut:
            outcome.finished = false;
            outcome.findings.push_back({"P902", result.reason + At(outcome)});
            break;
        case platform::ChildEnd::kExited:
            if (outcome.finished) break;
            outcome.findings.push_back(
                {"P903", "exit code " + std::to_string(result.code) + At(outcome)});
            break;
        case platform::ChildEnd::kNotStarted:
            throw Failure(ExitCode::kInternal,
                          "the child process does not start: " + result.reason);
    }
}

}  // namespace

const Json* ChildOutcome::Find(const std::string& key) const {
    const Json* found = nullptr;
    for (const auto& [name, value] : values) {
        if (name == key) found = &value;
    }
    return found;
}

ChildOutcome RunOwnChild(const std::vector<std::string>& arguments, std::uint32_t timeoutMs) {
    platform::ChildRequest request;
    request.program = ToUtf8(platform::ExecutablePath());
    request.arguments = arguments;
    request.timeoutMs = timeoutMs;
    const platform::ChildResult result = platform::RunChild(request);
    ChildOutcome outcome;
    ReadReport(result.output, outcome);
    outcome.noise = FromSystemBytes(result.error.substr(0, 4096));
    AddEnd(result, outcome);
    return outcome;
}

}  // namespace tarnexctl
