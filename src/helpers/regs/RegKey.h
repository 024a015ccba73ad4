#pragma once

// A key of the settings store, by its path. Any thread; caller serialises one object.

#include <deque>
#include <string>

#include "platform/Settings.h"

namespace helpers::regs {

// Open key handles, closed from the last to the first.
class HandleStack {
public:
    HandleStack() = default;
    ~HandleStack() { Release(); }
    HandleStack(const HandleStack&) = delete;
    HandleStack& operator=(const HandleStack&) = delete;

    // Owns the handle from now on, even if it throws std::bad_alloc.
    void Push(platform::SettingsKey key);
    std::size_t Size() const { return keys_.size(); }
    void Release();

private:
    std::deque<platform::SettingsKey> keys_;
};

class RegKey {
public:
    explicit RegKey(std::wstring path) : path_(std::move(path)) {}
    virtual ~RegKey() = default;

    // Opens the key below `root` for reading; with `create`, opens it for writing and makes what is
    // missing. On success `key` is the open handle, which `handles` owns. On failure false and
    // `key` is unchanged; handles opened on the way stay on the stack.
    bool Open(platform::SettingsKey root, bool create, HandleStack& handles,
              platform::SettingsKey& key) const;

    const std::wstring& Path() const { return path_; }

private:
    std::wstring path_;
};

}  // namespace helpers::regs
