#pragma once

// What every archive begins with: the signature and the version.

#include <cstddef>
#include <string_view>

namespace compositions {

// The terminating zero belongs to it.
inline constexpr std::string_view kArchiveSignature("ScriptArchive", 14);
inline constexpr std::size_t kArchiveVersionBytes = 4;
inline constexpr std::size_t kArchiveHeaderBytes = kArchiveSignature.size() + kArchiveVersionBytes;

}  // namespace compositions
