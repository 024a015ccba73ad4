#include "platform/LibrarySearch.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

#include "platform/CodePage.h"
#include "platform/Console.h"
#include "platform/windows/SystemError.h"

namespace platform {
namespace {

template <typename Function>
std::string FolderFrom(Function get) {
    wchar_t buffer[32768];
    const UINT length = get(buffer, static_cast<UINT>(std::size(buffer)));
    return ToNarrow(std::wstring_view(buffer, length), CodePage::kUtf8);
}

bool BeginsWith(const std::string& text, const std::string& lowerPrefix) {
    if (text.size() < lowerPrefix.size()) return false;
    for (std::size_t i = 0; i < lowerPrefix.size(); ++i) {
        const char c = text[i];
        if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c) != lowerPrefix[i]) return false;
    }
    return true;
}

}  // namespace

std::string LastModuleError() {
    return SystemErrorText(GetLastError());
}

std::vector<std::string> LibrarySearchFolders() {
    std::vector<std::string> folders = {FolderFrom(GetSystemDirectoryW),
                                        FolderFrom(GetWindowsDirectoryW)};
    folders.insert(folders.begin() + 1, folders[1] + "\\system");
    folders.push_back(
        FolderFrom([](wchar_t* buffer, UINT size) { return GetCurrentDirectoryW(size, buffer); }));
    const std::string path = EnvironmentVariable("PATH");
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find(';', begin), path.size());
        if (end > begin) folders.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return folders;
}

const char* LibraryExtension() {
    return ".dll";
}

bool IsLibraryLoaded(const std::string& fileName) {
    return GetModuleHandleW(ToWide(fileName, CodePage::kUtf8).c_str()) != nullptr;
}

bool IsLibraryVirtual(const std::string& fileName) {
    return BeginsWith(fileName, "api-ms-win-") || BeginsWith(fileName, "ext-ms-");
}

}  // namespace platform
