// Hidden: describes one effect of one library in this process, for "info".

#include "commands/Commands.h"
#include "frame/Session.h"
#include "frame/Text.h"
#include "platform/ChildProcess.h"
#include "platform/Module.h"
#include "probe/ChildReport.h"
#include "probe/Guarded.h"
#include "probe/PropertyValue.h"
#include "tarnex/GlobalFxFactory.h"

namespace tarnexctl {
namespace {

void Describe(const std::string& path, std::uint64_t index, ChildReport& report) {
    void* const module = platform::LoadModule(ToWide(path));
    if (module == nullptr) return;
    const auto entry =
        reinterpret_cast<tarnex::PluginEntry*>(platform::ResolveSymbol(module, "CreateFactory"));
    if (entry == nullptr) return;
    std::shared_ptr<fx::IVorelFXFactory> factory;
    std::shared_ptr<fx::IBaseFX> effect;
    if (entry(factory) != fx::eSuccess || factory == nullptr) return;
    report.Value("factoryName", ToUtf8(factory->GetFXName(index)));
    if (factory->CreateFX(index, effect) != fx::eSuccess || effect == nullptr) return;
    report.Value("valid", effect->IsValid());
    report.Value("properties", DescribeProperties(*effect));
}

ExitCode RunInfoChild(const Arguments& arguments, Session&) {
    ChildReport report;
    report.Step("describing the effect");
    const auto index = arguments.Number("INDEX", 0, UINT32_MAX).value_or(0);
    Guarded([&] { Describe(arguments.ValueOr("LIBRARY", ""), index, report); },
            [&](const std::string& what) { report.Add("P307", what); });
    report.Done();
    platform::EndProcess(0);
}

}  // namespace

CommandSpec InfoChildCommand() {
    CommandSpec command;
    command.name = "info-child";
    command.summary = "describes one effect in this process";
    command.arguments = {{"INDEX", "Within the library.", ValueKind::kNumber},
                         {"LIBRARY", "An absolute path.", ValueKind::kFile}};
    command.run = RunInfoChild;
    command.hidden = true;
    return command;
}

}  // namespace tarnexctl
