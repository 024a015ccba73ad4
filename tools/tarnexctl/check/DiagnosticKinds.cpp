#include "check/DiagnosticKinds.h"

namespace tarnexctl {
namespace {

struct SmallSection {
    const char* header;
    const char* statements;
};

constexpr SmallSection kSmallest[] = {
    {"[SETUP]", "NAME = \"Example\"\nCATEGORY = \"Examples\"\n"},
    {"[SOURCES]", "Video = INPUT\n"},
    {"[EFFECTS]", "Soften = \"Blur\\Video\"\n"},
    {"[STRUCTURE]", "OUTPUT = Soften(Video)\n"},
};

}  // namespace

const std::vector<DiagnosticKind>& DiagnosticKinds() {
    static const std::vector<DiagnosticKind> kKinds = [] {
        std::vector<DiagnosticKind> kinds;
        for (const auto part :
             {FileKinds(), RefusalKinds(), TextKinds(), StatementKinds(), UseKinds()}) {
            kinds.insert(kinds.end(), part.begin(), part.end());
        }
        return kinds;
    }();
    return kKinds;
}

const DiagnosticKind* FindDiagnosticKind(std::string_view code) {
    for (const DiagnosticKind& kind : DiagnosticKinds()) {
        if (code == kind.code) return &kind;
    }
    return nullptr;
}

std::string CompletedExample(const DiagnosticKind& kind, std::string_view example) {
    if (kind.whole) return std::string(example);
    std::string script;
    for (const SmallSection& section : kSmallest) {
        if (example.find(section.header) != std::string_view::npos) continue;
        script.append(section.header).append("\n").append(section.statements);
    }
    return script.append(example);
}

}  // namespace tarnexctl
