// Hidden: loads the library in this process and says whether it got the ownership, for "doctor".

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include "commands/Commands.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "platform/ChildProcess.h"
#include "platform/LibrarySearch.h"
#include "platform/Module.h"
#include "probe/ChildReport.h"
#include "tarnex/ITarnex.h"

namespace tarnexctl {
namespace {

void Ask(const std::string& library, ChildReport& report) {
    report.Step("loading the library");
    void* const module = platform::LoadModule(ToWide(library));
    if (module == nullptr) {
        const std::string reason = platform::LastModuleError();
        return report.Add("P111", FromSystemBytes(reason));
    }
    report.Step("GetTarnex");
    const auto getTarnex =
        reinterpret_cast<decltype(&GetTarnex)>(platform::ResolveSymbol(module, "GetTarnex"));
    if (getTarnex == nullptr) return;
    std::shared_ptr<tarnex::ITarnex> manager;
    (void)getTarnex(manager);  // the pointer tells: the code is always success
    report.Value("owned", manager != nullptr);
}

// Says with the file that the library is loaded, and keeps it so until somebody removes the file.
void Hold(const std::filesystem::path& file) {
    using namespace std::chrono_literals;
    constexpr auto kLongest = 120s;
    std::ofstream(file).put('\n');
    std::error_code ignored;
    const auto end = std::chrono::steady_clock::now() + kLongest;
    while (std::filesystem::exists(file, ignored) && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(10ms);
    }
}

ExitCode RunOwnershipChild(const Arguments& arguments, Session&) {
    ChildReport report;
    Ask(arguments.ValueOr("LIBRARY", ""), report);
    if (const std::string file = arguments.ValueOr("--hold", ""); !file.empty()) Hold(ToPath(file));
    report.Done();
    platform::EndProcess(0);
}

}  // namespace

CommandSpec OwnershipChildCommand() {
    CommandSpec command;
    command.name = "ownership-child";
    command.summary = "asks the library for its manager in this process";
    command.arguments = {{"LIBRARY", "An absolute path.", ValueKind::kFile}};
    command.options = {{"--hold", "", "FILE",
                        "Make the file, and keep it loaded while the file is there.",
                        ValueKind::kFile}};
    command.run = RunOwnershipChild;
    command.hidden = true;
    return command;
}

}  // namespace tarnexctl
