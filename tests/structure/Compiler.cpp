#include "Compiler.h"

#include <gtest/gtest.h>
#include <stdio.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>

namespace structure {

namespace {

std::string Quoted(const std::string& argument) {
    std::string quoted = "'";
    for (const char character : argument) {
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return quoted + "'";
}

}  // namespace

CommandResult Run(const std::vector<std::string>& command, const std::string& input) {
    static std::atomic<int> serial{0};
    const std::filesystem::path inputFile =
        std::filesystem::temp_directory_path() /
        ("structure-" + std::to_string(getpid()) + "-" +
         std::to_string(serial.fetch_add(1, std::memory_order_relaxed)));
    std::ofstream(inputFile) << input;

    std::string line;
    for (const std::string& argument : command) line += Quoted(argument) + " ";
    line += "2>&1 <" + Quoted(inputFile.string());

    CommandResult result;
    if (FILE* pipe = popen(line.c_str(), "r")) {
        char buffer[4096];
        for (std::size_t count; (count = fread(buffer, 1, sizeof(buffer), pipe)) > 0;) {
            result.output.append(buffer, count);
        }
        result.status = pclose(pipe);
    }
    std::filesystem::remove(inputFile);
    return result;
}

}  // namespace structure
