#pragma once

#include "cinder/plot/Axis.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cinder {

/// Red, green and blue, 0xrrggbb.
struct Colour {
    std::uint32_t rgb = 0;
    double opacity = 1.0;
};

// Colours that stay apart for every kind of colour vision, and also by their lightness.
namespace palette {

inline constexpr Colour ink = {0x2b2b2b};
inline constexpr Colour quietInk = {0x6a6a6a};
inline constexpr Colour grid = {0xe4e4e4};
inline constexpr Colour finerGrid = {0xf1f1f1};
inline constexpr Colour frame = {0xa8a8a8};

/// Things side by side.
inline constexpr Colour apart[] = {
    {0x35619f},  // blue
    {0xc8622d},  // vermilion
    {0x2f8f78},  // green
    {0x9b5aa0},  // purple
    {0xd3a032},  // amber
    {0x5aa9d6},  // sky
};
inline constexpr int numApart = 6;

/// From a little to much: glowing to charred.
Colour ember(double amount);
/// -1 is a deep cut, 0 neither, 1 a high boost.
Colour cutOrBoost(double amount);

}  // namespace palette

struct Point {
    double x, y;  // where either is not a number, a line is interrupted
};

struct Series {
    enum class Look {
        Line,
        Dashes,
        Dots,   // one for each point
        Stems,  // a dot for each point, and a line down to the bottom of the panel
        Bars,   // as stems, from the zero line
    };

    std::string name;  // in the legend, once; empty for none
    Colour colour;
    std::vector<Point> points;
    Look look = Look::Line;
    double width = 1.6;  // pixels
    double shift = 0.0;  // to the right, in pixels, so that stems stand beside each other
};

/// From the lowest to the highest point.
struct Extent {
    double lowest, highest;
};
Extent heightsOf(std::span<const Series> series);

/// One pair of axes and what is drawn between them, the later things over the earlier.
struct Panel {
    std::string title;
    Axis x, y;
    std::vector<Series> series;
};

/// A picture before it is drawn: panels from left to right and top to bottom, one legend for all.
struct Figure {
    std::string title;
    std::string subtitle;
    std::vector<double> columns = {1.0};  // widths relative to each other
    std::vector<Panel> panels;
    int width = 960, height = 640;  // pixels, unless somebody asks for others

    void addPanel(std::string panelTitle, Axis x, Axis y, std::vector<Series> series);
    int numColumns() const { return static_cast<int>(columns.size()); }
    int numRows() const;
    /// The first series of each name.
    std::vector<const Series*> legend() const;
};

}  // namespace cinder
