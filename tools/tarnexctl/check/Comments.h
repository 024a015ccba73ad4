#pragma once

// Comments take more with them than their authors think: what stands behind a ";" within a text,
// and every line end, so that the lines around them meet.

#include <string_view>
#include <vector>

#include "check/Recording.h"

namespace tarnexctl {

struct CommentTrouble {
    enum class Kind { kWithinText, kJoinsWords };
    Kind kind;
    ByteRange range;        // from the ";" on
    ByteRange joined = {};  // of kJoinsWords: from the first word to the end of the second
};

// In the order of the text.
std::vector<CommentTrouble> FindCommentTrouble(std::string_view bytes);

// A header that stands in a comment, alone on its line: a section that was taken out.
struct CommentedHeader {
    Section section;
    ByteRange range;
};
std::vector<CommentedHeader> FindCommentedHeaders(std::string_view bytes);

}  // namespace tarnexctl
