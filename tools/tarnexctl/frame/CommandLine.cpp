#include "frame/CommandLine.h"

#include <CLI/CLI.hpp>
#include <deque>

#include "frame/CommandTable.h"
#include "frame/Suggest.h"

namespace tarnexctl {
namespace {

// Where CLI11 leaves what it read for one option or argument.
struct Slot {
    std::string name;
    CLI::Option* option = nullptr;
    bool isSwitch = false;
    std::vector<std::string> values = {};
};
using Slots = std::deque<Slot>;  // CLI11 keeps references to the values

std::string OptionNames(const OptionSpec& spec) {
    return spec.shortName.empty() ? spec.name : spec.shortName + "," + spec.name;
}

void AddOption(CLI::App& app, const OptionSpec& spec, Slots& slots) {
    Slot& slot = slots.emplace_back(Slot{spec.name, nullptr, spec.value.empty()});
    if (slot.isSwitch) {
        slot.option = app.add_flag(OptionNames(spec));
        return;
    }
    slot.option = app.add_option(OptionNames(spec), slot.values);
    // One value per mention: what follows may be the command's own argument.
    slot.option->allow_extra_args(false);
    if (spec.repeats) {
        slot.option->expected(1, CLI::detail::expected_max_vector_size);
    } else {
        slot.option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    }
    if (!spec.choices.empty()) slot.option->check(CLI::IsMember(spec.choices));
}

void AddArgument(CLI::App& app, const ArgumentSpec& spec, Slots& slots) {
    Slot& slot = slots.emplace_back(Slot{spec.name});
    slot.option = app.add_option(spec.name, slot.values);
    if (spec.repeats) {
        slot.option->expected(spec.required ? 1 : 0, 1 << 20);
    } else {
        slot.option->allow_extra_args(false)->expected(1);
    }
    if (spec.required) slot.option->required();
    if (!spec.choices.empty()) slot.option->check(CLI::IsMember(spec.choices));
}

void AddCommand(CLI::App& app, const CommandSpec& spec, Slots& slots) {
    CLI::App* const command = app.add_subcommand(spec.name, spec.summary);
    command->set_help_flag();
    command->allow_windows_style_options(false);
    for (const ArgumentSpec& argument : spec.arguments) AddArgument(*command, argument, slots);
    for (const OptionSpec& option : spec.options) AddOption(*command, option, slots);
    for (const OptionSpec& option : CommonOptions()) AddOption(*command, option, slots);
}

void Collect(const Slots& slots, Arguments& arguments) {
    for (const Slot& slot : slots) {
        if (slot.option->count() == 0) continue;
        if (slot.isSwitch) arguments.SetSwitch(slot.name);
        for (const std::string& value : slot.values) arguments.Add(slot.name, value);
    }
}

// The first argument that is no option names the command; the parser would call an unknown one an
// unexpected argument.
void RejectUnknownCommand(const std::vector<std::string>& arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--color") {
            ++i;
        } else if (argument.empty() || argument[0] != '-') {
            if (FindCommand(argument) != nullptr) return;
            std::vector<std::string> names;
            for (const CommandSpec* command : OfferedCommands()) names.push_back(command->name);
            const auto meant = Suggest(argument, names);
            throw Failure(ExitCode::kUsage, "there is no command \"" + argument + "\"",
                          meant ? "did you mean \"" + *meant + "\"?"
                                : "\"tarnexctl --help\" lists the commands");
        }
    }
}

bool Mentions(const std::vector<std::string>& arguments, const std::string& name,
              const std::string& shortName) {
    for (const std::string& argument : arguments) {
        if (argument == "--") return false;
        if (argument == name || argument == shortName) return true;
    }
    return false;
}

}  // namespace

CommandLine ReadCommonOptions(const std::vector<std::string>& arguments) {
    const std::string colour = "--color";
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--json") {
            line.arguments.SetSwitch(argument);
        } else if (argument.starts_with(colour + "=")) {
            line.arguments.Add(colour, argument.substr(colour.size() + 1));
        } else if (argument == colour && i + 1 < arguments.size()) {
            line.arguments.Add(colour, arguments[++i]);
        } else if (line.command == nullptr) {
            line.command = FindCommand(argument);
        }
    }
    return line;
}

CommandLine ReadCommandLine(const std::vector<std::string>& arguments) {
    RejectUnknownCommand(arguments);
    // Help is given even when the rest of the line is not complete.
    if (Mentions(arguments, "--help", "-h")) {
        CommandLine line = ReadCommonOptions(arguments);
        line.arguments.SetSwitch("--help");
        return line;
    }

    CLI::App app(kProgramSummary, kProgramName);
    app.set_help_flag();
    app.allow_windows_style_options(false);
    app.require_subcommand(0, 1);
    Slots slots;
    for (const OptionSpec& option : CommonOptions()) AddOption(app, option, slots);
    std::vector<Slots> commandSlots(CommandTable().size());
    for (std::size_t i = 0; i < commandSlots.size(); ++i) {
        AddCommand(app, CommandTable()[i], commandSlots[i]);
    }

    CommandLine line;
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        const auto named = app.get_subcommands();
        const std::string command = named.empty() ? "" : " " + named.front()->get_name();
        throw Failure(ExitCode::kUsage, error.what(),
                      "\"tarnexctl" + command + " --help\" shows what it takes");
    }
    Collect(slots, line.arguments);
    for (std::size_t i = 0; i < commandSlots.size(); ++i) {
        if (!app.got_subcommand(CommandTable()[i].name)) continue;
        line.command = &CommandTable()[i];
        Collect(commandSlots[i], line.arguments);
    }
    return line;
}

}  // namespace tarnexctl
