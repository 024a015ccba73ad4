#include "helpers/tracer/TraceMessage.h"

#include <atomic>

#include "helpers/tracer/ModuleTracer.h"
#include "helpers/tracer/SecondLog.h"
#include "platform/CodePage.h"

namespace helpers {
namespace {

constexpr std::int32_t kDefaultPrecision = 6;
constexpr std::int32_t kDefaultRadix = 10;

std::atomic<std::int32_t> g_precision{kDefaultPrecision};
std::atomic<std::int32_t> g_radix{kDefaultRadix};

}  // namespace

TraceMessage::TraceMessage(std::uint32_t level) : level_(level) {
    SetFormat(kDefaultPrecision, kDefaultRadix);
}

TraceMessage::~TraceMessage() {
    static_cast<void>(reserved_);
    try {
        // Appending left room for it; where there was no memory, a line ends so all the same.
        if (text_.size() < text_.capacity()) text_ += L'\n';
        WriteToTracer(level_ == 0 ? kDefaultLevel : level_, text_);
        if (SecondLog::IsOn()) SecondLog::Append(text_);
    } catch (...) {
        // No memory for the second log: a message less is better than a process less.
    }
}

bool TraceMessage::IsHeard(std::uint32_t level) {
    SetFormat(kDefaultPrecision, kDefaultRadix);
    return IsTraced(level == 0 ? kDefaultLevel : level) || SecondLog::IsOn();
}

TraceMessage& TraceMessage::Append(std::string_view text) noexcept {
    try {
        return Append(platform::ToWide(text, platform::CodePage::kAnsi));
    } catch (...) {
        return *this;  // without this piece
    }
}

TraceMessage& TraceMessage::Append(std::wstring_view text) noexcept {
    try {
        text_.reserve(text_.size() + text.size() + 1);  // with the line feed that closing adds
        text_ += text;
    } catch (...) {
        // Without this piece.
    }
    return *this;
}

// relaxed throughout; two lone settings.

std::int32_t TraceMessage::FormatPrecision() {
    return g_precision.load(std::memory_order_relaxed);
}

std::int32_t TraceMessage::FormatRadix() {
    return g_radix.load(std::memory_order_relaxed);
}

void TraceMessage::SetFormat(std::int32_t precision, std::int32_t radix) {
    g_precision.store(precision, std::memory_order_relaxed);
    g_radix.store(radix, std::memory_order_relaxed);
}

}  // namespace helpers
