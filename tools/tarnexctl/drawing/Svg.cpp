#include "drawing/Svg.h"

#include <utility>

#include "frame/Text.h"

namespace tarnexctl {
namespace {

// name="value", with a blank before it.
std::string Attribute(const char* name, std::string_view value) {
    return std::string(" ").append(name).append("=\"").append(value).append("\"");
}

std::string Attribute(const char* name, int value) {
    return Attribute(name, std::to_string(value));
}

}  // namespace

std::string XmlText(std::string_view utf8) {
    std::string text;
    for (const char c : Printable(ValidUtf8(utf8))) {
        if (c == '&') {
            text += "&amp;";
        } else if (c == '<') {
            text += "&lt;";
        } else if (c == '>') {
            text += "&gt;";
        } else if (c == '"') {
            text += "&quot;";
        } else {
            text += c;
        }
    }
    // U+FFFE and U+FFFF are no characters of XML.
    for (const char* const forbidden : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        for (std::size_t at = 0; (at = text.find(forbidden, at)) != std::string::npos;) {
            text[at + 2] = '\xBD';
        }
    }
    return text;
}

Svg::Svg(int width, int height, std::string_view title, std::string_view style) {
    text_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
        Attribute("width", width) + Attribute("height", height) +
        Attribute("viewBox", "0 0 " + std::to_string(width) + " " + std::to_string(height)) +
        ">\n<title>" + XmlText(title) + "</title>\n<style>\n";
    text_.append(style).append("</style>\n");
    Box(0, 0, width, height, 0, "page");
}

void Svg::Begin(std::string_view cssClass, std::string_view title) {
    text_ += "<g" + Attribute("class", cssClass) + ">\n<title>" + XmlText(title) + "</title>\n";
}

void Svg::End() {
    text_ += "</g>\n";
}

void Svg::Box(int x, int y, int width, int height, int radius, std::string_view cssClass) {
    text_ += "<rect" + Attribute("x", x) + Attribute("y", y) + Attribute("width", width) +
             Attribute("height", height);
    if (radius > 0) text_ += Attribute("rx", radius);
    text_ += Attribute("class", cssClass) + "/>\n";
}

void Svg::Circle(int x, int y, int radius, std::string_view cssClass) {
    text_ += "<circle" + Attribute("cx", x) + Attribute("cy", y) + Attribute("r", radius) +
             Attribute("class", cssClass) + "/>\n";
}

void Svg::Path(std::string_view data, std::string_view cssClass) {
    text_ += "<path" + Attribute("d", data) + Attribute("class", cssClass) + "/>\n";
}

void Svg::Text(int x, int y, std::string_view text, std::string_view cssClass) {
    text_ += "<text" + Attribute("x", x) + Attribute("y", y) + Attribute("class", cssClass) + ">" +
             XmlText(text) + "</text>\n";
}

std::string Svg::Finish() {
    return std::move(text_) + "</svg>\n";
}

}  // namespace tarnexctl
