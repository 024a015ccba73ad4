#include "probe/Diagnosis.h"

#include "frame/Text.h"
#include "platform/Module.h"

namespace tarnexctl {
namespace {

constexpr char kEntryName[] = "CreateFactory";

// This program shares the library's C++ runtime, machine and system: its own file tells them.
const LibraryImage& OwnImage() {
    static const LibraryImage kImage = [] {
        std::string problem;
        const auto path = ToPath(ToUtf8(platform::ExecutablePath()));
        return ReadLibraryImage(ReadWholeFile(path, problem));
    }();
    return kImage;
}

const char* SystemOf(ImageFormat format) {
    return format == ImageFormat::kPe ? "Windows" : "Linux";
}

void CheckFile(Diagnosis& diagnosis) {
    const LibraryImage& image = diagnosis.image;
    const auto refuse = [&](const char* code, std::string detail) {
        diagnosis.findings.push_back({code, std::move(detail)});
        diagnosis.loadable = false;
    };
    if (image.format == ImageFormat::kUnknown) return refuse("P101", image.problem);
    if (image.format != OwnImage().format) {
        return refuse("P103", std::string("it is for ") + SystemOf(image.format) + ", this is " +
                                  SystemOf(OwnImage().format));
    }
    if (!image.problem.empty()) return refuse("P102", image.problem);
    if (image.machine != OwnImage().machine) {
        refuse("P104", "it is for " + image.machine + ", this is " + OwnImage().machine);
    }
    if (!image.isLibrary) refuse("P112", "");
}

void CheckDependencies(Diagnosis& diagnosis) {
    for (const Dependency& dependency : diagnosis.dependencies) {
        const std::string who = "\"" + dependency.name + "\", needed by " + dependency.wantedBy;
        if (dependency.missing) {
            diagnosis.findings.push_back({dependency.delayed ? "P113" : "P106", who});
            diagnosis.loadable = diagnosis.loadable && dependency.delayed;
        } else if (!dependency.wrongMachine.empty()) {
            diagnosis.findings.push_back({"P107", who + ", is for " + dependency.wrongMachine});
        } else if (!dependency.missingFunction.empty()) {
            diagnosis.findings.push_back(
                {"P108", who + ", has no \"" + dependency.missingFunction + "\""});
        }
    }
}

void CheckRuntime(Diagnosis& diagnosis) {
    const std::string own = SharedCppRuntime(OwnImage());
    if (diagnosis.runtime.empty()) {
        diagnosis.findings.push_back({"P110", "the library shares " + own});
    } else if (diagnosis.runtime != own) {
        diagnosis.findings.push_back(
            {"P109", "it uses " + diagnosis.runtime + ", the library " + own});
    }
}

}  // namespace

Diagnosis Diagnose(const std::filesystem::path& path) {
    Diagnosis diagnosis;
    std::string problem;
    const std::vector<std::byte> bytes = ReadWholeFile(path, problem);
    diagnosis.image = ReadLibraryImage(bytes);
    if (!problem.empty()) diagnosis.image.problem = problem;
    CheckFile(diagnosis);
    if (diagnosis.image.format != OwnImage().format || !diagnosis.image.problem.empty()) {
        return diagnosis;
    }
    diagnosis.runtime = SharedCppRuntime(diagnosis.image);
    diagnosis.dependencies = FindDependencies(path, diagnosis.image);
    if (!diagnosis.image.Exports(kEntryName)) diagnosis.findings.push_back({"P105", ""});
    CheckDependencies(diagnosis);
    CheckRuntime(diagnosis);
    return diagnosis;
}

}  // namespace tarnexctl
