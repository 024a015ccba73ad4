#include "output/Format.h"

#include <algorithm>

#include "frame/Text.h"

namespace tarnexctl {

OptionSpec FormatOption(const std::vector<std::string>& formats) {
    return {"--format",
            "",
            "FORMAT",
            "Which form to write; without it the output file's extension decides, and " +
                formats.front() + " is written otherwise.",
            ValueKind::kChoice,
            formats};
}

std::string WantedFormat(const Arguments& arguments, const std::vector<std::string>& formats) {
    if (const auto format = arguments.Value("--format")) return *format;
    const std::string extension = FromPath(ToPath(arguments.ValueOr("--output", "")).extension());
    for (const std::string& format : formats) {
        if (extension == "." + format) return format;
    }
    return formats.front();
}

}  // namespace tarnexctl
