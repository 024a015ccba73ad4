#pragma once

// What a dynamic library's own file says about it, read without loading it: a Windows PE file or a
// Linux ELF file, on either system. All texts are as the file holds them.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tarnexctl {

enum class ImageFormat { kUnknown, kPe, kElf };

struct ImageImport {
    std::string library;
    std::vector<std::string> functions;  // by name, or "#7" by number; empty for ELF
    bool delayed = false;                // looked for at the first call only
};

struct ImageSection {
    std::string name;
    std::uint64_t address = 0;  // relative to where the image is loaded
    std::uint64_t size = 0;
};

struct LibraryImage {
    ImageFormat format = ImageFormat::kUnknown;
    std::string machine;  // "x64", "x86", "ARM64", or the number in the file
    bool isLibrary = false;
    std::vector<ImageImport> imports;
    std::vector<std::string> exports;
    std::vector<std::string> searchFolders;  // ELF: those that the file names itself
    std::vector<ImageSection> sections;
    std::string problem;  // what could not be read; the rest is what could

    bool Exports(const std::string& name) const;
    const ImageSection* FindSection(const std::string& name) const;
};

// Reads a library's file. kUnknown with a `problem` when it is neither kind; a damaged file gives
// what stands before the damage, and a `problem`. Time and memory are bounded by the file's size.
LibraryImage ReadLibraryImage(std::span<const std::byte> file);

// The two readers; each is given a file that begins with its signature.
LibraryImage ReadPe(std::span<const std::byte> file);
LibraryImage ReadElf(std::span<const std::byte> file);

}  // namespace tarnexctl
