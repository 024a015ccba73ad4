#include "platform/CharacterCase.h"

namespace platform {

void ToUpperCase(wchar_t* text, std::size_t length) {
    for (wchar_t* end = text + length; text != end; ++text) {
        if (*text >= L'a' && *text <= L'z') *text -= L'a' - L'A';
    }
}

}  // namespace platform
