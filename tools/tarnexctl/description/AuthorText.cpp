#include "description/AuthorText.h"

#include "description/ScriptBytes.h"
#include "frame/Text.h"

namespace tarnexctl {

std::string AuthorText(std::wstring_view text) {
    const std::optional<std::string> bytes = ScriptBytes(text);
    return bytes ? FromSystemBytes(*bytes) : ToUtf8(text);
}

}  // namespace tarnexctl
