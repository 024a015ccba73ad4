#include "compositions/host/ConverterValues.h"

#include <fstream>
#include <iterator>
#include <utility>

namespace host_test {

ScopedConverterValues::ScopedConverterValues(std::filesystem::path settingsFile)
    : file_(std::move(settingsFile)) {
    std::ifstream stream(file_);
    before_.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

ScopedConverterValues::~ScopedConverterValues() {
    std::ofstream(file_) << before_;
}

namespace {

constexpr char kSection[] = "\n[Software\\Tesmar\\VorelEngine\\Settings\\General]\n";

}  // namespace

void ScopedConverterValues::SetBytes(const ConverterValues& values) {
    std::ofstream stream(file_);
    stream << before_ << kSection << std::hex;
    for (const auto& [name, value] : values) {
        const char* separator = "=hex:";
        stream << name;
        for (const char byte : value) {
            stream << separator << static_cast<unsigned>(static_cast<unsigned char>(byte));
            separator = ",";
        }
        stream << "\n";
    }
}

void ScopedConverterValues::Set(const ConverterValues& values) {
    std::ofstream stream(file_);
    stream << before_ << kSection;
    for (const auto& [name, value] : values) stream << name << "=\"" << value << "\"\n";
}

}  // namespace host_test
