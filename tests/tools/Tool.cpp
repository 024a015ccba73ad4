#include "Tool.h"

#include <gtest/gtest.h>

#include <fstream>

#include "frame/Text.h"
#include "platform/LibrarySearch.h"
#include "platform/Module.h"
#include "platform/Thread.h"

namespace tooltest {

namespace fs = std::filesystem;
using tarnexctl::FromPath;
using tarnexctl::ToPath;

fs::path ProgramFolder() {
    return ToPath(tarnexctl::ToUtf8(platform::ExecutablePath())).parent_path();
}

namespace {

std::string Program() {
    const bool windows = std::string(platform::LibraryExtension()) == ".dll";
    return FromPath(ProgramFolder() / (windows ? "tarnexctl.exe" : "tarnexctl"));
}

ToolRun Run(const platform::ChildRequest& request) {
    platform::ChildResult result = platform::RunChild(request);
    ToolRun run;
    run.ended = result.end == platform::ChildEnd::kExited;
    EXPECT_TRUE(run.ended) << result.reason;
    run.code = static_cast<int>(result.code);
    run.out = std::move(result.output);
    run.err = std::move(result.error);
    EXPECT_TRUE(tarnexctl::IsValidUtf8(run.out)) << run.out;
    EXPECT_TRUE(tarnexctl::IsValidUtf8(run.err)) << run.err;
    return run;
}

}  // namespace

ToolRun RunTool(const std::vector<std::string>& arguments,
                const std::vector<std::pair<std::string, std::string>>& environment) {
    platform::ChildRequest request;
    request.program = Program();
    request.arguments = arguments;
    request.environment = environment;
    return Run(request);
}

ToolRun RunShell(const std::string& command, const std::string& shell) {
    platform::ChildRequest request;
    request.program = shell;
    request.arguments = {"-c", command, "sh", Program()};
    return Run(request);
}

std::string RunOnTerminal(const std::string& arguments, const std::string& environment) {
    return RunShell("TERM=xterm " + environment + " script -qec \"'$1' " + arguments +
                    "\" /dev/null")
        .out;
}

Json RunForJson(std::vector<std::string> arguments, int expectedCode,
                const std::vector<std::pair<std::string, std::string>>& environment) {
    arguments.push_back("--json");
    const ToolRun run = RunTool(arguments, environment);
    EXPECT_EQ(run.code, expectedCode) << run.out << run.err;
    Json document = Json::parse(run.out, nullptr, false);
    EXPECT_TRUE(document.is_object()) << run.out;
    if (!document.is_object()) return Json::object();
    EXPECT_EQ(document.value("exit", -1), expectedCode);
    return document;
}

std::string ToolPlugin(const std::string& name) {
    return FromPath(ProgramFolder().parent_path() / "tool_plugins" / (name + ".plugin"));
}

std::string TestPlugin(const std::string& name) {
    return FromPath(ProgramFolder().parent_path() / "test_plugins" / (name + ".plugin"));
}

std::vector<std::string> CodesOf(const Json& findings) {
    std::vector<std::string> codes;
    for (const Json& finding : findings) codes.push_back(finding.value("code", ""));
    return codes;
}

ScratchFolder::ScratchFolder() {
    static int counter = 0;
    path_ = fs::temp_directory_path() /
            ToPath("tarnexctl \xC3\xA4\xE6\xBC\xA2 " +
                   std::to_string(platform::CurrentProcessId()) + "-" + std::to_string(++counter));
    fs::create_directories(path_);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string ScratchFolder::Write(const std::string& name, const std::string& bytes) const {
    const fs::path path = path_ / ToPath(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return FromPath(path);
}

}  // namespace tooltest
