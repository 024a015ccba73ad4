#pragma once

// Text to standard output or standard error: always valid UTF-8, coloured only where wanted.

#include <string>
#include <string_view>

#include "frame/ProgressLine.h"
#include "platform/Console.h"

namespace tarnexctl {

enum class Style { kPlain, kBold, kDim, kError, kWarning, kNote, kGood };

class Writer {
public:
    // The line makes way for whatever is written.
    Writer(platform::Stream stream, ProgressLine& line) : stream_(stream), line_(line) {}
    ~Writer() { Flush(); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    Writer& operator<<(std::string_view text);

    // The text in that style where this stream shows colours, else as it is.
    std::string Paint(Style style, std::string_view text) const;

    void SetColour(bool colour) { colour_ = colour; }
    bool Colour() const { return colour_; }

    // Drops what is written from now on.
    void Mute() { muted_ = true; }

    void Flush();

    // Whether something could not be written (no room, nobody reads).
    bool Failed() const { return failed_; }

private:
    platform::Stream stream_;
    ProgressLine& line_;
    std::string pending_;
    bool colour_ = false;
    bool muted_ = false;
    bool failed_ = false;
};

}  // namespace tarnexctl
