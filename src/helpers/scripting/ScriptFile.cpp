#include "helpers/scripting/ScriptFile.h"

#include <limits>

namespace helpers::scripting {

template <class String>
ScriptFile<String>::ScriptFile(const String& path) {
    std::uint64_t size = 0;
    if (!file_.Open(path)) return;
    if (!file_.Size(size) || size == 0 || size >= std::numeric_limits<std::uint32_t>::max()) {
        file_.Close();
        return;
    }
    length_ = static_cast<std::uint32_t>(size) + 1;
    buffer_.reset(new char[length_]);
    const std::size_t read = file_.Read(buffer_.get(), static_cast<std::size_t>(size));
    buffer_[length_ - 1] = ' ';
    if (read != size) return;  // short: the file stays open until the destructor
    loaded_ = true;
    file_.Close();
}

template <class String>
char ScriptFile<String>::Character(std::uint32_t index) {
    if (buffer_) return buffer_[index];
    readError_ = true;
    return ' ';
}

template class ScriptFile<std::wstring>;

}  // namespace helpers::scripting
