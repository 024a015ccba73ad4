#include "platform/SharedMemory.h"

#include <windows.h>

namespace platform {
namespace {

HANDLE Native(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

std::wstring WideName(const std::string& name) {
    return {name.begin(), name.end()};
}

}  // namespace

SharedMemory::Outcome SharedMemory::Attach(const std::string& name, bool mayCreate,
                                           std::size_t size, std::uint32_t& error) {
    name_ = name;
    bool created = false;
    HANDLE mapping = OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, WideName(name).c_str());
    if (mapping == nullptr && !mayCreate && GetLastError() == ERROR_FILE_NOT_FOUND) {
        return Outcome::kMissing;
    }
    if (mapping == nullptr) {
        mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                     static_cast<DWORD>(size), WideName(name).c_str());
        created = mapping != nullptr && GetLastError() != ERROR_ALREADY_EXISTS;
    }
    data_ = mapping == nullptr ? nullptr : MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, size);
    error = data_ == nullptr ? GetLastError() : 0;
    if (data_ == nullptr) {
        if (mapping != nullptr) CloseHandle(mapping);
        return Outcome::kFailed;
    }
    handle_ = reinterpret_cast<std::intptr_t>(mapping);
    size_ = size;
    return created ? Outcome::kCreated : Outcome::kOpened;
}

void SharedMemory::Close(bool) {
    if (data_ == nullptr) return;
    UnmapViewOfFile(data_);
    CloseHandle(Native(handle_));  // the name goes with its last handle
    data_ = nullptr;
}

}  // namespace platform
