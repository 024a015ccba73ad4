#include "host/HostSession.h"

#include <algorithm>
#include <fstream>

#include "platform/Module.h"

namespace host_test {

namespace fs = std::filesystem;
using test_support::PathFromUtf8;

namespace {

fs::path BinFolder() {
    return PathFromUtf8(Utf8(platform::ExecutablePath())).parent_path();
}

std::vector<std::string> Lines(const fs::path& file) {
    std::vector<std::string> lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

std::vector<fs::path> LogPaths(const fs::path& folder) {
    std::vector<fs::path> files;
    if (fs::exists(folder / "Logs")) {
        for (const auto& entry : fs::directory_iterator(folder / "Logs")) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

fs::path ProbeFile() {
    return fs::path("host_probe") += fs::path(platform::ExecutablePath()).extension();
}

}  // namespace

Sandbox::Sandbox() {
    int run = 0;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    folder_ = BinFolder().parent_path() / "sandboxes" /
              (std::string(test->test_suite_name()) + "." + test->name());
    // What an earlier run left may still be in use: some system process keeps every handle that was
    // open when a host started it.
    std::error_code inUse;
    for (const fs::path base = folder_; fs::remove_all(folder_, inUse), fs::exists(folder_);) {
        folder_ = base;
        folder_ += "." + std::to_string(++run);
    }
    fs::create_directories(folder_);
    fs::copy_file(BinFolder() / test_support::kTarnexFile, folder_ / test_support::kTarnexFile);
    fs::copy_file(BinFolder() / ProbeFile(), folder_ / ProbeFile());
}

fs::path Sandbox::PluginSource(const std::string& file) const {
    return BinFolder().parent_path() / "test_plugins" / file;
}

std::string Sandbox::AddPlugins(const std::vector<std::string>& names, const std::string& folder) {
    const fs::path target = folder_ / PathFromUtf8(folder);
    fs::create_directories(target);
    std::string list;
    for (const std::string& name : names) {
        fs::copy_file(PluginSource(name + ".plugin"), target / (name + ".plugin"),
                      fs::copy_options::overwrite_existing);
        list += name + ".plugin|";
    }
    return list;
}

std::vector<std::string> Sandbox::LogMessages() const {
    std::vector<std::string> messages;
    for (const fs::path& file : LogPaths(folder_)) {
        std::vector<std::string> lines = Lines(file);
        for (std::size_t i = 1; i < lines.size(); ++i) {
            const std::size_t end = lines[i].find("] ");
            messages.push_back(end == std::string::npos ? lines[i] : lines[i].substr(end + 2));
        }
    }
    return messages;
}

std::size_t Sandbox::LogFiles() const {
    return LogPaths(folder_).size();
}

std::vector<std::string> Sandbox::DebugLines() const {
    return Lines(folder_ / "stderr.txt");
}

Host::Host(const Sandbox& sandbox, const test_support::ScopedLogSettings* log)
    : library_(sandbox.Folder() / test_support::kTarnexFile), folder_(sandbox.Folder()) {
    test_support::ChildOptions options{folder_, folder_ / "stderr.txt", {}, {}};
    if (log != nullptr) {
        options.environment = log->Environment();
    }
    // The manager outlives the library by design, which a leak checker cannot tell from a leak.
    options.environment["LSAN_OPTIONS"] = "detect_leaks=0";
    process_ = std::make_unique<test_support::ChildProcess>(folder_ / ProbeFile(), options);
}

void Host::Send(const std::vector<std::string>& command) {
    std::string line = command[0];
    for (std::size_t i = 1; i < command.size(); ++i) {
        line += "\t" + command[i];
    }
    process_->WriteLine(line);
}

std::string Host::Do(const std::vector<std::string>& command) {
    Send(command);
    std::string answer;
    for (std::string part; process_->ReadLine(part) && part != ".";) {
        answer += (answer.empty() ? "" : "\n") + part;
    }
    return answer;
}

void Host::Start(const std::string& pluginList) {
    ASSERT_EQ(Do({"load", Utf8(library_)}), "loaded");
    ASSERT_EQ(Do({"get"}), "0 set");
    ASSERT_EQ(Do({"factory", Utf8(folder_), pluginList, Utf8(folder_ / "compositions")}), "0 set");
}

std::string Host::Rest() {
    std::string rest;
    for (std::string line; process_->ReadLine(line);) {
        rest += line + "\n";
    }
    return rest;
}

}  // namespace host_test
