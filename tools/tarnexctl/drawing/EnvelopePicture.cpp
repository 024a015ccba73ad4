#include "drawing/EnvelopePicture.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "description/AuthorText.h"
#include "drawing/Layout.h"
#include "drawing/Svg.h"
#include "frame/ExitCode.h"
#include "frame/Text.h"

namespace tarnexctl {
namespace {

using compositions::Envelope;
using compositions::EnvelopeKey;

constexpr int kPlotMargin = 24;
constexpr int kPlotHeader = 44;
constexpr int kWidth = 760;
constexpr int kPanelHeight = 220;
constexpr int kPlotLeft = 120;  // room for the values' texts
constexpr int kPlotWidth = 600;
constexpr int kPlotTop = 40;
constexpr int kPlotHeight = 130;
constexpr int kPlotLine = 18;

constexpr const char* kNote =
    "Points as written. What lies between them is the engine's: HOLD is drawn held, LINEAR "
    "straight; a dashed line only joins.";

constexpr const char* kPlotStyle =
    ".page { fill: #ffffff; }\n"
    "text { font-family: sans-serif; font-size: 13px; fill: #1f2430; }\n"
    ".title { font-size: 16px; font-weight: bold; }\n"
    ".name { font-weight: bold; }\n"
    ".detail { font-size: 11px; fill: #5b6472; }\n"
    ".end { text-anchor: end; }\n"
    ".frame { fill: #f6f7f9; stroke: #c9ced6; }\n"
    ".held, .straight { fill: none; stroke: #2b6cb0; stroke-width: 1.5; }\n"
    ".joined { fill: none; stroke: #2b6cb0; stroke-width: 1.5; stroke-dasharray: 6 4; }\n"
    "circle { fill: #b07d1a; }\n";

std::string Shortened(std::wstring_view text) {
    return ShortText(Printable(AuthorText(text)));
}

struct PlacedPoint {
    const EnvelopeKey* key;
    double time;
    double value;
};

// One axis: the least and the greatest number with their texts, and how many pixels lie between.
class Axis {
public:
    void Take(double number, const std::wstring& text) {
        if (!any_ || number < least_) {
            least_ = number;
            leastText_ = Shortened(text);
        }
        if (!any_ || number > most_) {
            most_ = number;
            mostText_ = Shortened(text);
        }
        any_ = true;
    }

    // From 0 to `pixels`; in the middle when there is one number alone.
    int PixelOf(double number, int pixels) const {
        if (!(most_ > least_)) return pixels / 2;
        // Halves: the whole way may be longer than any number.
        const double part = (number / 2 - least_ / 2) / (most_ / 2 - least_ / 2);
        return static_cast<int>(std::lround(part * pixels));
    }

    const std::string& LeastText() const { return leastText_; }
    const std::string& MostText() const { return mostText_; }
    bool HasOneNumber() const { return !(most_ > least_); }

private:
    bool any_ = false;
    double least_ = 0;
    double most_ = 0;
    std::string leastText_;
    std::string mostText_;
};

class Panel {
public:
    Panel(Svg& svg, int top) : svg_(svg), top_(top) {}

    void Draw(const std::string& name, const Envelope& envelope,
              std::vector<std::string>& problems) {
        Place(name, envelope, problems);
        svg_.Begin("envelope", name);
        svg_.Text(kPlotLeft, top_ + kPlotTop - kPlotLine / 2, ShortText(name), "name");
        svg_.Box(kPlotLeft, top_ + kPlotTop, kPlotWidth, kPlotHeight, 0, "frame");
        if (!points_.empty()) DrawAxes();
        for (std::size_t i = 0; i + 1 < points_.size(); ++i) Join(points_[i], points_[i + 1]);
        for (const PlacedPoint& point : points_) Mark(point);
        svg_.End();
    }

private:
    void Place(const std::string& name, const Envelope& envelope,
               std::vector<std::string>& problems) {
        for (std::size_t i = 0; i < envelope.keys.size(); ++i) {
            const EnvelopeKey& key = envelope.keys[i];
            const std::optional<double> time = PlainNumber(key.time);
            const std::optional<double> value = PlainNumber(key.value);
            if (time && value) {
                times_.Take(*time, key.time);
                values_.Take(*value, key.value);
                points_.push_back({&key, *time, *value});
                continue;
            }
            problems.push_back("envelope " + name + ", point " + std::to_string(i + 1) + ": \"" +
                               Shortened(time ? key.value : key.time) +
                               "\" is no plain number; the picture leaves the point out");
        }
    }

    void DrawAxes() {
        const int right = kPlotLeft + kPlotWidth;
        const int bottom = top_ + kPlotTop + kPlotHeight;
        svg_.Text(kPlotLeft, bottom + kPlotLine, times_.LeastText(), "detail");
        if (!times_.HasOneNumber())
            svg_.Text(right, bottom + kPlotLine, times_.MostText(), "detail end");
        svg_.Text(kPlotLeft - 8, Y(values_.HasOneNumber() ? points_.front().value : Least()) + 4,
                  values_.LeastText(), "detail end");
        if (values_.HasOneNumber()) return;
        svg_.Text(kPlotLeft - 8, top_ + kPlotTop + 8, values_.MostText(), "detail end");
    }

    double Least() const {
        double least = points_.front().value;
        for (const PlacedPoint& point : points_) least = std::min(least, point.value);
        return least;
    }

    int X(double time) const { return kPlotLeft + times_.PixelOf(time, kPlotWidth); }
    int Y(double value) const {
        return top_ + kPlotTop + kPlotHeight - values_.PixelOf(value, kPlotHeight);
    }

    void Join(const PlacedPoint& from, const PlacedPoint& to) {
        const std::string start =
            "M" + std::to_string(X(from.time)) + " " + std::to_string(Y(from.value));
        const std::string x = std::to_string(X(to.time));
        const std::string y = std::to_string(Y(to.value));
        if (from.key->kind == std::wstring_view(L"HOLD")) {
            svg_.Path(start + " H" + x + " V" + y, "held");
        } else {
            const bool isLinear = from.key->kind == std::wstring_view(L"LINEAR");
            svg_.Path(start + " L" + x + " " + y, isLinear ? "straight" : "joined");
        }
    }

    void Mark(const PlacedPoint& point) {
        const EnvelopeKey& key = *point.key;
        std::string what =
            Shortened(key.time) + ", " + Shortened(key.value) + ", " + Shortened(key.kind.View());
        if (key.kind == std::wstring_view(L"HERMITE")) {
            what += ", " + Shortened(key.firstParameter) + ", " + Shortened(key.secondParameter);
        }
        svg_.Begin("point", what);
        svg_.Circle(X(point.time), Y(point.value), 4, "point");
        svg_.End();
    }

    Svg& svg_;
    int top_;
    std::vector<PlacedPoint> points_;
    Axis times_;
    Axis values_;
};

void RefuseTooMany(const compositions::Envelopes& envelopes) {
    std::size_t points = envelopes.size();
    for (const auto& [name, envelope] : envelopes) points += envelope.keys.size();
    if (points <= kMostDrawnPoints) return;
    throw Failure(ExitCode::kInputOutput,
                  std::to_string(points) + " envelopes and points are too many for a picture",
                  "the most are " + std::to_string(kMostDrawnPoints) +
                      "; --envelope picks some, and \"--format csv\" has no limit");
}

}  // namespace

std::string EnvelopePicture(const std::string& title, const compositions::Envelopes& envelopes,
                            std::vector<std::string>& problems) {
    RefuseTooMany(envelopes);
    const int panels = static_cast<int>(envelopes.size());
    Svg svg(kWidth, kPlotHeader + panels * kPanelHeight + kPlotLine + kPlotMargin, title,
            kPlotStyle);
    svg.Text(kPlotMargin, kPlotHeader - kPlotLine / 2, ShortText(title), "title");
    int top = kPlotHeader;
    for (const auto& [name, envelope] : envelopes) {
        Panel(svg, top).Draw(Printable(AuthorText(name.View())), envelope, problems);
        top += kPanelHeight;
    }
    svg.Text(kPlotMargin, top + kPlotLine, envelopes.empty() ? "No envelopes." : kNote, "detail");
    return svg.Finish();
}

std::optional<double> PlainNumber(std::wstring_view text) {
    std::string plain;
    for (const wchar_t character : text) {
        const bool isDigit = character >= L'0' && character <= L'9';
        const bool isSign = character == L'-' && plain.empty();
        const bool isPoint = character == L'.' && plain.find('.') == std::string::npos &&
                             !plain.empty() && plain.back() != '-';
        if (!isDigit && !isSign && !isPoint) return std::nullopt;
        plain.push_back(static_cast<char>(character));
    }
    if (plain.empty() || plain.back() == '-' || plain.back() == '.') return std::nullopt;
    double number = 0;
    const auto [rest, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
    return number;
}

}  // namespace tarnexctl
