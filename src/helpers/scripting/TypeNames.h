#pragma once

// The full names of the toolkit's templates as one compiler spells them, on every compiler: lines
// in the debugger output are searched for by these texts.

#include <string>

namespace helpers::scripting {

template <class String>
class ScriptFile;

// A class that the toolkit does not know names itself.
template <class Type>
struct TypeName {
    static std::string Get() { return Type::kTypeName; }
};

template <>
struct TypeName<std::wstring> {
    static std::string Get() {
        return "class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,"
               "class std::allocator<wchar_t> >";
    }
};

template <class String>
struct TypeName<ScriptFile<String>> {
    static std::string Get() {
        return "class helpers::scripting::ScriptFile<" + TypeName<String>::Get() + " >";
    }
};

// "helpers::scripting::Script<...>::Script" and the like.
template <class Preprocessor, class File, class String>
std::string OperationName(const char* className, const char* operation) {
    return std::string("helpers::scripting::") + className + "<" + TypeName<Preprocessor>::Get() +
           "," + TypeName<File>::Get() + "," + TypeName<String>::Get() + " >::" + operation;
}

}  // namespace helpers::scripting
