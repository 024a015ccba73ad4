// The tracer when memory runs out, on the thread that writes its log or on one that uses it.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/TraceMessage.h"
#include "helpers/tracer/service/TraceService.h"
#include "platform/NativePath.h"
#include "platform/SettingsStore.h"
#include "tarnex/AllocationFault.h"

namespace {

using helpers::TraceMessage;
using helpers::TraceService;
using test_support::AllocationFault;
using test_support::Fault;
using test_support::ForEachAllocation;
using test_support::LiveAllocations;
using test_support::OtherThreadsFault;

std::wstring g_folder;

helpers::LogNames NamesOfTheTest(const std::wstring&) {
    return {{{g_folder + L"/A folder for logs", g_folder + L"/A folder for logs/test.log"}},
            "first line\n"};
}

class TracerMemory : public testing::Test {
protected:
    TracerMemory() {
        constexpr wchar_t kKey[] = L"Software\\Tesmar\\Commons\\Log";
        test_platform::ResetSettings();
        for (const wchar_t* name : {L"Enabled", L"Level"}) {
            test_platform::PutValue(kKey, name, test_platform::ValueKind::kNumber,
                                    test_platform::NumberBytes(2));
        }
        g_folder = platform::WidePath(folder_.Path().native());
        system_.makeNames = &NamesOfTheTest;
    }

    // The log that was written since the last look.
    std::string TakeLog() const {
        const std::filesystem::path file = folder_.Path() / "A folder for logs" / "test.log";
        std::stringstream text;
        text << std::ifstream(file).rdbuf();
        std::filesystem::remove_all(file.parent_path());
        return text.str();
    }

    // A tracer's whole life, of which Stop has memory or not. Whether the thread met its fault.
    bool Run(int nth, bool lasts, bool memoryToStop) {
        const auto layout = std::make_unique<helpers::TracerLayout>();
        helpers::Tracer tracer(*layout);
        TraceService service(*layout, system_);
        const OtherThreadsFault fault(nth, lasts);
        service.Construct();
        tracer.Write(2, L"line");
        if (memoryToStop) {
            service.Stop();
        } else {
            const AllocationFault here(Fault::kBadAlloc, 1, true);
            service.Stop();
        }
        EXPECT_TRUE(tracer.IsLeftBehind());
        return fault.Happened();
    }

    test_platform::TempFolder folder_;
    helpers::TraceSystem system_;
};

using TraceServiceTest = TracerMemory;

TEST_F(TraceServiceTest, StopWithoutMemoryLosesTheLogAlone) {
    ForEachAllocation([&](int nth, bool lasts) {
        const bool happened = Run(nth, lasts, false);
        const std::string log = TakeLog();
        EXPECT_TRUE(happened || !log.empty());
        return happened;
    });
}

TEST_F(TraceServiceTest, FolderThatIsThereIsLookedAtWithoutMemory) {
    ForEachAllocation([&](int nth, bool lasts) {
        std::filesystem::create_directory(folder_.Path() / "A folder for logs");
        const bool happened = Run(nth, lasts, false);
        EXPECT_TRUE(happened || !TakeLog().empty());
        return happened;
    });
}

// A line may have come when the thread was dead, and the tracer closed.
TEST_F(TraceServiceTest, LogOfAThreadThatDiesWithoutMemoryIsWrittenOnStopping) {
    ForEachAllocation([&](int nth, bool lasts) {
        const bool happened = Run(nth, lasts, true);
        const std::string log = TakeLog();
        EXPECT_TRUE(log.starts_with("first line")) << log;
        EXPECT_TRUE(happened || log.find("] line") != std::string::npos) << log;
        return happened;
    });
}

// --- Messages ------------------------------------------------------------------------------------

class CountingSink : public helpers::LogSink {
public:
    bool WriteAt(std::uint64_t, const char*, std::size_t size) override {
        bytes += size;
        return true;
    }
    std::size_t bytes = 0;
};

struct PumpedTracer {
    PumpedTracer() {
        tracer.InitializeBuffers();
        tracer.SetLevelMask(2);
        tracer.SetRunning(true);
    }
    std::unique_ptr<helpers::TracerLayout> layout = std::make_unique<helpers::TracerLayout>();
    helpers::Tracer tracer{*layout};
    CountingSink sink;
    std::unique_ptr<helpers::LogWriter> writer = std::make_unique<helpers::LogWriter>(tracer, sink);
};

TEST(TraceMessageMemory, MessageLosesPiecesOrItselfAndThrowsNothing) {
    const std::u16string narrow = u"a narrow piece that takes room, ";
    const std::u16string wide = u"and a wide one that takes more room";
    ForEachAllocation([&](int nth, bool lasts) {
        bool happened = false;
        const std::int64_t live = LiveAllocations();
        {
            PumpedTracer test;
            helpers::PublishTracer(*test.layout);
            {
                const AllocationFault fault(Fault::kBadAlloc, nth, lasts);
                TraceMessage()
                    .Append("a narrow piece that takes room, ")
                    .Append(L"and a wide one that takes more room");
                happened = fault.Happened();
            }
            helpers::WithdrawTracer();
            const helpers::Record record = test.tracer.Buffer(0).At(0);
            const std::u16string text(record.Text(), record.Length());
            const std::u16string whole = narrow + wide + u"\n";
            EXPECT_TRUE(text == whole || (happened && (text == narrow + u"\n" ||
                                                       text == wide + u"\n" || text == u"\n")))
                << text.size();
        }
        EXPECT_EQ(LiveAllocations(), live) << "leaked";
        return happened;
    });
}

TEST(Tracer, WritingAllocatesNothing) {
    PumpedTracer test;
    const std::wstring text(600, L'x');
    const std::wstring endless(5000, L'y');
    const std::size_t before = test_support::AllocationsMade();
    // More than both buffers hold, so that they change and are written out meanwhile.
    for (int i = 0; i < 400; ++i) {
        test.tracer.Write(2, text);
        test.tracer.Write(1, text);  // not heard
        test.tracer.Write(2, endless);
        if (i % 10 == 0) test.writer->DrainOnce();
    }
    test.writer->Finish();
    EXPECT_EQ(test_support::AllocationsMade(), before);
    EXPECT_GT(test.sink.bytes, 400u * (600 + 2048));
}

}  // namespace
