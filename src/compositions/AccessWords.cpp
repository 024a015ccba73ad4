#include "compositions/AccessWords.h"

#include "compositions/UpperName.h"

namespace compositions {

using namespace std::string_view_literals;

AccessWord AccessFlags::Take(std::wstring_view word) {
    if (IsKeyword(word, L"READ"sv)) return Set(kAccessRead, 0, status::kRead);
    if (IsKeyword(word, L"WRITE"sv)) return Set(kAccessWrite, 0, status::kRead);
    if (IsKeyword(word, L"EXPENSIVE"sv)) {
        return Set(kAccessExpensive, kAccessEnveloped, status::kExpensiveAfterEnveloped);
    }
    if (IsKeyword(word, L"ENVELOPED"sv)) {  // an enveloped property is always writable
        return Set(kAccessEnveloped | kAccessWrite, kAccessExpensive,
                   status::kEnvelopedAfterExpensive);
    }
    if (IsKeyword(word, L"NO_INTERPOLATION"sv)) {
        return Set(kAccessNoInterpolation, 0, status::kRead);
    }
    return AccessWord::kNotAnAccessWord;
}

AccessWord AccessFlags::Set(std::uint32_t flags, std::uint32_t opposed, std::int32_t refusal) {
    if (flags_ & opposed) {
        status_ = refusal;
        return AccessWord::kRefused;
    }
    flags_ |= flags;
    return AccessWord::kTaken;
}

}  // namespace compositions
