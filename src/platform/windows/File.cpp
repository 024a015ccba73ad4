#include "platform/File.h"

#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/NativePath.h"

namespace platform {
namespace {

HANDLE Native(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

bool InputFile::Open(const std::wstring& path) {
    Close();
    handle_ = reinterpret_cast<std::intptr_t>(CreateFileW(NativePath(path).c_str(), GENERIC_READ,
                                                          FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                                          0, nullptr));
    return IsOpen();
}

bool InputFile::IsOpen() const {
    return Native(handle_) != INVALID_HANDLE_VALUE;
}

bool InputFile::Size(std::uint64_t& size) const {
    LARGE_INTEGER value;
    if (!IsOpen() || !GetFileSizeEx(Native(handle_), &value)) return false;
    size = static_cast<std::uint64_t>(value.QuadPart);
    return true;
}

std::size_t InputFile::Read(void* buffer, std::size_t size) {
    DWORD count = 0;
    const auto wanted =
        static_cast<DWORD>(std::min<std::size_t>(size, std::numeric_limits<DWORD>::max()));
    if (!IsOpen() || !ReadFile(Native(handle_), buffer, wanted, &count, nullptr)) return 0;
    return count;
}

void InputFile::Close() {
    if (IsOpen()) CloseHandle(Native(handle_));
    handle_ = -1;
}

bool LastWriteTime(const std::wstring& path, std::uint64_t& time) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(NativePath(path).c_str(), GetFileExInfoStandard, &data)) return false;
    time = std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 |
           data.ftLastWriteTime.dwLowDateTime;
    return true;
}

}  // namespace platform
