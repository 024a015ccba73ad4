#include "tarnex/PluginsFactory.h"

#include <string_view>

#include "platform/CodePage.h"
#include "platform/Module.h"
#include "tarnex/GlobalFxFactory.h"

namespace tarnex {

namespace {

constexpr wchar_t kNameTerminator = L'|';
constexpr wchar_t kFolderSeparator = L'\\';

}  // namespace

template <typename Sig>
DllWrapper<Sig>::DllWrapper(const std::wstring& path, const std::wstring& entryName)
    : module_(platform::LoadModule(path)) {
    if (module_ == nullptr) {
        return;
    }
    const std::string narrowName = platform::ToNarrow(entryName, platform::CodePage::kAnsi);
    entry_ = reinterpret_cast<Sig*>(platform::ResolveSymbol(module_, narrowName));
}

template <typename Sig>
bool PluginsFactory<Sig>::Load(const std::wstring& directory, const std::wstring& fileList,
                               const std::wstring& entryName) {
    std::wstring_view rest = fileList;
    for (std::size_t end; (end = rest.find(kNameTerminator)) != std::wstring_view::npos;) {
        const std::wstring_view name = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        std::wstring path;
        path.reserve(directory.size() + 1 + name.size());
        LoadOne(path.append(directory).append(1, kFolderSeparator).append(name), entryName);
    }
    return true;
}

template <typename Sig>
void PluginsFactory<Sig>::LoadOne(const std::wstring& path, const std::wstring& entryName) {
    libraries_.push_back(std::make_shared<DllWrapper<Sig>>(path, entryName));
    if (Sig* entry = libraries_.back()->Entry()) {
        paths_.push_back(path);
        try {
            entries_.push_back(entry);
        } catch (...) {
            paths_.pop_back();  // the two stay parallel
            throw;
        }
    }
}

template class DllWrapper<PluginEntry>;
template class PluginsFactory<PluginEntry>;

}  // namespace tarnex
