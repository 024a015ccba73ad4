#pragma once

// The parent's side: runs this program again with one of its hidden commands and reads its report.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "frame/Json.h"
#include "platform/ChildProcess.h"
#include "probe/Findings.h"

namespace tarnexctl {

struct ChildOutcome {
    std::vector<Finding> findings;                     // crash, hang or exit included, last
    std::vector<std::pair<std::string, Json>> values;  // in the order of the report
    bool finished = false;                             // the child came to its end
    std::string lastStep;
    std::string noise;  // what other code wrote to standard output and error

    // The last value of that key; null when there is none.
    const Json* Find(const std::string& key) const;
};

ChildOutcome RunOwnChild(const std::vector<std::string>& arguments, std::uint32_t timeoutMs);

}  // namespace tarnexctl
