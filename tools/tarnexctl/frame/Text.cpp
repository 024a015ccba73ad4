#include "frame/Text.h"

#include <cstdint>
#include <cstdio>
#include <sstream>

#include "platform/CodePage.h"

namespace tarnexctl {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// The length of the valid UTF-8 sequence at the start of `text`; 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0u) == 0x80u; };
    const unsigned first = byte(0);
    if (text.empty()) return 0;
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        if (!follows(1) || !follows(2)) return 0;
        const bool overlong = first == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = first == 0xED && byte(1) > 0x9F;
        return overlong || surrogate ? 0 : 3;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        if (!follows(1) || !follows(2) || !follows(3)) return 0;
        const bool overlong = first == 0xF0 && byte(1) < 0x90;
        const bool beyond = first == 0xF4 && byte(1) > 0x8F;
        return overlong || beyond ? 0 : 4;
    }
    return 0;
}

}  // namespace

bool IsValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string ValidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        valid.append(length == 0 ? kReplacement : text.substr(0, length));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return valid;
}

std::string ToUtf8(std::wstring_view text) {
    return ValidUtf8(platform::ToNarrow(text, platform::CodePage::kUtf8));
}

std::wstring ToWide(std::string_view utf8) {
    return platform::ToWide(ValidUtf8(utf8), platform::CodePage::kUtf8);
}

std::string FromSystemBytes(std::string_view bytes) {
    if (IsValidUtf8(bytes)) return std::string(bytes);
    return ToUtf8(platform::ToWide(bytes, platform::CodePage::kAnsi));
}

std::string Printable(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            shown += "\\n";
        } else if (c == '\r') {
            shown += "\\r";
        } else if (c == '\t') {
            shown += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X", byte);
            shown += escape;
        } else {
            shown += c;
        }
    }
    return shown;
}

std::string InQuotes(std::string_view name) {
    return "\"" + Printable(ValidUtf8(name)) + "\"";
}

std::size_t DisplayWidth(std::string_view utf8) {
    std::size_t width = 0;
    for (const char c : utf8) {
        if ((static_cast<unsigned char>(c) & 0xC0u) != 0x80u) ++width;
    }
    return width;
}

std::filesystem::path ToPath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

std::string Joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) joined += separator;
        joined += texts[i];
    }
    return joined;
}

std::string Count(std::size_t number, const std::string& singular, const std::string& plural) {
    return std::to_string(number) + ' ' + (number == 1 ? singular : plural);
}

std::string Wrapped(const std::string& text, const std::string& indent, std::size_t width) {
    std::istringstream words(text);
    std::string wrapped;
    std::string line = indent;
    for (std::string word; words >> word;) {
        if (line.size() > indent.size() && DisplayWidth(line) + 1 + DisplayWidth(word) > width) {
            wrapped += line + "\n";
            line = indent;
        }
        if (line.size() > indent.size()) line += ' ';
        line += word;
    }
    return wrapped + line + "\n";
}

}  // namespace tarnexctl
