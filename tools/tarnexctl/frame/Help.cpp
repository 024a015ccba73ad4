#include "frame/Help.h"

#include <algorithm>
#include <string_view>

#include "frame/CommandTable.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

struct Item {
    std::string heading;
    std::string help;
};

void PrintItems(Writer& out, const std::vector<Item>& items) {
    std::size_t width = 0;
    for (const Item& item : items) width = std::max(width, DisplayWidth(item.heading));
    width = std::min<std::size_t>(width, 24);
    for (const Item& item : items) {
        const std::string indent(width + 4, ' ');
        const std::string text = Wrapped(item.help, indent);
        out << "  " << item.heading;
        if (DisplayWidth(item.heading) <= width) {
            const std::string blanks(width - DisplayWidth(item.heading) + 2, ' ');
            out << blanks << std::string_view(text).substr(indent.size());
        } else {
            out << "\n" << text;
        }
    }
}

void PrintHeading(Writer& out, const char* heading) {
    out << "\n" << out.Paint(Style::kBold, heading) << "\n";
}

std::vector<Item> OptionItems(const std::vector<OptionSpec>& options) {
    std::vector<Item> items;
    items.reserve(options.size());
    for (const OptionSpec& option : options) items.push_back({OptionHeading(option), option.help});
    return items;
}

}  // namespace

std::string OptionHeading(const OptionSpec& option) {
    std::string heading = option.shortName.empty() ? "    " : option.shortName + ", ";
    heading += option.name;
    if (!option.value.empty()) heading += ' ' + option.value;
    return heading;
}

std::string UsageLine(const CommandSpec& command) {
    std::string line = std::string(kProgramName) + ' ' + command.name + " [OPTIONS]";
    for (const ArgumentSpec& argument : command.arguments) {
        const std::string name = argument.name + (argument.repeats ? "..." : "");
        line += argument.required ? ' ' + name : " [" + name + "]";
    }
    return line;
}

void PrintProgramHelp(Writer& out) {
    out << kProgramName << " " << kProgramSummary << ".\n";
    PrintHeading(out, "Usage:");
    out << "  " << kProgramName << " COMMAND [OPTIONS] ...\n";
    PrintHeading(out, "Commands:");
    std::vector<Item> items;
    for (const CommandSpec* command : OfferedCommands()) {
        items.push_back({command->name, command->summary});
    }
    PrintItems(out, items);
    PrintHeading(out, "Options of every command:");
    PrintItems(out, OptionItems(CommonOptions()));
    PrintHeading(out, "Exit codes:");
    items.clear();
    for (int code = 0; code <= static_cast<int>(ExitCode::kInternal); ++code) {
        items.push_back({std::to_string(code), ExitCodeMeaning(static_cast<ExitCode>(code))});
    }
    PrintItems(out, items);
    out << "\n\"" << kProgramName << " COMMAND --help\" explains a command, with examples.\n";
}

void PrintCommandHelp(Writer& out, const CommandSpec& command) {
    out << out.Paint(Style::kBold, std::string(kProgramName) + ' ' + command.name) << ": "
        << command.summary << "\n";
    PrintHeading(out, "Usage:");
    out << "  " << UsageLine(command) << "\n";
    for (const std::string& paragraph : command.description) {
        out << "\n" << Wrapped(paragraph, "");
    }
    if (!command.arguments.empty()) {
        PrintHeading(out, "Arguments:");
        std::vector<Item> items;
        for (const ArgumentSpec& argument : command.arguments) {
            items.push_back({argument.name, argument.help});
        }
        PrintItems(out, items);
    }
    PrintHeading(out, "Options:");
    std::vector<OptionSpec> options = command.options;
    options.insert(options.end(), CommonOptions().begin(), CommonOptions().end());
    PrintItems(out, OptionItems(options));
    if (command.examples.empty()) return;
    PrintHeading(out, "Examples:");
    for (const ExampleSpec& example : command.examples) {
        out << "  " << example.line << "\n" << Wrapped(example.what, "      ");
    }
}

}  // namespace tarnexctl
