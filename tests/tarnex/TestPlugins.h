#pragma once

// Where the tests' own plug-ins lie: beside the folder that this program is in.

#include <string>

#include "platform/Module.h"
#include "support/Text.h"

namespace tarnex {

inline std::wstring PluginFolder() {
    const auto bin = test_support::PathFromUtf8(test_support::Utf8(platform::ExecutablePath()));
    return test_support::Wide(test_support::Utf8(bin.parent_path().parent_path() / "test_plugins"));
}

}  // namespace tarnex
