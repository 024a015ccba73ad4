#include "frame/Run.h"
#include "platform/Console.h"

int main(int argc, char** argv) {
    platform::PrepareConsole();
    return tarnexctl::Run(platform::ProgramArguments(argc, argv));
}
