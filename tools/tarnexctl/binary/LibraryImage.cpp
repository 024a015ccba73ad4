#include "binary/LibraryImage.h"

#include <algorithm>
#include <string_view>

namespace tarnexctl {
namespace {

bool BeginsWith(std::span<const std::byte> file, std::string_view signature) {
    return file.size() >= signature.size() &&
           std::equal(signature.begin(), signature.end(), file.begin(),
                      [](char c, std::byte b) { return static_cast<std::byte>(c) == b; });
}

}  // namespace

bool LibraryImage::Exports(const std::string& name) const {
    return std::find(exports.begin(), exports.end(), name) != exports.end();
}

const ImageSection* LibraryImage::FindSection(const std::string& name) const {
    for (const ImageSection& section : sections) {
        if (section.name == name) return &section;
    }
    return nullptr;
}

LibraryImage ReadLibraryImage(std::span<const std::byte> file) {
    if (BeginsWith(file, "MZ")) return ReadPe(file);
    if (BeginsWith(file,
                   "\x7F"
                   "ELF"))
        return ReadElf(file);
    LibraryImage image;
    image.problem =
        file.empty() ? "the file is empty" : "the file is neither a Windows nor a Linux library";
    return image;
}

}  // namespace tarnexctl
