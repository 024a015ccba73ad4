#include "helpers/regs/RegKey.h"

#include <string_view>

namespace helpers::regs {
namespace {

// No single call takes a path of this many characters or more.
constexpr std::size_t kPathLimit = 255;

constexpr std::uint32_t kReadAccess = 0x20019;          // KEY_READ
constexpr std::uint32_t kCreateAccess = 7;              // query and set values, create sub-keys
constexpr std::uint32_t kCreateIntermediateAccess = 6;  // set values, create sub-keys

// Opens one piece and leaves its handle on the stack; null on failure.
platform::SettingsKey OpenPiece(platform::SettingsKey parent, std::wstring_view piece, bool create,
                                std::uint32_t createAccess, HandleStack& handles) {
    const std::wstring path(piece);
    const platform::SettingsKey key = create
                                          ? platform::CreateSettingsKey(parent, path, createAccess)
                                          : platform::OpenSettingsKey(parent, path, kReadAccess);
    if (key != nullptr) handles.Push(key);
    return key;
}

}  // namespace

void HandleStack::Push(platform::SettingsKey key) {
    try {
        keys_.push_back(key);
    } catch (...) {
        platform::CloseSettingsKey(key);
        throw;
    }
}

void HandleStack::Release() {
    for (; !keys_.empty(); keys_.pop_back()) platform::CloseSettingsKey(keys_.back());
}

bool RegKey::Open(platform::SettingsKey root, bool create, HandleStack& handles,
                  platform::SettingsKey& key) const {
    std::wstring_view rest = path_;
    platform::SettingsKey parent = root;
    while (rest.size() >= kPathLimit) {
        // The longest piece that ends before a backslash and stays below the limit.
        const std::size_t cut = rest.rfind(L'\\', kPathLimit - 1);
        if (cut == std::wstring_view::npos) return false;
        parent = OpenPiece(parent, rest.substr(0, cut), create, kCreateIntermediateAccess, handles);
        if (parent == nullptr) return false;
        rest.remove_prefix(cut + 1);
    }
    const platform::SettingsKey opened = OpenPiece(parent, rest, create, kCreateAccess, handles);
    if (opened == nullptr) return false;
    key = opened;
    return true;
}

}  // namespace helpers::regs
