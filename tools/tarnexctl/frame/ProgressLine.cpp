#include "frame/ProgressLine.h"

#include <system_error>
#include <utility>

#include "frame/Text.h"
#include "platform/Console.h"

namespace tarnexctl {
namespace {

using namespace std::chrono_literals;

// A line that the terminal breaks in two could not be removed.
constexpr std::size_t kMostColumns = 66;

const std::string kRemove = "\r\x1B[K";

bool IsWanted() {
    return platform::IsTerminal(platform::Stream::kError) &&
           platform::EnvironmentVariable("TERM") != "dumb";
}

std::string Shortened(const std::string& text) {
    if (DisplayWidth(text) <= kMostColumns) return text;
    std::string start;
    std::size_t columns = 0;
    for (const char c : text) {
        const bool startsCharacter = (static_cast<unsigned char>(c) & 0xC0u) != 0x80u;
        if (startsCharacter && ++columns > kMostColumns) break;
        start += c;
    }
    return start + "...";
}

}  // namespace

ProgressLine::~ProgressLine() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void ProgressLine::Show(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (text_.empty()) since_ = std::chrono::steady_clock::now();
    text_ = Shortened(Printable(ValidUtf8(text)));
    if (thread_.joinable() || !IsWanted()) return;
    try {
        thread_ = std::thread([this] { Run(); });
    } catch (const std::system_error&) {
        // Without the line: the work does not depend on it.
    }
}

void ProgressLine::Hide() {
    const std::lock_guard lock(mutex_);
    text_.clear();
    Remove();
}

std::unique_lock<std::mutex> ProgressLine::Pause() {
    std::unique_lock lock(mutex_);
    Remove();
    return lock;
}

void ProgressLine::Run() {
    std::unique_lock lock(mutex_);
    while (!ending_) {
        changed_.wait_for(lock, 200ms);
        const auto taken = std::chrono::steady_clock::now() - since_;
        if (!ending_ && !text_.empty() && taken >= 1s) Draw();
    }
    Remove();
}

void ProgressLine::Draw() {
    const auto taken = std::chrono::steady_clock::now() - since_;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(taken).count();
    const std::string line = text_ + " (" + std::to_string(seconds) + " s)";
    if (line == drawn_) return;
    (void)platform::WriteStream(platform::Stream::kError, kRemove + line);  // nothing depends on it
    drawn_ = line;
}

void ProgressLine::Remove() {
    if (!drawn_.empty()) (void)platform::WriteStream(platform::Stream::kError, kRemove);
    drawn_.clear();
}

}  // namespace tarnexctl
