#include "platform/windows/CommandLine.h"

#include <windows.h>

#include <cwchar>
#include <map>

#include "platform/CodePage.h"

namespace platform {
namespace {

// Backslashes count only before a quotation mark, where each stands for itself when doubled.
std::wstring Quoted(const std::wstring& text) {
    if (!text.empty() && text.find_first_of(L" \t\n\v\"") == std::wstring::npos) return text;
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : text) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        quoted += c;
    }
    return quoted.append(backslashes * 2, L'\\') + L'"';
}

struct LessIgnoringCase {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return CompareStringOrdinal(a.c_str(), -1, b.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};

}  // namespace

std::wstring CommandLineOf(const std::string& program, const std::vector<std::string>& arguments) {
    std::wstring line = L"\"" + ToWide(program, CodePage::kUtf8) + L"\"";
    for (const std::string& argument : arguments) {
        line += L' ' + Quoted(ToWide(argument, CodePage::kUtf8));
    }
    return line;
}

std::wstring EnvironmentWith(const std::vector<std::pair<std::string, std::string>>& variables) {
    std::map<std::wstring, std::wstring, LessIgnoringCase> all;
    wchar_t* const block = GetEnvironmentStringsW();
    for (const wchar_t* entry = block; entry != nullptr && *entry != 0;
         entry += std::wcslen(entry) + 1) {
        const std::wstring text = entry;
        const std::size_t equals = text.find(L'=', 1);  // hidden variables begin with one
        if (equals != std::wstring::npos) all[text.substr(0, equals)] = text.substr(equals + 1);
    }
    FreeEnvironmentStringsW(block);
    for (const auto& [name, value] : variables) {
        all[ToWide(name, CodePage::kUtf8)] = ToWide(value, CodePage::kUtf8);
    }
    std::wstring result;
    for (const auto& [name, value] : all) result += name + L'=' + value + L'\0';
    return result + L'\0';
}

}  // namespace platform
