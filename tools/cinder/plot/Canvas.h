#pragma once

#include "cinder/plot/Figure.h"

#include <string>
#include <vector>

typedef struct _cairo cairo_t;  // as in cairo.h, which need not be read to use this

namespace cinder {

struct Area {
    double left, top, width, height;
    double right() const { return left + width; }
    double bottom() const { return top + height; }
};

struct Font {
    double size;
    bool isBold = false;
    Colour colour = palette::ink;
};

/// The few things that figures are drawn with. Lengths are pixels, y runs down.
class Canvas {
public:
    explicit Canvas(cairo_t* cairo);

    double widthOf(const std::string& text, const Font& font) const;
    /// `anchor` says which part of the text stands at x: 0 its left end, 0.5 its middle, 1 its
    /// right end. y is its baseline.
    void text(const std::string& text, double x, double y, const Font& font, double anchor = 0.0);
    /// Upwards, with its middle at y.
    void textUpwards(const std::string& text, double x, double y, const Font& font);

    void fill(const Area& area, Colour colour);
    /// A pixel wide, and on whole pixels.
    void frame(const Area& area, Colour colour);
    void hairline(double x0, double y0, double x1, double y1, Colour colour);
    /// Interrupted where a point is not a number.
    void line(const std::vector<Point>& points, Colour colour, double width, bool isDashed);
    void dot(double x, double y, double radius, Colour colour);

    /// While it lives, what is drawn outside of the area is left out.
    class Clip {
    public:
        Clip(Canvas& canvas, const Area& area);
        ~Clip();
        Clip(const Clip&) = delete;
        Clip& operator=(const Clip&) = delete;

    private:
        cairo_t* cairo;
    };

private:
    void setColour(Colour colour);
    void setFont(const Font& font) const;

    cairo_t* cairo;
};

/// The line through fewer of the points: those left out lie within `tolerance` of it. All points
/// have to be numbers.
/// Source  D. Douglas, T. Peucker, "Algorithms for the reduction of the number of points required
///         to represent a digitized line", 1973
std::vector<Point> simplified(const std::vector<Point>& line, double tolerance);

}  // namespace cinder
