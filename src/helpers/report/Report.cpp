#include "helpers/report/Report.h"

#include <cstdio>
#include <cwchar>
#include <iterator>

#include "helpers/tracer/TraceMessage.h"
#include "platform/CodePage.h"
#include "platform/DebugOutput.h"

namespace helpers {
namespace {

// Room of every text, its terminator included: what does not fit is cut.
constexpr std::size_t kTextSize = 1024;

#define TARNEX_NAME(code, name) #name,
constexpr const char* kFxNames[] = {TARNEX_FX_ERRORS(TARNEX_NAME)};
constexpr const char* kManagerNames[] = {TARNEX_MANAGER_ERRORS(TARNEX_NAME)};
constexpr const char* kPropertyNames[] = {TARNEX_PROPERTY_ERRORS(TARNEX_NAME)};
#undef TARNEX_NAME

#define TARNEX_CODE(code, name) code,
constexpr unsigned kFxCodes[] = {TARNEX_FX_ERRORS(TARNEX_CODE)};
constexpr unsigned kManagerCodes[] = {TARNEX_MANAGER_ERRORS(TARNEX_CODE)};
constexpr unsigned kPropertyCodes[] = {TARNEX_PROPERTY_ERRORS(TARNEX_CODE)};
#undef TARNEX_CODE

// The names are indexed by code, so the tables must count up from 0 without a gap.
constexpr bool CountsUp(const unsigned* first, const unsigned* last) {
    for (unsigned expected = 0; first != last; ++first, ++expected) {
        if (*first != expected) {
            return false;
        }
    }
    return true;
}
static_assert(CountsUp(std::begin(kFxCodes), std::end(kFxCodes)));
static_assert(CountsUp(std::begin(kManagerCodes), std::end(kManagerCodes)));
static_assert(CountsUp(std::begin(kPropertyCodes), std::end(kPropertyCodes)));

// A code's name, or the number itself outside the table. Allocates nothing.
class CodeText {
public:
    explicit CodeText(fx::_eError code) : CodeText(kFxNames, std::size(kFxNames), code) {}
    explicit CodeText(tarnex::_eError code)
        : CodeText(kManagerNames, std::size(kManagerNames), code) {}
    explicit CodeText(base_types::_eError code)
        : CodeText(kPropertyNames, std::size(kPropertyNames), code) {}

    const char* Text() const { return name_ ? name_ : number_; }

private:
    CodeText(const char* const* names, std::size_t count, std::uint32_t code)
        : name_(code < count ? names[code] : nullptr) {
        std::snprintf(number_, sizeof number_, "%u", static_cast<unsigned>(code));
    }

    const char* name_;
    char number_[16];
};

const char* OrEmpty(const char* text) {
    return text ? text : "";
}

// A wide text of at most kTextSize - 1 characters, cut where it is full. Built by hand because C
// libraries disagree on what %s and %S mean in a wide format.
class WideText {
public:
    WideText& Narrow(const char* text) { return Wide(platform::ToWide(text, kPage).c_str()); }
    WideText& Wide(const wchar_t* text) {
        while (*text != L'\0' && length_ < kTextSize - 1) {
            text_[length_++] = *text++;
        }
        return *this;
    }
    std::wstring_view View() const { return {text_, length_}; }

private:
    static constexpr platform::CodePage kPage = platform::CodePage::kAnsi;

    wchar_t text_[kTextSize];
    std::size_t length_ = 0;
};

// Out of memory the line is lost, and the caller's code is not.
template <class Text>
void Trace(const Text& text) {
    try {
        TraceMessage message;
        message.Append(text);
    } catch (...) {
        return;
    }
}

template <class Code>
Code Report(Code code) {
    if (code != 0) {
        char text[kTextSize];
        std::snprintf(text, sizeof text, "Operation returned error <%s>", CodeText(code).Text());
        Trace(std::string_view(text));
    }
    return code;
}

template <class Code>
Code Report(Code code, const char* operation) {
    if (code != 0) {
        char text[kTextSize];
        std::snprintf(text, sizeof text, "Operation \"%s\" returned error <%s>", OrEmpty(operation),
                      CodeText(code).Text());
        Trace(std::string_view(text));
    }
    return code;
}

void TraceWithProperty(base_types::_eError code, const char* operation,
                       const std::wstring& property) {
    WideText text;
    text.Wide(L"Operation \"").Narrow(OrEmpty(operation)).Wide(L"\" returned error <");
    text.Narrow(CodeText(code).Text()).Wide(L">, property: \"");
    text.Wide(property.c_str()).Wide(L"\"");
    Trace(text.View());
}

}  // namespace

std::string ErrorName(fx::_eError code) {
    return CodeText(code).Text();
}

std::string ErrorName(tarnex::_eError code) {
    return CodeText(code).Text();
}

std::string ErrorName(base_types::_eError code) {
    return CodeText(code).Text();
}

fx::_eError ReportFxError(fx::_eError code) {
    return Report(code);
}

fx::_eError ReportFxError(fx::_eError code, const char* operation) {
    return Report(code, operation);
}

tarnex::_eError ReportTarnexError(tarnex::_eError code) {
    return Report(code);
}

tarnex::_eError ReportTarnexError(tarnex::_eError code, const char* operation) {
    return Report(code, operation);
}

base_types::_eError ReportPropertyError(base_types::_eError code) {
    return Report(code);
}

base_types::_eError ReportPropertyError(base_types::_eError code, const char* operation) {
    return Report(code, operation);
}

base_types::_eError ReportPropertyError(base_types::_eError code, const char* operation,
                                        const std::wstring& property) {
    if (code != 0) {
        try {
            TraceWithProperty(code, operation, property);
        } catch (...) {
            // Out of memory while widening: the line is lost, the code is not.
        }
    }
    return code;
}

void ReportException(std::uint32_t code, const char* file, int line, const char* name) {
    char text[kTextSize];
    std::snprintf(text, sizeof text, "Exception catched: (%d) file: %s, line: (%d) name: %s\n",
                  static_cast<int>(code), OrEmpty(file), line, OrEmpty(name));
    platform::DebugOutput(text);
}

void ReportUnknownException(const char* file, int line, const char* name) {
    char text[kTextSize];
    std::snprintf(text, sizeof text, "Exception catched: (...) file: %s, line: (%d) name: %s\n",
                  OrEmpty(file), line, OrEmpty(name));
    platform::DebugOutput(text);
}

void ReportAssertion(const char* file, int line, const char* name) {
    char text[kTextSize];
    std::snprintf(text, sizeof text, "ASSERT in file: %s, line: (%d) name: %s\n", OrEmpty(file),
                  line, OrEmpty(name));
    platform::DebugOutput(text);
}

}  // namespace helpers
