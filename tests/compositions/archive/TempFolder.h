#pragma once

// A folder of its own for each test, removed with everything in it. Its name has letters that many
// narrow code pages lack.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/CodePage.h"

class TempFolder {
public:
    TempFolder() {
        static std::atomic<unsigned> counter{0};
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        path_ = std::filesystem::temp_directory_path() /
                (u8"tarnex \u010D\u4E2D " + Digits(static_cast<unsigned long long>(stamp)) + u8"-" +
                 Digits(counter.fetch_add(1, std::memory_order_relaxed)));
        std::filesystem::create_directories(path_);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& name) const {
        return path_ / name;
    }
    // The path of a file in it, as the library takes it.
    std::wstring Wide(const std::filesystem::path& name) const { return WidePath(path_ / name); }

    static std::wstring WidePath(const std::filesystem::path& path) {
        const std::u8string text = path.u8string();
        return platform::ToWide({reinterpret_cast<const char*>(text.data()), text.size()},
                                platform::CodePage::kUtf8);
    }

private:
    static std::u8string Digits(unsigned long long value) {
        const std::string digits = std::to_string(value);
        return {digits.begin(), digits.end()};
    }

    std::filesystem::path path_;
};

inline void WriteBytes(const std::filesystem::path& path, const std::string& bytes) {
    std::error_code missing;
    std::filesystem::remove(path, missing);  // some systems flush a file that is cut and rewritten
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.flush()) << "cannot write " << path;
}

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
