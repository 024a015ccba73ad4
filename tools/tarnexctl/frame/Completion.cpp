#include "frame/Completion.h"

namespace tarnexctl {

const std::vector<std::string>& CompletionShells() {
    static const std::vector<std::string> kShells = {"bash", "zsh", "fish", "powershell"};
    return kShells;
}

std::string CompletionScript(const std::string& shell) {
    if (shell == "bash") return BashCompletion();
    if (shell == "zsh") return ZshCompletion();
    if (shell == "fish") return FishCompletion();
    return PowerShellCompletion();
}

}  // namespace tarnexctl
