#include "support/ChildProcess.h"

namespace test_support {

ChildProcess::~ChildProcess() {
    Wait();
}

bool ChildProcess::ReadLine(std::string& line) {
    std::size_t end;
    while ((end = pending_.find('\n')) == std::string::npos) {
        if (!Fill()) {
            return false;
        }
    }
    line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

}  // namespace test_support
