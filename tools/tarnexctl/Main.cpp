#include "frame/Run.h"
#include "platform/Console.h"

// What makes a module run the process's trace log when it is loaded. Defined here, it is not
// linked: a tool that runs beside a host, several times within a second, must not open that host's
// log anew.
extern "C" {
extern const int TarnexTraceService;
const int TarnexTraceService = 0;
}

int main(int argc, char** argv) {
    platform::PrepareConsole();
    return tarnexctl::Run(platform::ProgramArguments(argc, argv));
}
