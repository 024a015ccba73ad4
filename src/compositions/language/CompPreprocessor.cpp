#include "compositions/language/CompPreprocessor.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace compositions {
namespace {

// As many bytes are looked at, widened and kept before the next: they are still in the cache.
constexpr std::size_t kBlock = 1024;

// Calls `keep` with each run of bytes outside comments, in order; none is longer than a block. True
// when the bytes end in a comment.
template <class Keep>
bool ForEachKeptRun(std::string_view bytes, Keep keep) {
    while (!bytes.empty()) {
        const std::string_view block = bytes.substr(0, kBlock);
        const std::size_t comment = block.find(';');
        keep(block.substr(0, comment));
        if (comment == block.npos) {
            bytes.remove_prefix(block.size());
            continue;
        }
        const std::size_t lineFeed = bytes.find('\n', comment);
        if (lineFeed == bytes.npos) return true;
        bytes.remove_prefix(lineFeed + 1);
    }
    return false;
}

wchar_t Widened(char byte) {
    return static_cast<wchar_t>(static_cast<std::uint16_t>(static_cast<signed char>(byte)));
}

// Writes all characters to the stream, those too that equal its end-of-file value: a stream takes
// such a one only where it has room already, so room is made with another character first.
void Write(std::wostream& out, std::wstring_view text) {
    using Traits = std::wostream::traits_type;
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() &&
               !Traits::eq_int_type(Traits::to_int_type(text[plain]), Traits::eof())) {
            ++plain;
        }
        out.write(text.data(), static_cast<std::streamsize>(plain));
        text.remove_prefix(plain);
        if (text.empty()) return;
        if (out.tellp() != std::wostream::pos_type(-1)) out.put(L' ').seekp(-1, std::ios_base::cur);
        out.write(text.data(), 1);
        text.remove_prefix(1);
    }
}

}  // namespace

bool CompPreprocessor::preprocess(std::string_view bytes, std::wstring& text) const {
    text.clear();
    text.reserve(bytes.size() + 2);
    std::array<wchar_t, kBlock> wide;
    const bool inComment = ForEachKeptRun(bytes, [&](std::string_view run) {
        std::ranges::transform(run, wide.begin(), Widened);
        text.append(wide.data(), run.size());
    });
    if (!inComment) text.push_back(L' ');
    text.push_back(L'\0');
    return true;
}

bool CompPreprocessor::preprocess(const File& file, std::wostream& out) const {
    try {
        std::string_view bytes = file.Bytes();
        std::wstring text(1, L'\0');  // all that a file without a buffer gives
        if (!bytes.empty()) {
            bytes.remove_suffix(1);  // the blank, which comes back
            preprocess(bytes, text);
        }
        Write(out, text);
        return true;
    } catch (...) {  // the stream's, whatever it was told to throw
        return false;
    }
}

}  // namespace compositions
