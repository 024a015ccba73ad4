#include "compositions/ArchivePath.h"

#include <cstddef>

namespace compositions {
namespace {

constexpr std::wstring_view kArchiveExtension = L".mxf";
constexpr std::wstring_view kSeparators = L"\\/";

// The longest texts of buffers of 260 and 256 characters.
constexpr std::size_t kLongestPath = 259;
constexpr std::size_t kLongestName = 259;
constexpr std::size_t kLongestPiece = 255;

}  // namespace

PathPieces SplitPath(std::wstring_view path) {
    const std::size_t drive = path.size() > 1 && path[1] == L':' ? 2 : 0;
    std::size_t name = path.find_last_of(kSeparators);
    name = name == std::wstring_view::npos || name < drive ? drive : name + 1;
    std::size_t extension = path.find_last_of(L'.');
    if (extension == std::wstring_view::npos || extension < name) extension = path.size();
    return {path.substr(0, drive), path.substr(drive, name - drive),
            path.substr(name, extension - name), path.substr(extension)};
}

std::optional<std::wstring> ArchivePathOf(std::wstring_view path) {
    path = path.substr(0, path.find(L'\0'));
    if (path.size() > kLongestPath) return std::nullopt;
    const PathPieces pieces = SplitPath(path);
    const bool fits = pieces.folder.size() <= kLongestPiece &&
                      pieces.extension.size() <= kLongestPiece &&
                      pieces.name.size() + kArchiveExtension.size() <= kLongestName;
    if (!fits) return std::nullopt;
    std::wstring archive(path.substr(0, path.size() - pieces.extension.size()));
    archive += kArchiveExtension;
    if (archive.size() > kLongestPath) return std::nullopt;
    return archive;
}

}  // namespace compositions
