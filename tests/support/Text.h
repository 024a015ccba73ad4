#pragma once

// UTF-8, wide texts and paths, whatever the locale says.

#include <filesystem>
#include <string>

#include "platform/CodePage.h"

namespace test_support {

inline std::wstring Wide(const std::string& text) {
    return platform::ToWide(text, platform::CodePage::kUtf8);
}

inline std::string Utf8(const std::wstring& text) {
    return platform::ToNarrow(text, platform::CodePage::kUtf8);
}

inline std::filesystem::path PathFromUtf8(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

inline std::string Utf8(const std::filesystem::path& path) {
    const std::u8string bytes = path.u8string();
    return std::string(bytes.begin(), bytes.end());
}

}  // namespace test_support
