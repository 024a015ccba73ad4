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

void ScopedConverterValues::Set(const ConverterValues& values) {
    std::ofstream stream(file_);
    stream << before_ << "\n[Software\\Tesmar\\VorelEngine\\Settings\\General]\n";
    for (const auto& [name, value] : values) stream << name << "=\"" << value << "\"\n";
}

}  // namespace host_test
