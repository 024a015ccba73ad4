#pragma once

// Runs the process's tracer: reads its settings, owns its thread and its log.

#include <exception>

#include "helpers/tracer/Tracer.h"
#include "helpers/tracer/service/Event.h"
#include "helpers/tracer/service/LogFile.h"
#include "helpers/tracer/service/LogWriter.h"
#include "platform/BackgroundThread.h"

namespace helpers {

// What the service asks of the system, so that tests can refuse it.
struct TraceSystem {
    Event::Creator createEvent = &platform::CreateManualEvent;
    bool (*startThread)(platform::BackgroundThread& thread,
                        platform::BackgroundThread::Function run, void* argument) =
        [](platform::BackgroundThread& thread, platform::BackgroundThread::Function run,
           void* argument) { return thread.Start(run, argument); };
    LogNames (*makeNames)(const std::wstring& executablePath) = &MakeLogNames;
};

// Loader thread, as the tracer's module is loaded and unloaded. Stays where it is: its thread works
// on it.
class TraceService {
public:
    explicit TraceService(TracerLayout& layout, const TraceSystem& system = {});
    ~TraceService() = default;
    TraceService(const TraceService&) = delete;
    TraceService& operator=(const TraceService&) = delete;

    // Sets the tracer up and, when logging is enabled, starts the thread. Throws
    // Event::EventException when the stop event cannot be created.
    void Construct();

    // Closes the tracer, lets the thread write what is buffered and end, or writes it here when the
    // thread is dead; without memory for that the log is lost. May be called once more.
    void Stop() noexcept;

private:
    static void sDumpThread(void* service);
    void DumpThread();
    void OpenLog();
    void OpenLogAgain() noexcept;
    bool ReadSettings();
    void StartThread();

    Tracer tracer_;
    TraceSystem system_;
    Event stopEvent_;
    platform::BackgroundThread thread_;
    LogNames names_;
    std::exception_ptr namesFailure_;
    LogFile file_;
    LogWriter writer_;
    bool started_ = false;
    std::atomic<bool> logOpened_{false};
    std::atomic<bool> finished_{false};
};

}  // namespace helpers
