#pragma once

// Where the characters of a script's text stand in the file that it came from: comments are not in
// the text. Made by those who ask, from the script's bytes; nothing is kept for those who do not.

#include <cstddef>
#include <string_view>
#include <vector>

namespace compositions {

class ByteOffsets {
public:
    // Takes memory for each comment. The bytes may go once this returns.
    explicit ByteOffsets(std::string_view bytes);

    // The offset of the byte that became the character at `position`; the number of bytes for the
    // blank and the zero that end the text, and for anything behind them. Any thread.
    std::size_t At(std::size_t position) const;

private:
    struct Cut {
        std::size_t position;  // of the first character behind the comment
        std::size_t removed;   // bytes, in all comments so far
    };

    std::size_t byteCount_;
    std::vector<Cut> cuts_;
};

}  // namespace compositions
