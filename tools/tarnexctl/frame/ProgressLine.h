#pragma once

// One line on the terminal that says what takes so long, with the seconds that it has taken. It
// comes from a thread of its own, since the work may be one long call or the wait for a child.

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace tarnexctl {

class ProgressLine {
public:
    ProgressLine() = default;
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    // What is being done from now on. The line comes a second after the first call, and never where
    // standard error is no terminal.
    void Show(const std::string& text);

    // Nothing takes long any more, until the next Show.
    void Hide();

    // Removes the line, and keeps it away while the lock is held: for whoever writes to the
    // terminal.
    std::unique_lock<std::mutex> Pause();

private:
    void Run();
    void Draw();
    void Remove();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::thread thread_;  // not before the first Show
    std::string text_;    // empty while there is nothing to say
    std::chrono::steady_clock::time_point since_;
    std::string drawn_;  // what the terminal shows
    bool ending_ = false;
};

}  // namespace tarnexctl
