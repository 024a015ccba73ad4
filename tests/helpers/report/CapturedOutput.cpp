#include "helpers/report/CapturedOutput.h"

#include <atomic>
#include <mutex>
#include <utility>

#include "helpers/tracer/TraceMessage.h"
#include "platform/CodePage.h"
#include "platform/DebugOutput.h"

namespace captured {
namespace {

std::mutex mutex;
std::vector<std::wstring> traced;
std::vector<std::string> debugged;
void (*onTrace)() = nullptr;

}  // namespace

std::vector<std::wstring> TakeTraced() {
    std::lock_guard lock(mutex);
    return std::exchange(traced, {});
}

std::vector<std::string> TakeDebugged() {
    std::lock_guard lock(mutex);
    return std::exchange(debugged, {});
}

void OnTrace(void (*callback)()) {
    onTrace = callback;
}

}  // namespace captured

namespace helpers {

TraceMessage::TraceMessage(std::uint32_t level) : level_(level) {
    (void)reserved_;
}

TraceMessage::~TraceMessage() {
    if (captured::onTrace) captured::onTrace();
    std::lock_guard lock(captured::mutex);
    try {
        captured::traced.push_back(level_ == 0 ? text_ : text_ + L" at a level of its own");
    } catch (...) {
        return;  // a test that lets memory run out loses lines
    }
}

bool TraceMessage::IsHeard(std::uint32_t level) {
    return level == 0;  // whoever asks for another one traces at that one
}

TraceMessage& TraceMessage::Append(std::string_view text) noexcept {
    try {
        text_ += platform::ToWide(text, platform::CodePage::kAnsi);
    } catch (...) {
        text_ = L"?";  // lost; short enough to need no memory
    }
    return *this;
}

TraceMessage& TraceMessage::Append(std::wstring_view text) noexcept {
    try {
        text_ += text;
    } catch (...) {
        text_ = L"?";  // lost; short enough to need no memory
    }
    return *this;
}

}  // namespace helpers

namespace platform {

void DebugOutput(const char* text) {
    std::lock_guard lock(captured::mutex);
    try {
        captured::debugged.push_back(text);
    } catch (...) {
        return;  // the real one throws nothing either
    }
}

void DebugOutput(const wchar_t* text) {
    try {
        DebugOutput(ToNarrow(text, CodePage::kAnsi).c_str());
    } catch (...) {
        return;  // as above
    }
}

}  // namespace platform
