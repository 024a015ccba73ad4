#pragma once

#include <string>
#include <string_view>

namespace tarnexctl {

// A description's text as the author saw it, for people (UTF-8): a script's bytes above 0x7F, which
// the library keeps as characters of their own, become letters again, those of UTF-8 or else of the
// system's code page. Texts that no script holds are shown as they are.
std::string AuthorText(std::wstring_view text);

}  // namespace tarnexctl
