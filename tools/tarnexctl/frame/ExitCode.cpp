#include "frame/ExitCode.h"

namespace tarnexctl {

const char* ExitCodeName(ExitCode code) {
    switch (code) {
        case ExitCode::kFine:
            return "fine";
        case ExitCode::kFindings:
            return "findings";
        case ExitCode::kUsage:
            return "usage";
        case ExitCode::kNotFound:
            return "not-found";
        case ExitCode::kInputOutput:
            return "input-output";
        case ExitCode::kPlugin:
            return "plug-in";
        case ExitCode::kInternal:
            return "internal";
    }
    return "internal";
}

const char* ExitCodeMeaning(ExitCode code) {
    switch (code) {
        case ExitCode::kFine:
            return "everything is in order";
        case ExitCode::kFindings:
            return "the command found something wrong and says what";
        case ExitCode::kUsage:
            return "the command line makes no sense";
        case ExitCode::kNotFound:
            return "a file, folder, effect or command does not exist";
        case ExitCode::kInputOutput:
            return "something cannot be read, understood or written";
        case ExitCode::kPlugin:
            return "a plug-in crashed, hung or ended its process";
        case ExitCode::kInternal:
            return "a defect of this program";
    }
    return "";
}

}  // namespace tarnexctl
