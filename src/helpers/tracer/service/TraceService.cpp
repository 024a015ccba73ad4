#include "helpers/tracer/service/TraceService.h"

#include "helpers/tracer/TraceMessage.h"
#include "platform/Module.h"
#include "platform/Settings.h"

namespace helpers {
namespace {

constexpr wchar_t kLogKey[] = L"Software\\Tesmar\\Commons\\Log";
constexpr unsigned kWakeUpMs = 15;

bool ReadNumber(const wchar_t* name, std::uint32_t& value) {
    return platform::ReadSettingsNumber(platform::CurrentUserSettings(), kLogKey, name, value);
}

}  // namespace

TraceService::TraceService(TracerLayout& layout, const TraceSystem& system)
    : tracer_(layout), system_(system), writer_(tracer_, file_) {}

void TraceService::Construct() {
    stopEvent_.Create(system_.createEvent);
    tracer_.SetLogToOutput(false);
    tracer_.SetRunning(false);
    tracer_.InitializeBuffers();
    tracer_.SetHandles(stopEvent_.Handle(), 0);
    tracer_.SetLevelMask(0);
    tracer_.SetClosed(false);
    if (ReadSettings()) StartThread();
}

bool TraceService::ReadSettings() {
    std::uint32_t enabled = 0;
    if (!ReadNumber(L"Enabled", enabled)) {
        tracer_.SetClosed(true);
        return false;
    }
    if (enabled == 0) return false;  // disabled, but not closed
    std::uint32_t value = 0;
    if (ReadNumber(L"LogToOutput", value)) tracer_.SetLogToOutput(value == 1);
    if (ReadNumber(L"Level", value)) tracer_.SetLevelMask(value);
    return true;
}

void TraceService::StartThread() {
    // Here, and not on the thread: it asks for the program's path under the loader's lock.
    try {
        names_ = system_.makeNames(platform::ExecutablePath());
    } catch (...) {
        namesFailure_ = std::current_exception();
    }
    tracer_.SetRunning(true);  // before the thread, which may have something to report at once
    started_ = system_.startThread(thread_, &TraceService::sDumpThread, this);
    if (started_) {
        tracer_.SetHandles(stopEvent_.Handle(), thread_.Handle());
    } else {
        tracer_.SetRunning(false);
        tracer_.SetClosed(true);  // nobody would ever empty the buffers
    }
}

void TraceService::sDumpThread(void* service) {
    auto* self = static_cast<TraceService*>(service);
    try {
        self->DumpThread();
    } catch (...) {
        TraceMessage().Append("Tracer::sDumpThread - exception !!!!");
        // What comes later would only fill the buffers and make every writer wait.
        self->tracer_.SetClosed(true);
    }
}

void TraceService::DumpThread() {
    OpenLog();
    thread_.Ready();
    while (!stopEvent_.Wait(kWakeUpMs)) writer_.DrainOnce();
    writer_.Finish();
    finished_.store(true, std::memory_order_release);  // pairs with the acquire in Stop
}

void TraceService::OpenLog() {
    if (namesFailure_) std::rethrow_exception(namesFailure_);
    if (file_.Open(names_)) writer_.WriteFirstLine(names_.firstLine);
    logOpened_.store(true, std::memory_order_release);  // pairs with the acquire in Stop
}

// Opening again what the thread may have opened halfway gives the same file, still without a record
// in it.
void TraceService::OpenLogAgain() noexcept {
    try {
        OpenLog();
    } catch (...) {
        // No memory: the log is lost, and nobody could catch it while the library is unloaded.
    }
}

void TraceService::Stop() noexcept {
    tracer_.SetClosed(true);
    if (started_) {
        stopEvent_.Signal();
        static_cast<void>(thread_.Join());
        tracer_.SetHandles(0, 0);
        if (!finished_.load(std::memory_order_acquire)) {
            // The thread died, as all others have when a process ends.
            if (!logOpened_.load(std::memory_order_acquire) && !namesFailure_) OpenLogAgain();
            writer_.TakeOver();
        }
        file_.Close();
        started_ = false;
    }
    stopEvent_.Close();
    tracer_.SetHandles(0, 0);
}

}  // namespace helpers
