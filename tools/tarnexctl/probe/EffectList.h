#pragma once

// The list of effects as a host would get it, made without running plug-in code in this process:
// every library is given a factory of its own in a child process, and the lists are put together in
// load order. A library that would take the rest with it is left out and named.

#include <cstdint>
#include <string>
#include <vector>

#include "frame/Command.h"
#include "frame/Session.h"
#include "probe/Findings.h"
#include "probe/PluginFolder.h"

namespace tarnexctl {

struct ListedEffect {
    std::uint64_t index = 0;       // global
    std::uint64_t localIndex = 0;  // within its library
    std::string name;              // the descriptor's id
    std::uint32_t flags = 0;
    std::uint64_t inputs = 0;
    bool enabled = true;
    std::string from;  // the library's or the script's path
    bool isComposition = false;
};

struct ListedLibrary {
    PluginFile file;
    std::uint32_t count = 0;  // the effects that it claims
    std::vector<Finding> findings;
    bool notAPlugin = false;  // met in a folder, exports nothing of a plug-in: no finding
};

struct ListedComposition {
    std::string script;   // as given, or the file's name in its folder
    std::string problem;  // empty when it was registered
};

struct EffectList {
    std::vector<ListedEffect> effects;
    std::vector<ListedLibrary> libraries;
    std::vector<ListedComposition> compositions;

    bool HasFindings() const;
    bool HasCrashes() const;
};

// The arguments and options by which a command is told what to list: FOLDER, --plugin,
// --compositions, --register, --timeout.
std::vector<OptionSpec> EffectListOptions();
ArgumentSpec EffectListFolder();
EffectList ReadEffectList(const Arguments& arguments, Session& session);

// "filter", "multiple inputs", "standard", what is left as a number.
std::string FlagWords(std::uint32_t flags);

// One line to standard error for everything that was left out.
void WarnOfFindings(const EffectList& list, Session& session);

}  // namespace tarnexctl
