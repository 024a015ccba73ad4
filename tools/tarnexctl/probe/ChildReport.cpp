#include "probe/ChildReport.h"

#include "platform/ChildProcess.h"
#include "platform/Console.h"

namespace tarnexctl {

ChildReport::ChildReport() {
    platform::CrashQuietly();
    platform::ReserveOutput();
}

void ChildReport::Step(const std::string& what) {
    Write({{"step", what}});
}

void ChildReport::Add(const std::string& code, const std::string& detail) {
    Write({{"finding", code}, {"detail", detail}});
}

void ChildReport::Value(const std::string& key, const Json& value) {
    Write({{"key", key}, {"value", value}});
}

void ChildReport::Done() {
    Write({{"done", true}});
}

void ChildReport::Write(const Json& line) {
    const std::string text =
        line.dump(-1, ' ', false, nlohmann::detail::error_handler_t::replace) + "\n";
    (void)platform::WriteStream(platform::Stream::kOutput, text);  // a parent that is gone
}

}  // namespace tarnexctl
