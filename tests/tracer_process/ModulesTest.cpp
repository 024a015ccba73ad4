// Several modules of one process over one block.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "tracer_process/Sandbox.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class TraceModules : public testing::Test {
protected:
    TraceModules() { trace_test::EnableLog(); }
    std::vector<std::string> Run(const std::vector<std::string>& commands) {
        const auto result = sandbox_.Run(commands);
        EXPECT_EQ(result.end, platform::ChildEnd::kExited) << result.reason;
        EXPECT_EQ(result.code, 0u) << result.output << result.error;
        error_ = result.error;
        return trace_test::Lines(result.output);
    }
    trace_test::Sandbox sandbox_;
    std::string error_;
};

TEST_F(TraceModules, TwoLibrariesAndAPluginWriteIntoTheSameFile) {
    const auto answers = Run({"load:trace_service", "load:trace_second", "load:trace_client",
                              "peek", "say:trace_service:2:one", "say:trace_second:2:two",
                              "say:trace_client:2:three", "say:trace_service:2:four"});
    EXPECT_THAT(answers[3], HasSubstr("references 3 "));
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("one", "two", "three", "four"));
}

TEST_F(TraceModules, ModuleThatLeavesIsTakenOffTheCount) {
    const auto answers = Run({"load:trace_service", "load:trace_client", "free:trace_client",
                              "peek", "say:trace_service:2:still here"});
    EXPECT_THAT(answers[2], HasSubstr("references 1 running 1"));
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("still here"));
}

TEST_F(TraceModules, PluginWithoutALibraryDropsItsMessages) {
    EXPECT_THAT(Run({"load:trace_client", "attached:trace_client", "say:trace_client:2:lost"}),
                ElementsAre("loaded", "not attached"));
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceModules, LibraryThatLeavesWritesAllOutAndClosesTheTracerOfPlugins) {
    const auto answers =
        Run({"load:trace_service", "load:trace_client", "say:trace_client:2:in time",
             "free:trace_service", "peek", "say:trace_client:2:too late"});
    EXPECT_THAT(answers[2], HasSubstr("references 1 running 1 closed 1"));
    EXPECT_THAT(answers[2], HasSubstr("thread no"));
    EXPECT_THAT(sandbox_.LogTexts(), ElementsAre("in time"));
}

TEST_F(TraceModules, LibraryThatIsLoadedAgainStartsAnewInTheBlockThatPluginsKeep) {
    const auto answers =
        Run({"load:trace_service", "load:trace_client", "free:trace_service",
             "say:trace_client:2:too late", "load:trace_service", "peek",
             "say:trace_client:2:plug-in again", "say:trace_service:2:library again"});
    EXPECT_THAT(answers[3], HasSubstr("references 2 running 1 closed 0"));
    // The second log may have the name of the first.
    std::string text;
    for (const auto& file : sandbox_.LogFiles()) {
        std::string one;
        std::getline(std::ifstream(file), one, '\0');
        text += one;
    }
    EXPECT_THAT(text, HasSubstr("] plug-in again"));
    EXPECT_THAT(text, HasSubstr("] library again"));
    EXPECT_THAT(text, testing::Not(HasSubstr("too late")));
}

TEST_F(TraceModules, SecondLibraryLeavesATracerAloneThatTheFirstFoundDisabled) {
    test_platform::ResetSettings();
    const auto answers = Run({"load:trace_service", "load:trace_second", "free:trace_second",
                              "peek", "say:trace_service:2:dropped"});
    EXPECT_THAT(answers[2], HasSubstr("references 1 running 0 closed 1"));
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceModules, WriterRunsOneStepBelowNormal) {
    const auto answers = Run({"load:trace_service", "priority"});
    if (answers.at(1) == "none below") {
        GTEST_SKIP() << "this system runs no thread below the priority of the tests";
    }
    EXPECT_EQ(answers[1], "below by 1");
}

TEST_F(TraceModules, ForeignBlockOfGarbageLeavesTheModuleWithoutATracer) {
    EXPECT_THAT(Run({"foreign:272484:238", "load:trace_service", "attached:trace_service",
                     "say:trace_service:2:lost", "free:trace_service"}),
                ElementsAre("loaded", "not attached"));
    EXPECT_FALSE(std::filesystem::exists(sandbox_.LogFolder()));
}

TEST_F(TraceModules, ForeignBlockOfZerosLeavesTheModuleWithoutATracer) {
    EXPECT_THAT(Run({"foreign:272484:0", "load:trace_service", "attached:trace_service"}),
                ElementsAre("loaded", "not attached"));
}

TEST_F(TraceModules, ForeignBlockThatIsTooSmallIsReportedToTheDebugger) {
    EXPECT_THAT(Run({"foreign:4096:1", "load:trace_service", "attached:trace_service",
                     "say:trace_service:2:lost"}),
                ElementsAre("loaded", "not attached"));
    const std::regex form("process_singleton, MapViewOfFile failed with error: [0-9]+");
    EXPECT_TRUE(std::regex_search(error_, form)) << error_;
}

}  // namespace
