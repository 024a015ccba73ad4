// The service when the system refuses it something.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/TraceMessage.h"
#include "helpers/tracer/service/TraceService.h"
#include "platform/NativePath.h"
#include "platform/SettingsStore.h"
#include "platform/Thread.h"

namespace {

using helpers::TraceService;
using helpers::TraceSystem;

std::wstring g_logFile;

helpers::LogNames NamesOfTheTest(const std::wstring&) {
    return {{{L"", g_logFile}}, "first line\n"};
}

class TraceServiceTest : public testing::Test {
protected:
    TraceServiceTest() {
        constexpr wchar_t kKey[] = L"Software\\Tesmar\\Commons\\Log";
        test_platform::ResetSettings();
        for (const wchar_t* name : {L"Enabled", L"Level"}) {
            test_platform::PutValue(kKey, name, test_platform::ValueKind::kNumber,
                                    test_platform::NumberBytes(2));
        }
        g_logFile = platform::WidePath((folder_.Path() / "test.log").native());
        system_.makeNames = &NamesOfTheTest;
    }
    std::string Log() const {
        std::ifstream stream(folder_.Path() / "test.log");
        std::stringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    test_platform::TempFolder folder_;
    std::unique_ptr<helpers::TracerLayout> layout_ = std::make_unique<helpers::TracerLayout>();
    helpers::Tracer tracer_{*layout_};
    TraceSystem system_;
};

TEST_F(TraceServiceTest, LogHoldsWhatWasWrittenBeforeItStopped) {
    TraceService service(*layout_, system_);
    service.Construct();
    EXPECT_TRUE(tracer_.IsRunning());
    tracer_.Write(2, L"one");
    service.Stop();
    EXPECT_TRUE(tracer_.IsClosed());
    EXPECT_TRUE(tracer_.IsLeftBehind());
    tracer_.Write(2, L"two");
    service.Stop();
    const std::regex form("first line\r?\n[0-9]{6}:[0-9]{3} \\[[ 0-9]+\\] one\r?\n");
    EXPECT_TRUE(std::regex_match(Log(), form)) << Log();
}

TEST_F(TraceServiceTest, RefusedEventRaisesItsException) {
    system_.createEvent = [] { return platform::EventHandle{0}; };
    TraceService service(*layout_, system_);
    EXPECT_THROW(service.Construct(), helpers::Event::EventException);
    EXPECT_FALSE(tracer_.IsRunning());
    service.Stop();
    EXPECT_EQ(Log(), "");
}

TEST_F(TraceServiceTest, RefusedThreadClosesTheTracerSoThatNobodyWaits) {
    system_.startThread = [](platform::BackgroundThread&, platform::BackgroundThread::Function,
                             void*) { return false; };
    TraceService service(*layout_, system_);
    service.Construct();
    EXPECT_FALSE(tracer_.IsRunning());
    EXPECT_TRUE(tracer_.IsClosed());
    EXPECT_FALSE(tracer_.IsLeftBehind());
    tracer_.Write(2, L"dropped");
    EXPECT_TRUE(tracer_.Buffer(0).IsEmpty());
    service.Stop();
    EXPECT_EQ(Log(), "");
}

TEST_F(TraceServiceTest, NoLocalTimeEndsTheThreadWithItsLine) {
    system_.makeNames = [](const std::wstring&) -> helpers::LogNames {
        throw std::runtime_error("could not convert calendar time to local time");
    };
    TraceService service(*layout_, system_);
    helpers::PublishTracer(*layout_);
    service.Construct();
    // What the thread says when it ends is the only record, and the tracer closes behind it.
    for (int i = 0; i < 60'000 && !tracer_.IsClosed(); ++i) platform::SleepMs(1);
    const helpers::Record record = tracer_.Buffer(0).At(0);
    const std::u16string text(record.Text(), record.Length());
    helpers::WithdrawTracer();
    service.Stop();
    EXPECT_EQ(text, u"Tracer::sDumpThread - exception !!!!\n");
    EXPECT_EQ(Log(), "");
}

}  // namespace
