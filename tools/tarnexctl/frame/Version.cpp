#include "frame/Version.h"

#include "platform/Console.h"

namespace tarnexctl {

std::string VersionLine() {
    return std::string("tarnexctl ") + TARNEX_VERSION + " (" + platform::SystemName() + ", " +
           TARNEX_COMPILER + ")";
}

Json VersionDocument() {
    Json version;
    version["program"] = TARNEX_VERSION;
    version["system"] = platform::SystemName();
    version["compiler"] = TARNEX_COMPILER;
    return version;
}

}  // namespace tarnexctl
