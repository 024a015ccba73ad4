#pragma once

// Writes an SVG picture: boxes, lines and texts, each with a class that the style sheet knows.

#include <string>
#include <string_view>

namespace tarnexctl {

// A text as XML holds it: what is markup there is escaped, and characters that XML forbids are
// replaced.
std::string XmlText(std::string_view utf8);

class Svg {
public:
    Svg(int width, int height, std::string_view title, std::string_view style);

    // Until End, what is drawn belongs together, and shows the title when it is pointed at.
    void Begin(std::string_view cssClass, std::string_view title);
    void End();

    void Box(int x, int y, int width, int height, int radius, std::string_view cssClass);
    void Circle(int x, int y, int radius, std::string_view cssClass);
    // `data` in SVG's language of paths.
    void Path(std::string_view data, std::string_view cssClass);
    // The text's baseline starts, or with such a class ends, at the point.
    void Text(int x, int y, std::string_view text, std::string_view cssClass);

    std::string Finish();

private:
    std::string text_;
};

}  // namespace tarnexctl
