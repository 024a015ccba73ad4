#pragma once

// A file of the process's own, removed when the process ends, for what is read from files alone.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace fuzz {

class TempFile {
public:
    explicit TempFile(const std::string& name) {
        std::random_device random;
        folder_ = std::filesystem::temp_directory_path() /
                  ("tarnex_fuzz_" + name + "_" + std::to_string(random()));
        std::filesystem::create_directories(folder_);
        path_ = folder_ / name;
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    // As the library takes it.
    std::wstring Path() const { return path_.wstring(); }
    const std::filesystem::path& Native() const { return path_; }
    const std::filesystem::path& Folder() const { return folder_; }

    void Write(std::string_view bytes) const {
        std::ofstream file(path_, std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string Read() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path folder_;
    std::filesystem::path path_;
};

}  // namespace fuzz
