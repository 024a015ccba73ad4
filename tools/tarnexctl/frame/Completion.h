#pragma once

#include <string>
#include <vector>

namespace tarnexctl {

// The shells that completions can be made for.
const std::vector<std::string>& CompletionShells();

// The script that makes the shell complete the commands, options and values of the command table.
std::string CompletionScript(const std::string& shell);

// One body per shell.
std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();
std::string PowerShellCompletion();

}  // namespace tarnexctl
