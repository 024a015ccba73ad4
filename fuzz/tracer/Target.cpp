// Messages of random levels and lengths through a tracer into a log that refuses some of its bytes,
// or whose thread dies; then messages of several threads at once. No line may be missing that was
// not refused, and none may be torn, doubled or out of order.

#include <algorithm>
#include <atomic>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "Fuzz.h"
#include "TempFile.h"
#include "helpers/report/CapturedOutput.h"
#include "helpers/tracer/Tracer.h"
#include "helpers/tracer/service/LogFile.h"
#include "helpers/tracer/service/LogWriter.h"
#include "platform/OutputFile.h"

using namespace helpers;

namespace {

constexpr std::size_t kDrainAfterBytes = 60'000;  // well below a buffer, so that nobody waits

// The thread that writes the log died.
struct Death {};

// A log in memory. What it refuses is kept beside it.
class FaultySink : public LogSink {
public:
    bool WriteAt(std::uint64_t position, const char* bytes, std::size_t size) override {
        if (dies) {
            dies = false;
            Put(position, bytes, size / 2);
            throw Death();
        }
        Put(position, bytes, size);
        given.append(bytes, size);
        if (fails) {
            text.resize(static_cast<std::size_t>(position));
            return false;
        }
        kept.append(bytes, size);
        return true;
    }

    bool dies = false;
    bool fails = false;
    std::string text;
    std::string kept;   // all that went through, one after the other
    std::string given;  // the same with what was refused

private:
    void Put(std::uint64_t position, const char* bytes, std::size_t size) {
        fuzz::Check(position <= text.size(), "a gap in the log");
        text.resize(std::max<std::size_t>(text.size(), position + size));
        text.replace(static_cast<std::size_t>(position), size, bytes, size);
    }
};

// Characters of one, two and three bytes where the log is UTF-8.
void AppendUtf8(std::string& out, wchar_t character) {
    const auto code = static_cast<unsigned>(character);
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | code >> 6);
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | code >> 12);
        out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// A message's text in the log, cut as the log cuts it; without a line's frame.
std::string Logged(const std::wstring& message) {
    std::string text;
    for (const wchar_t character : message.substr(0, kMaxMessageUnits)) {
        std::string bytes;
        AppendUtf8(bytes, character);
        if (text.size() + bytes.size() > kLongestText) break;
        text += bytes;
    }
    if (!text.ends_with('\n')) text += '\n';
    std::string line(2 * text.size(), '\0');
    line.resize(platform::ToTextMode(text.data(), text.size(), line.data()));
    return line;
}

// Takes "000000:000 [    0] " off the front of the log.
void SkipFrame(std::string_view& log) {
    const auto skip = [&log](bool (*isWanted)(char), std::size_t least) {
        std::size_t count = 0;
        while (count < log.size() && isWanted(log[count])) ++count;
        fuzz::Check(count >= least, "a torn line");
        log.remove_prefix(count);
    };
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    skip(digit, 6);
    skip([](char c) { return c == ':'; }, 1);
    skip(digit, 3);
    skip([](char c) { return c == ' ' || c == '['; }, 2);
    skip([](char c) { return c == '-' || (c >= '0' && c <= '9'); }, 1);
    fuzz::Check(log.starts_with("] "), "a torn line's thread");
    log.remove_prefix(2);
}

class Run {
public:
    Run(const std::uint8_t* data, std::size_t size) : input_(data, size) {
        tracer_.InitializeBuffers();
        mask_ = input_.Number();
        tracer_.SetLevelMask(mask_);
        isRunning_ = input_.Below(8) != 7;
        tracer_.SetRunning(isRunning_);
        isMirrored_ = input_.Below(4) == 3;
        tracer_.SetLogToOutput(isMirrored_);
    }

    void Play() {
        captured::TakeDebugged();
        const unsigned threads = input_.Below(5);
        const unsigned messages = input_.Byte();
        WriteFirstLine();
        try {
            while (!input_.IsEmpty()) Step(input_.Byte());
            sink_.dies = false;
            writer_->Finish();
        } catch (const Death&) {
            TakeOver();
        }
        CompareLog();
        if (threads > 1 && !hasDied_ && isRunning_ && !isMirrored_ && (mask_ & 2) != 0) {
            sink_.fails = false;
            Flood(threads, messages);
        }
    }

private:
    void Step(unsigned choice) {
        switch (choice % 16) {
            case 0:
                sink_.fails = !sink_.fails;
                return;
            case 1:
                if (choice >= 0xF0) sink_.dies = true;
                return;
            case 2:
            case 3:
                return Drain();
            default:
                return Write(choice % 16 == 4 ? Long() : Short());
        }
    }

    std::wstring Short() {
        std::wstring text;
        for (const char byte : input_.Bytes(input_.Below(48))) {
            text += static_cast<wchar_t>(byte & 0x7F);
        }
        return text;
    }
    // Of one character, past the limits of a message and of a line.
    std::wstring Long() {
        wchar_t character = static_cast<wchar_t>(input_.Word());
        if (character >= 0xD800 && character < 0xE000) character -= 0x1000;
        if (!isUtf8_) character = static_cast<wchar_t>(character & 0x7F);
        return std::wstring(input_.Word() % 3000, character) + Short();
    }
    void Write(const std::wstring& text) {
        const std::uint32_t level = input_.Flag() ? kDefaultLevel : input_.Number();
        tracer_.Write(level, text);
        const bool isLogged = isRunning_ && (level & mask_) != 0;
        // A record that begins with a zero is one that holds no message.
        if (isLogged && (text.empty() || text[0] != 0)) expected_.push_back(Logged(text));
        if (isMirrored_ && (!isLogged || text.empty() || text[0] != 0)) ++mirrored_;
        waiting_ += 2 * text.size() + sizeof(RecordHeader);
        if (waiting_ > kDrainAfterBytes) Drain();
    }
    void Drain() {
        writer_->DrainOnce();
        writer_->DrainOnce();
        waiting_ = 0;
    }
    void WriteFirstLine() {
        const std::string line = "program\n";
        writer_->WriteFirstLine(line);
        firstLine_.resize(2 * line.size());
        firstLine_.resize(platform::ToTextMode(line.data(), line.size(), firstLine_.data()));
    }
    // Another thread finishes, which writes the half-written bytes again.
    void TakeOver() {
        hasDied_ = true;
        sink_.fails = false;
        writer_->TakeOver();
    }

    void CompareLog() {
        std::string_view given = sink_.given;
        fuzz::Check(given.starts_with(firstLine_), "the first line");
        given.remove_prefix(firstLine_.size());
        for (const std::string& line : expected_) {
            SkipFrame(given);
            fuzz::Check(given.starts_with(line), "another text");
            given.remove_prefix(line.size());
        }
        fuzz::Check(given.empty(), "more lines than messages");
        fuzz::Check(sink_.text == sink_.kept, "the log's bytes");
        const std::size_t mirrored = captured::TakeDebugged().size();
        // Lines that were written when the thread died may be mirrored once more.
        fuzz::Check(hasDied_ ? mirrored >= mirrored_ : mirrored == mirrored_,
                    "the debugger output");
    }

    // Each thread's messages say whose they are, and which.
    void Flood(unsigned threads, unsigned messages) {
        const std::size_t begin = sink_.text.size();
        std::atomic<unsigned> left{threads};
        std::vector<std::thread> writers;
        for (unsigned id = 0; id < threads; ++id) {
            writers.emplace_back([this, id, messages, &left] {
                for (unsigned i = 0; i < messages; ++i) {
                    tracer_.Write(kDefaultLevel, std::to_wstring(id) + L" " + std::to_wstring(i) +
                                                     std::wstring(id * 100, L'p'));
                }
                left.fetch_sub(1, std::memory_order_release);
            });
        }
        while (left.load(std::memory_order_acquire) != 0) writer_->DrainOnce();
        for (std::thread& writer : writers) writer.join();
        writer_->Finish();

        std::string_view log = std::string_view(sink_.text).substr(begin);
        std::vector<unsigned> next(threads, 0);
        for (unsigned count = threads * messages; count > 0; --count) {
            SkipFrame(log);
            const std::size_t id = static_cast<std::size_t>(log.empty() ? -1 : log[0] - '0');
            fuzz::Check(id < threads, "a line of nobody");
            const std::string line =
                Logged(std::to_wstring(id) + L" " + std::to_wstring(next[id]++) +
                       std::wstring(id * 100, L'p'));
            fuzz::Check(log.starts_with(line), "a thread's lines");
            log.remove_prefix(line.size());
        }
        fuzz::Check(log.empty(), "lines behind the last");
    }

    fuzz::Input input_;
    const bool isUtf8_ = sizeof(wchar_t) == 4;
    std::uint32_t mask_ = 0;
    bool isRunning_ = false;
    bool isMirrored_ = false;
    bool hasDied_ = false;
    std::size_t waiting_ = 0;
    std::size_t mirrored_ = 0;
    std::string firstLine_;
    std::vector<std::string> expected_;
    std::unique_ptr<TracerLayout> layout_ = std::make_unique<TracerLayout>();
    Tracer tracer_{*layout_};
    FaultySink sink_;
    std::unique_ptr<LogWriter> writer_ = std::make_unique<LogWriter>(tracer_, sink_);
};

// A log that is tried in places of which some cannot be had, or not be written.
void TryPlaces(fuzz::Input input) {
    static fuzz::TempFile scratch("log");
    const std::filesystem::path& folder = scratch.Folder();
    LogNames names;
    int good = -1;
    bool isFull = false;
    for (int i = 0; i < 4; ++i) {
        const std::wstring file = (folder / ("log" + std::to_string(i))).wstring();
        switch (input.Below(5)) {
            case 0:  // a folder is in the way
                names.places.push_back({L"", folder.wstring()});
                break;
            case 1:  // no folder to put it in, and none that can be made
                names.places.push_back(
                    {(folder / "a" / "b").wstring(), (folder / "a" / "b" / "log").wstring()});
                break;
            case 2:
                if (!std::filesystem::exists("/dev/full")) break;
                names.places.push_back({L"", L"/dev/full"});
                if (good < 0) good = i, isFull = true;
                break;
            case 3:
                names.places.push_back({folder.wstring(), file});  // the folder is there
                if (good < 0) good = i;
                break;
            default:
                names.places.push_back({L"", file});
                if (good < 0) good = i;
        }
    }
    LogFile log;
    fuzz::Check(log.Open(names) == (good >= 0), "whether a place was found");
    const bool isWritten = log.WriteAt(0, "12345", 5);
    fuzz::Check(isWritten == (good >= 0 && !isFull), "whether it can be written");
    log.Close();
    if (!isWritten) return;
    std::ifstream file(folder / ("log" + std::to_string(good)), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    fuzz::Check(text == "12345", "what was written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 0 && data[0] % 8 == 7) {
        TryPlaces(fuzz::Input(data + 1, size - 1));
    } else {
        Run(data, size).Play();
    }
    captured::TakeDebugged();
    captured::TakeTraced();
    return 0;
}
