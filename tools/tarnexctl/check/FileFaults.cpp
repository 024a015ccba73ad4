#include "check/FileFaults.h"

namespace tarnexctl {
namespace {

using namespace std::string_view_literals;

// By its mark, or by the zeros that every second byte of plain letters has.
bool IsUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv)) return true;
    const std::string_view head = bytes.substr(0, 64);
    std::size_t zeros[2] = {};
    for (std::size_t i = 0; i < head.size(); ++i) zeros[i % 2] += head[i] == '\0' ? 1 : 0;
    const std::size_t pairs = head.size() / 2;
    return pairs >= 4 && ((zeros[0] > pairs * 3 / 4 && zeros[1] == 0) ||
                          (zeros[1] > pairs * 3 / 4 && zeros[0] == 0));
}

}  // namespace

bool CheckFileFaults(std::string_view bytes, Diagnostics& diagnostics) {
    if (bytes.empty()) {
        diagnostics.Add("C101", {}, "the script is empty");
        return true;
    }
    const std::size_t zero = bytes.find('\0');
    if (zero == bytes.npos && !bytes.starts_with("\xFF\xFE"sv) &&
        !bytes.starts_with("\xFE\xFF"sv)) {
        return false;
    }
    if (IsUtf16(bytes)) {
        diagnostics.Add("C102", {}, "the script is saved as UTF-16, of which nothing is read",
                        {"save it as UTF-8, or in the system's own code page"});
    } else {
        diagnostics.Add("C103", {zero, zero + 1}, "a zero byte: this is no text");
    }
    return true;
}

}  // namespace tarnexctl
