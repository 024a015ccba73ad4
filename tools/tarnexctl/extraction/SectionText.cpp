#include "extraction/SectionText.h"

#include <cstdio>

#include "compositions/UpperName.h"
#include "compositions/language/CompInterpreter.h"
#include "description/AuthorText.h"
#include "description/ScriptBytes.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

// Why the statement cannot be written, as far as that shows in its characters.
std::string ReasonOf(std::wstring_view statement, const std::vector<std::wstring>& pieces) {
    for (const wchar_t character : statement) {
        if (HasScriptByte(character)) continue;
        char code[32];
        std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(character));
        return std::string(code) + " is no character of scripts";
    }
    if (statement.find(L';') != std::wstring_view::npos) return "\";\" starts a comment";
    for (const std::wstring& piece : pieces) {
        if (piece.find(L'"') != std::wstring::npos) return "a quote ends a text";
    }
    return "no statement reads so";
}

}  // namespace

bool SectionText::Add(std::uint32_t rule, const std::wstring& statement,
                      const std::vector<std::wstring>& pieces, const std::string& where) {
    const std::optional<std::string> bytes = ScriptBytes(statement);
    if (!bytes || !ReadsAs(rule, std::string_view(*bytes), pieces)) {
        AddGap(where, ReasonOf(statement, pieces));
        return false;
    }
    text_ += *bytes + "\n";
    return true;
}

bool ReadsAs(std::uint32_t rule, std::string_view bytes, const std::vector<std::wstring>& pieces) {
    compositions::CompInterpreter interpreter(std::string(bytes) + "\n");
    std::vector<std::wstring> read;
    if (!interpreter.get_expression(rule, read) || read != pieces) return false;
    // Behind the text stand its line end, a blank and the zero that ends every script.
    return interpreter.Text().find_first_not_of(L"\n \0", interpreter.Position(), 3) ==
           std::wstring::npos;
}

bool ReadsAs(std::uint32_t rule, std::wstring_view text, const std::vector<std::wstring>& pieces) {
    const std::optional<std::string> bytes = ScriptBytes(text);
    return bytes && ReadsAs(rule, std::string_view(*bytes), pieces);
}

std::wstring QuotedText(std::wstring_view text) {
    return std::wstring(L"\"").append(text).append(L"\"");
}

std::string Where(const char* what, std::wstring_view name) {
    return std::string(what) + ' ' + InQuotes(AuthorText(name));
}

bool IsUpper(std::wstring_view text) {
    return compositions::UpperText(text) == text;
}

}  // namespace tarnexctl
