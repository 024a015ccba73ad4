#include "platform/CharacterCase.h"

#include <wchar.h>

namespace platform {

void ToUpperCase(wchar_t* text, std::size_t length) {
    _wcsupr_s(text, length + 1);
}

}  // namespace platform
