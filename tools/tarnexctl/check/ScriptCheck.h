#pragma once

// Checks composition scripts with the library's own reader. Scripts that are in order cost hardly
// more than reading them.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "check/Diagnostics.h"
#include "check/Recording.h"
#include "compositions/ReadStatus.h"

namespace tarnexctl {

struct ScriptVerdict {
    std::int32_t readStatus = compositions::status::kNotRead;
    compositions::SectionStatuses sections;
    std::wstring title;  // "name\category", as a composition is registered; empty for none
    ByteRange name;      // where NAME is set
    Diagnostics diagnostics;
};

// For one thread; used again for the next script, it saves allocations.
class ScriptChecker {
public:
    // `onStage` is called a few times while a script is checked.
    ScriptVerdict Check(std::string_view bytes, const std::function<void()>& onStage = {});

private:
    Recording recording_;
};

}  // namespace tarnexctl
