#include "PropertyText.h"

#include <cstdio>

#include "Text.h"

namespace host {

std::string Text(std::int32_t value) {
    return std::to_string(value);
}

std::string Text(std::int64_t value) {
    return std::to_string(value);
}

std::string Text(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
    return text;
}

std::string Text(bool value) {
    return value ? "true" : "false";
}

std::string Text(const std::wstring& value) {
    return "\"" + Utf8(value) + "\"";
}

}  // namespace host
