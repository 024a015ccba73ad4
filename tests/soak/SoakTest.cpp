// A host that works from eight threads for as long as TARNEX_SOAK_SECONDS says, or a moment: it
// loses no line of its log, and holds no more at the end than after a while.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "compositions/host/ConverterValues.h"
#include "host/HostSession.h"
#include "host/Soak.h"

namespace host_test {
namespace {

namespace fs = std::filesystem;

int Seconds() {
    const char* seconds = std::getenv("TARNEX_SOAK_SECONDS");
    return seconds != nullptr ? std::max(std::atoi(seconds), 1) : 2;
}

class Soaking : public HostTest {
protected:
    // The example scripts, in the sandbox.
    std::vector<std::string> CopyScripts() {
        std::vector<std::string> paths;
        for (const auto& entry :
             fs::directory_iterator(fs::path(TARNEX_EXAMPLES) / "compositions")) {
            const fs::path copy = sandbox_.Folder() / entry.path().filename();
            fs::copy_file(entry.path(), copy);
            paths.push_back(Utf8(copy));
        }
        std::sort(paths.begin(), paths.end());
        return paths;
    }
    std::string CopyPlugin() {
        const fs::path plugin(TARNEX_EXAMPLE_PLUGIN);
        fs::copy_file(plugin, sandbox_.Folder() / plugin.filename());
        return plugin.filename().string() + "|";
    }

    // Reads the log line by line: it may be gigabytes. Each of a thread's lines is there once and
    // in its place.
    void ExpectLines(const std::vector<long long>& said) {
        std::vector<long long> next(said.size());
        for (const auto& file : fs::directory_iterator(sandbox_.Folder() / "Logs")) {
            std::ifstream log(file.path());
            for (std::string line; std::getline(log, line);) {
                const std::size_t at = line.find("property: \"soak ");
                if (at == std::string::npos) continue;
                int thread = -1;
                long long number = -1;
                ASSERT_EQ(
                    std::sscanf(line.c_str() + at, "property: \"soak %d %lld \"", &thread, &number),
                    2)
                    << line;
                ASSERT_TRUE(thread >= 0 && thread < static_cast<int>(next.size())) << line;
                ASSERT_EQ(number, next[static_cast<std::size_t>(thread)]++) << line;
            }
        }
        EXPECT_EQ(next, said) << "lines were lost";
    }
};

TEST_F(Soaking, NothingIsLostAndNothingGrows) {
    const std::vector<std::string> scripts = CopyScripts();
    const std::string plugin = CopyPlugin();
    ScopedConverterValues values(sandbox_.Folder() / "settings.ini");
    values.Set({{"Convertor", "1"}, {"Type", "1"}, {"SaveFx", "1"}});
    Host host(sandbox_, &log_);
    host.Start(plugin);
    std::vector<std::string> command{"soak", std::to_string(Seconds())};
    command.insert(command.end(), scripts.begin(), scripts.end());
    std::istringstream answer(host.Do(command));
    ASSERT_EQ(host.Finish(), 0);

    std::string word;
    long long calls = 0;
    long long wrong = -1;
    long long lines = 0;
    std::vector<long long> said(kSoakThreads);
    long long handles = 0;
    long long threads = 0;
    long long mappings = 0;
    long long bytes = 0;
    long long fresh = 0;
    answer >> word >> calls >> word;
    for (long long& count : said) {
        answer >> count;
        lines += count;
    }
    answer >> word >> handles >> word >> threads >> word >> mappings >> word >> bytes >> word >>
        wrong >> word >> fresh;
    ASSERT_TRUE(answer) << answer.str();
    std::printf(
        "%d s, %lld calls, %lld lines; grown: handles %lld threads %lld mappings %lld "
        "bytes %lld, fresh scripts %lld\n",
        Seconds(), calls, lines, handles, threads, mappings, bytes, fresh);
    EXPECT_GT(calls, 1000);
    EXPECT_EQ(wrong, 0);
    for (const long long count : said) EXPECT_GT(count, 10);
    ExpectLines(said);
    // What the system itself takes and gives back meanwhile.
    constexpr int kWavering = 3;
    constexpr long long kWaveringBytes = 64 * 1024;
    EXPECT_LE(handles, kWavering);
    EXPECT_LE(threads, kWavering);
    EXPECT_LE(mappings, kWavering);
    // A composition in the catalogue, its record and its names.
    constexpr long long kBytesOfAScript = 5000;
    EXPECT_LE(bytes, kWaveringBytes + fresh * kBytesOfAScript);
    for (const auto& [name, figure] :
         {std::pair("calls", calls), std::pair("lines", lines), std::pair("bytes", bytes)}) {
        RecordProperty(name, std::to_string(figure));
    }
}

}  // namespace
}  // namespace host_test
