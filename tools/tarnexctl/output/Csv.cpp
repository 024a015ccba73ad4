#include "output/Csv.h"

namespace tarnexctl {
namespace {

std::string QuotedField(const std::string& value) {
    if (value.find_first_of(",\"\r\n") == std::string::npos) return value;
    std::string quoted = "\"";
    for (const char c : value) {
        if (c == '"') quoted += '"';
        quoted += c;
    }
    return quoted + '"';
}

}  // namespace

std::string CsvRow(const std::vector<std::string>& values) {
    std::string row;
    for (std::size_t i = 0; i < values.size(); ++i)
        row += (i > 0 ? "," : "") + QuotedField(values[i]);
    return row + "\n";
}

}  // namespace tarnexctl
