#pragma once

// What every archive begins with: the signature and the version.

#include <cstddef>
#include <string_view>

namespace compositions {

// The zero at its end belongs to it.
inline constexpr char kArchiveSignatureBytes[] = "ScriptArchive";
inline constexpr std::string_view kArchiveSignature(kArchiveSignatureBytes,
                                                    sizeof(kArchiveSignatureBytes));
inline constexpr std::size_t kArchiveVersionBytes = 4;
inline constexpr std::size_t kArchiveHeaderBytes = kArchiveSignature.size() + kArchiveVersionBytes;

}  // namespace compositions
