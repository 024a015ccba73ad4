#pragma once

// JSON documents keep their keys in the order of insertion, so that output is stable.

#include <nlohmann/json.hpp>

namespace tarnexctl {

using Json = nlohmann::ordered_json;

}  // namespace tarnexctl
