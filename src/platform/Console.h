#pragma once

// What a command-line program needs of its system. Texts are UTF-8 on both sides of every function.

#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class Stream { kOutput, kError };

// Call once, first: makes a terminal show colours and letters of every script.
void PrepareConsole();

// The program's arguments without its own name. `argc` and `argv` are those of main; they are not
// used where the system keeps the arguments in wide characters.
std::vector<std::string> ProgramArguments(int argc, char** argv);

bool IsTerminal(Stream stream);

// False when the text could not be written whole.
bool WriteStream(Stream stream, std::string_view text);

// From now on only WriteStream reaches the standard output; what other code in this process writes
// there goes to standard error instead. Not undone.
void ReserveOutput();

// Empty when the variable does not exist.
std::string EnvironmentVariable(const std::string& name);

// "Windows x64", "Linux x64".
const char* SystemName();

}  // namespace platform
