#include "cinder/plot/Canvas.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#ifdef __SANITIZE_ADDRESS__
// Fontconfig keeps the fonts it has found, behind offsets that are no pointers to a leak checker.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so";
}
#endif

namespace cinder {

namespace {

constexpr const char* fontFamily = "DejaVu Sans";
constexpr double tolerance = 0.1;  // pixels that nobody sees

/// Cairo counts in 24 bits before the point; what lies far outside a picture is as good nearby.
double withinReach(double pixels) {
    return std::clamp(pixels, -1e4, 1e5);
}

double distanceToLine(const Point& p, const Point& a, const Point& b) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double length2 = dx * dx + dy * dy;
    const double along =
        length2 > 0.0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length2, 0.0, 1.0) : 0.0;
    return std::hypot(p.x - a.x - along * dx, p.y - a.y - along * dy);
}

bool isPlace(const Point& point) {
    return !std::isnan(point.x) && !std::isnan(point.y);
}

}  // namespace

std::vector<Point> simplified(const std::vector<Point>& line, double tolerance) {
    if (line.size() < 3) return line;
    std::vector<char> stays(line.size(), 0);
    stays.front() = stays.back() = 1;
    std::vector<std::pair<std::size_t, std::size_t>> pieces = {{0, line.size() - 1}};
    while (!pieces.empty()) {
        const auto [first, last] = pieces.back();
        pieces.pop_back();
        std::size_t farthest = first;
        double distance = tolerance;
        for (std::size_t i = first + 1; i < last; ++i)
            if (const double d = distanceToLine(line[i], line[first], line[last]); d > distance) {
                distance = d;
                farthest = i;
            }
        if (farthest == first) continue;
        stays[farthest] = 1;
        pieces.emplace_back(first, farthest);
        pieces.emplace_back(farthest, last);
    }
    std::vector<Point> fewer;
    for (std::size_t i = 0; i < line.size(); ++i)
        if (stays[i]) fewer.push_back(line[i]);
    return fewer;
}

Canvas::Canvas(cairo_t* cairo) : cairo(cairo) {
    cairo_font_options_t* const options = cairo_font_options_create();
    // The same widths in every format and at every size.
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_set_font_options(cairo, options);
    cairo_font_options_destroy(options);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
}

void Canvas::setColour(Colour colour) {
    const auto part = [&](unsigned shift) { return (colour.rgb >> shift & 0xffu) / 255.0; };
    cairo_set_source_rgba(cairo, part(16), part(8), part(0), colour.opacity);
}

void Canvas::setFont(const Font& font) const {
    cairo_select_font_face(cairo, fontFamily, CAIRO_FONT_SLANT_NORMAL,
                           font.isBold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo, font.size);
}

double Canvas::widthOf(const std::string& text, const Font& font) const {
    setFont(font);
    cairo_text_extents_t extents;
    cairo_text_extents(cairo, text.c_str(), &extents);
    return extents.x_advance;
}

void Canvas::text(const std::string& text, double x, double y, const Font& font, double anchor) {
    cairo_move_to(cairo, x - anchor * widthOf(text, font), y);
    setColour(font.colour);
    cairo_show_text(cairo, text.c_str());
}

void Canvas::textUpwards(const std::string& text, double x, double y, const Font& font) {
    cairo_save(cairo);
    cairo_translate(cairo, x, y);
    cairo_rotate(cairo, -std::numbers::pi / 2.0);
    this->text(text, 0.0, 0.0, font, 0.5);
    cairo_restore(cairo);
}

void Canvas::fill(const Area& area, Colour colour) {
    setColour(colour);
    cairo_rectangle(cairo, area.left, area.top, area.width, area.height);
    cairo_fill(cairo);
}

void Canvas::frame(const Area& area, Colour colour) {
    setColour(colour);
    cairo_set_line_width(cairo, 1.0);
    const double left = std::round(area.left) + 0.5, top = std::round(area.top) + 0.5;
    cairo_rectangle(cairo, left, top, std::round(area.right()) + 0.5 - left,
                    std::round(area.bottom()) + 0.5 - top);
    cairo_stroke(cairo);
}

void Canvas::hairline(double x0, double y0, double x1, double y1, Colour colour) {
    setColour(colour);
    cairo_set_line_width(cairo, 1.0);
    cairo_move_to(cairo, std::round(x0) + 0.5, std::round(y0) + 0.5);
    cairo_line_to(cairo, std::round(x1) + 0.5, std::round(y1) + 0.5);
    cairo_stroke(cairo);
}

void Canvas::line(const std::vector<Point>& points, Colour colour, double width, bool isDashed) {
    setColour(colour);
    cairo_set_line_width(cairo, width);
    const double dashes[] = {5.0, 3.5};
    cairo_set_dash(cairo, dashes, isDashed ? 2 : 0, 0.0);
    cairo_new_path(cairo);  // text leaves a point behind
    for (auto begin = points.begin(); begin != points.end();) {
        const auto end = std::find_if_not(begin, points.end(), isPlace);
        for (const Point& point : simplified({begin, end}, tolerance))
            cairo_line_to(cairo, withinReach(point.x), withinReach(point.y));
        cairo_stroke(cairo);
        begin = std::find_if(end, points.end(), isPlace);
    }
    cairo_set_dash(cairo, nullptr, 0, 0.0);
}

void Canvas::dot(double x, double y, double radius, Colour colour) {
    setColour(colour);
    cairo_new_path(cairo);
    cairo_arc(cairo, withinReach(x), withinReach(y), radius, 0.0, 2.0 * std::numbers::pi);
    cairo_fill(cairo);
}

Canvas::Clip::Clip(Canvas& canvas, const Area& area) : cairo(canvas.cairo) {
    cairo_save(cairo);
    cairo_rectangle(cairo, area.left, area.top, area.width, area.height);
    cairo_clip(cairo);
}

Canvas::Clip::~Clip() {
    cairo_restore(cairo);
}

}  // namespace cinder
