#pragma once

// A tracer in memory of its own, with a log that keeps its bytes, for tests that pump the writer.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "helpers/tracer/Tracer.h"
#include "helpers/tracer/service/LogWriter.h"
#include "platform/CodePage.h"

namespace test_tracer {

// Imitates the death of the thread that writes.
struct Death {};

class MemorySink : public helpers::LogSink {
public:
    bool WriteAt(std::uint64_t position, const char* bytes, std::size_t size) override {
        if (fails) return false;
        const std::size_t part = deathAfter < size ? deathAfter : size;
        if (text.size() < position + part) text.resize(position + part);
        text.replace(position, part, bytes, part);
        if (part == deathAfter) {
            deathAfter = kNever;
            throw Death();
        }
        return true;
    }

    // The lines behind the first `skip` characters of each, so without time and thread.
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find('\n', begin), text.size());
            std::string line = text.substr(begin, end - begin);
            if (!line.empty() && line.back() == '\r') line.pop_back();
            const std::size_t frame = line.find("] ");
            lines.push_back(frame == std::string::npos ? line : line.substr(frame + 2));
            begin = end + 1;
        }
        return lines;
    }

    static constexpr std::size_t kNever = ~std::size_t{0};
    std::size_t deathAfter = kNever;
    bool fails = false;
    std::string text;
};

struct TestTracer {
    TestTracer() {
        tracer.InitializeBuffers();
        tracer.SetLevelMask(0xFFFFFFFF);
        tracer.SetRunning(true);
    }
    void Write(const std::wstring& text) { tracer.Write(2, text); }
    bool Append(std::uint32_t buffer, const std::u16string& text) {
        return tracer.Buffer(buffer).Append(text.data(), static_cast<std::uint32_t>(text.size()));
    }
    std::byte* Bytes(std::uint32_t buffer) { return layout->buffers[buffer].records; }
    std::int32_t& Used(std::uint32_t buffer) { return layout->buffers[buffer].used; }

    std::unique_ptr<helpers::TracerLayout> layout = std::make_unique<helpers::TracerLayout>();
    helpers::Tracer tracer{*layout};
    MemorySink sink;
    std::unique_ptr<helpers::LogWriter> writer = std::make_unique<helpers::LogWriter>(tracer, sink);
};

}  // namespace test_tracer
