#include "compositions/AccessWords.h"

#include "compositions/UpperName.h"

namespace compositions {

AccessWord AccessFlags::Take(std::wstring_view word) {
    if (IsKeyword(word, L"READ")) return Set(kAccessRead, 0, status::kRead);
    if (IsKeyword(word, L"WRITE")) return Set(kAccessWrite, 0, status::kRead);
    if (IsKeyword(word, L"EXPENSIVE")) {
        return Set(kAccessExpensive, kAccessEnveloped, status::kExpensiveAfterEnveloped);
    }
    if (IsKeyword(word, L"ENVELOPED")) {  // an enveloped property is always writable
        return Set(kAccessEnveloped | kAccessWrite, kAccessExpensive,
                   status::kEnvelopedAfterExpensive);
    }
    if (IsKeyword(word, L"NO_INTERPOLATION")) return Set(kAccessNoInterpolation, 0, status::kRead);
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
