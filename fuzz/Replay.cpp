// Every input that is kept, through its target: what a fuzzer found once is a test from then on.

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#define FUZZ_TARGET(name, folders) \
    extern "C" int Fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "Targets.inc"
#undef FUZZ_TARGET

namespace {

struct Target {
    const char* name;
    int (*run)(const std::uint8_t* data, std::size_t size);
    const char* folders;  // a bar stands between two
};

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

const Target kTargets[] = {
#define FUZZ_TARGET(name, folders) {#name, Fuzz_##name, folders},
#include "Targets.inc"
#undef FUZZ_TARGET
};

std::vector<std::filesystem::path> Inputs(const Target& target) {
    std::vector<std::filesystem::path> files;
    std::istringstream folders(target.folders);
    for (std::string folder; std::getline(folders, folder, '|');) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

class Replay : public testing::TestWithParam<Target> {};

TEST_P(Replay, EveryKeptInputPasses) {
    const std::vector<std::filesystem::path> files = Inputs(GetParam());
    EXPECT_FALSE(files.empty());
    for (const std::filesystem::path& path : files) {
        std::ifstream file(path, std::ios::binary);
        ASSERT_TRUE(file.is_open()) << path;
        const std::string bytes{std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>()};
        try {
            GetParam().run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        } catch (const std::exception& failure) {
            ADD_FAILURE() << path << ": " << failure.what();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Target, Replay, testing::ValuesIn(kTargets),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
