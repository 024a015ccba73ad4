#include "compositions/WideText.h"

#include <algorithm>
#include <cstring>

namespace compositions {
namespace {

template <std::size_t kBlock>
void CopyBothEnds(const char* from, char* to, std::size_t bytes) {
    char head[kBlock];
    char tail[kBlock];
    std::memcpy(head, from, kBlock);
    std::memcpy(tail, from + bytes - kBlock, kBlock);
    std::memcpy(to, head, kBlock);
    std::memcpy(to + bytes - kBlock, tail, kBlock);
}

// In blocks that overlap where the length is none of theirs: neither a loop nor a call. All is read
// before anything is written.
void CopyFew(std::wstring_view from, wchar_t* to) {
    const auto* const first = reinterpret_cast<const char*>(from.data());
    auto* const out = reinterpret_cast<char*>(to);
    const std::size_t bytes = from.size() * sizeof(wchar_t);
    if (bytes >= 32) return CopyBothEnds<32>(first, out, bytes);
    if (bytes >= 16) return CopyBothEnds<16>(first, out, bytes);
    if (bytes >= 8) return CopyBothEnds<8>(first, out, bytes);
    if (bytes >= 4) return CopyBothEnds<4>(first, out, bytes);
    if (bytes != 0) *to = from[0];
}

}  // namespace

template <std::size_t kBytesInPlace>
void BasicWideText<kBytesInPlace>::Copy(std::wstring_view characters) {
    wchar_t* const to = Begin(characters.size());
    if (IsLong()) {
        std::ranges::copy(characters, to);
    } else {
        CopyFew(characters, to);
    }
}

template <std::size_t kBytesInPlace>
BasicWideText<kBytesInPlace>& BasicWideText<kBytesInPlace>::Replace(std::wstring_view characters) {
    if (IsLong() || characters.size() > kLongestInPlace) [[unlikely]]
        return *this = BasicWideText(characters);
    // Before anything else is written: they may be some of its own characters.
    CopyFew(characters, buffer_.inPlace);
    Begin(characters.size());
    return *this;
}

template <std::size_t kBytesInPlace>
void BasicWideText<kBytesInPlace>::CutTo(std::size_t size) {
    if (size == size_) return;
    if (IsLong() && size <= kLongestInPlace) {
        *this = BasicWideText(std::wstring_view(data(), size));
    } else {
        size_ = size;
        data()[size] = 0;
    }
}

template class BasicWideText<24>;
template class BasicWideText<64>;

}  // namespace compositions
