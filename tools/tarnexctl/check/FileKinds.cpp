#include "check/DiagnosticKinds.h"

namespace tarnexctl {
namespace {

using enum Severity;
using namespace std::string_view_literals;

// clang-format off
// C1: what is found before a script is read, or among several.
constexpr DiagnosticKind kFileKinds[] = {
    {"C101", kError, "the script is empty",
     "A file without a byte counts as one that is not there.",
     "",
     kLeastScript, true},
    {"C102", kError, "the script is saved as UTF-16",
     "The library reads bytes. In UTF-16 every second byte of plain letters is a zero, so no "
     "header is found. Save the script as UTF-8 or in the system's code page.",
     "\xFF\xFE[\0S\0E\0T\0U\0P\0]\0\n\0"sv,
     kLeastScript, true},
    {"C103", kError, "a zero byte in the script",
     "No editor writes one: the file is no text, or it is damaged. Names end at a zero byte.",
     "[SETUP]\n"
     "NAME = \"Soft\0Focus\"\n"sv,
     kLeastScript, true},
    {"C104", kError, "two scripts with one name and category",
     "A composition is listed as its name, a backslash and its category, case included. "
     "Registering a second one of that name puts it in the place of the first, and from then "
     "on the last index of the list leads nowhere: every later registration suffers.",
     kLeastScript,
     kLeastScript, true},
};
// clang-format on

}  // namespace

std::span<const DiagnosticKind> FileKinds() {
    return kFileKinds;
}

}  // namespace tarnexctl
