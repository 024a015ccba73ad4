#pragma once

// Loads plug-in libraries and keeps the functions found in them. The bodies live in the library; a
// host only sees the layout. Caller serialises.

#include <memory>
#include <string>
#include <vector>

namespace tarnex {

// One loaded library and its resolved function. Never unloads: a library, once loaded, stays.
template <typename Sig>
class DllWrapper {
public:
    // Loads the library at `path` and looks `entryName` up in it. Reports nothing: what failed is
    // null afterwards.
    DllWrapper(const std::wstring& path, const std::wstring& entryName);

    void* Module() const { return module_; }
    Sig* Entry() const { return entry_; }

private:
    void* module_ = nullptr;
    Sig* entry_ = nullptr;
};

template <typename Sig>
class PluginsFactory {
protected:
    PluginsFactory() = default;
    ~PluginsFactory() = default;

    // Tries every name of `fileList` in order. A name counts only when a "|" follows it: callers
    // rely on the text behind the last "|" being ignored. Always true; a library that does not load
    // or lacks the entry is passed over without a word.
    bool Load(const std::wstring& directory, const std::wstring& fileList,
              const std::wstring& entryName);

    const std::vector<Sig*>& Entries() const { return entries_; }
    const std::vector<std::shared_ptr<DllWrapper<Sig>>>& Libraries() const { return libraries_; }
    const std::vector<std::wstring>& Paths() const { return paths_; }

private:
    void LoadOne(const std::wstring& path, const std::wstring& entryName);

    std::vector<Sig*> entries_;                                // resolved functions, load order
    std::vector<std::shared_ptr<DllWrapper<Sig>>> libraries_;  // every library tried
    std::vector<std::wstring> paths_;                          // parallel to entries_
};

}  // namespace tarnex
