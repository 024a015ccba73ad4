#pragma once

// The user's settings of the conversion to archives, as any program writes them.

#include <filesystem>
#include <map>
#include <string>

namespace host_test {

using ConverterValues = std::map<std::string, std::string>;  // absent values are not in it

// The settings while the object lives; gone afterwards. They may change while a host runs. Where
// settings are a file, they go into `settingsFile`, behind what it holds already.
class ScopedConverterValues {
public:
    explicit ScopedConverterValues(std::filesystem::path settingsFile);
    ~ScopedConverterValues();
    ScopedConverterValues(const ScopedConverterValues&) = delete;
    ScopedConverterValues& operator=(const ScopedConverterValues&) = delete;

    void Set(const ConverterValues& values);
    // Values of bytes instead of texts.
    void SetBytes(const ConverterValues& values);

private:
    std::filesystem::path file_;
    std::string before_;
};

}  // namespace host_test
