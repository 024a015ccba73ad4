#include "frame/ManPage.h"

#include "frame/CommandTable.h"
#include "frame/Help.h"

namespace tarnexctl {
namespace {

// Text that the formatter takes literally: no escapes, no requests, dashes that can be copied.
std::string Literal(const std::string& text) {
    std::string literal;
    bool lineStart = true;
    for (const char c : text) {
        if (lineStart && (c == '.' || c == '\'')) literal += "\\&";
        if (c == '\\') {
            literal += "\\e";
        } else if (c == '-') {
            literal += "\\-";
        } else {
            literal += c;
        }
        lineStart = c == '\n';
    }
    return literal;
}

std::string Trimmed(const std::string& text) {
    return text.substr(text.find_first_not_of(' '));
}

void AddItem(std::string& page, const std::string& heading, const std::string& text) {
    page += ".TP\n\\fB" + Literal(heading) + "\\fR\n" + Literal(text) + "\n";
}

void AddOptions(std::string& page, const std::vector<OptionSpec>& options) {
    for (const OptionSpec& option : options) {
        AddItem(page, Trimmed(OptionHeading(option)), option.help);
    }
}

void AddCommand(std::string& page, const CommandSpec& command) {
    page += ".SS " + Literal(command.name) + "\n\\fB" + Literal(UsageLine(command)) + "\\fR\n";
    page += ".PP\n" + Literal(command.summary) + ".\n";
    for (const std::string& paragraph : command.description) {
        page += ".PP\n" + Literal(paragraph) + "\n";
    }
    for (const ArgumentSpec& argument : command.arguments) {
        AddItem(page, argument.name, argument.help);
    }
    AddOptions(page, command.options);
    for (const ExampleSpec& example : command.examples) {
        page += ".PP\n.nf\n    " + Literal(example.line) + "\n.fi\n" + Literal(example.what) + "\n";
    }
}

}  // namespace

std::string ManPage() {
    std::string page = std::string(".TH TARNEXCTL 1 \"\" \"tarnex ") + TARNEX_VERSION +
                       "\" \"User Commands\"\n.SH NAME\n" + kProgramName + " \\- " +
                       Literal(kProgramSummary) + "\n.SH SYNOPSIS\n\\fB" + kProgramName +
                       "\\fR \\fICOMMAND\\fR [\\fIOPTIONS\\fR] ...\n.SH DESCRIPTION\n" +
                       "Results go to standard output, everything else to standard error. With "
                       "\\fB\\-\\-json\\fR exactly one JSON document goes to standard output, "
                       "failures included.\n.SH OPTIONS\n";
    AddOptions(page, CommonOptions());
    page += ".SH COMMANDS\n";
    for (const CommandSpec* command : OfferedCommands()) AddCommand(page, *command);
    page += ".SH EXIT STATUS\n";
    for (int code = 0; code <= static_cast<int>(ExitCode::kInternal); ++code) {
        AddItem(page, std::to_string(code), ExitCodeMeaning(static_cast<ExitCode>(code)));
    }
    page += ".SH ENVIRONMENT\n";
    AddItem(page, "NO_COLOR",
            "When set and not empty, colours are never used unless --color "
            "always asks for them.");
    AddItem(page, "TARNEX_SETTINGS", "Where there is no registry: the settings file.");
    return page;
}

}  // namespace tarnexctl
