// Hidden: loads the library in this process and says whether it got the ownership, for "doctor".

#include <chrono>
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

ExitCode RunOwnershipChild(const Arguments& arguments, Session&) {
    ChildReport report;
    Ask(arguments.ValueOr("LIBRARY", ""), report);
    const auto hold = arguments.Number("--hold", 0, 60000).value_or(0);
    std::this_thread::sleep_for(std::chrono::milliseconds(hold));
    report.Done();
    platform::EndProcess(0);
}

}  // namespace

CommandSpec OwnershipChildCommand() {
    CommandSpec command;
    command.name = "ownership-child";
    command.summary = "asks the library for its manager in this process";
    command.arguments = {{"LIBRARY", "An absolute path.", ValueKind::kFile}};
    command.options = {{"--hold", "", "MS", "Keep it loaded that long.", ValueKind::kNumber}};
    command.run = RunOwnershipChild;
    command.hidden = true;
    return command;
}

}  // namespace tarnexctl
