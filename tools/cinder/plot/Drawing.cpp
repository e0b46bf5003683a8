#include "cinder/plot/Drawing.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cinder {

namespace {

constexpr Font titleFont = {17.0, true};
constexpr Font panelFont = {12.5, true};
// One size for all of these: an SVG carries the shapes of the letters once for each.
constexpr Font legendFont = {11.5};
constexpr Font quietFont = {11.5, false, palette::quietInk};

constexpr double border = 18.0;  // around everything
constexpr double gap = 24.0;     // between panels
constexpr double legendRow = 20.0;
constexpr double swatch = 22.0;  // the sample of a line in the legend
constexpr double dotRadius = 2.6;
constexpr double pixelsPerTickAcross = 46.0;
constexpr double pixelsPerTickDown = 30.0;

int ticksThatFit(double pixels, double each) {
    return std::max(3, static_cast<int>(pixels / each) + 1);
}

/// A font small enough for a text that has to fit.
Font fitted(const Canvas& canvas, const std::string& text, Font font, double width) {
    const double needed = canvas.widthOf(text, font);
    if (needed > width) font.size *= width / needed;
    return font;
}

/// One panel in the place that it has been given.
class PanelDrawing {
public:
    PanelDrawing(Canvas& canvas, const Panel& panel, const Area& plot)
        : canvas(canvas), panel(panel), plot(plot) {}

    void draw() {
        drawGrid();
        {
            const Canvas::Clip clip(canvas, plot);
            for (const Series& series : panel.series)
                drawSeries(series);
        }
        canvas.frame(plot, palette::frame);
        drawLabels();
    }

private:
    double across(double x) const { return plot.left + panel.x.placeOf(x) * plot.width; }
    double down(double y) const { return plot.bottom() - panel.y.placeOf(y) * plot.height; }
    /// What nobody sees needs no detail.
    double nearPlot(double y) const {
        return std::isnan(y) ? y
                             : std::clamp(y, plot.top - plot.height, plot.bottom() + plot.height);
    }
    std::vector<Tick> ticksAcross() const {
        return panel.x.ticks(ticksThatFit(plot.width, pixelsPerTickAcross));
    }
    std::vector<Tick> ticksDown() const {
        return panel.y.ticks(ticksThatFit(plot.height, pixelsPerTickDown));
    }

    void drawGrid() {
        for (const Tick& tick : ticksAcross())
            canvas.hairline(across(tick.value), plot.top, across(tick.value), plot.bottom(),
                            tick.label.empty() ? palette::finerGrid : palette::grid);
        for (const Tick& tick : ticksDown())
            canvas.hairline(plot.left, down(tick.value), plot.right(), down(tick.value),
                            tick.value == 0.0 ? palette::frame : palette::grid);
    }

    void drawLabels() {
        double lastEnd = -1.0;
        for (const Tick& tick : ticksAcross()) {
            const double half = canvas.widthOf(tick.label, quietFont) / 2.0;
            if (tick.label.empty() || across(tick.value) - half < lastEnd + 6.0) continue;
            lastEnd = across(tick.value) + half;
            canvas.text(tick.label, across(tick.value), plot.bottom() + 15.0, quietFont, 0.5);
        }
        for (const Tick& tick : ticksDown())
            canvas.text(tick.label, plot.left - 6.0, down(tick.value) + 4.0, quietFont, 1.0);
        canvas.text(panel.x.label, plot.left + plot.width / 2.0, plot.bottom() + 32.0, quietFont,
                    0.5);
        canvas.text(panel.title, plot.left, plot.top - 8.0,
                    fitted(canvas, panel.title, panelFont, plot.width));
    }

    void drawSeries(const Series& series) {
        std::vector<Point> places;
        places.reserve(series.points.size());
        for (const Point& point : series.points)
            places.push_back({across(point.x) + series.shift, nearPlot(down(point.y))});
        if (series.look == Series::Look::Line || series.look == Series::Look::Dashes) {
            canvas.line(places, series.colour, series.width, series.look == Series::Look::Dashes);
            return;
        }
        const bool isStem = series.look != Series::Look::Dots;
        const double foot = series.look == Series::Look::Bars ? down(0.0) : plot.bottom();
        const double radius = isStem ? dotRadius : series.width;
        for (const Point& place : places) {
            if (std::isnan(place.y) || place.y > plot.bottom()) continue;
            if (isStem) canvas.line({{place.x, foot}, place}, series.colour, series.width, false);
            canvas.dot(place.x, place.y, radius, series.colour);
        }
    }

    Canvas& canvas;
    const Panel& panel;
    const Area plot;
};

/// Where everything stands.
class FigureDrawing {
public:
    FigureDrawing(Canvas& canvas, const Figure& figure) : canvas(canvas), figure(figure) {}

    void draw() {
        const Area page = {0.0, 0.0, figure.width * 1.0, figure.height * 1.0};
        canvas.fill(page, {0xffffff});
        const double inner = page.width - 2.0 * border;
        double y = border + 14.0;
        canvas.text(figure.title, border, y, fitted(canvas, figure.title, titleFont, inner));
        if (!figure.subtitle.empty()) {
            y += 20.0;
            canvas.text(figure.subtitle, border, y,
                        fitted(canvas, figure.subtitle, quietFont, inner));
        }
        y = drawLegend(y + 6.0);
        drawPanels({border, y, inner, page.height - y - border});
    }

private:
    /// Answers where it ends.
    double drawLegend(double y) {
        const auto entries = figure.legend();
        if (entries.empty()) return y;
        double x = border;
        y += legendRow;
        for (const Series* entry : entries) {
            const double width = swatch + 6.0 + canvas.widthOf(entry->name, legendFont);
            if (x > border && x + width > figure.width - border) {
                x = border;
                y += legendRow;
            }
            drawSwatch(*entry, x, y - 4.0);
            canvas.text(entry->name, x + swatch + 6.0, y, legendFont);
            x += width + 20.0;
        }
        return y + 4.0;
    }

    void drawSwatch(const Series& series, double x, double y) {
        if (series.look == Series::Look::Dots)
            canvas.dot(x + swatch / 2.0, y, dotRadius, series.colour);
        else
            canvas.line({{x, y}, {x + swatch, y}}, series.colour, std::max(series.width, 2.0),
                        series.look == Series::Look::Dashes);
    }

    /// What the labels left of a panel take.
    double marginOf(const Panel& panel, double plotHeight) const {
        double widest = 0.0;
        for (const Tick& tick : panel.y.ticks(ticksThatFit(plotHeight, pixelsPerTickDown)))
            widest = std::max(widest, canvas.widthOf(tick.label, quietFont));
        return widest + (panel.y.label.empty() ? 10.0 : 28.0);
    }

    void drawPanels(const Area& area) {
        constexpr double above = 30.0, below = 38.0;  // a panel's title; ticks and label
        const int numRows = figure.numRows();
        const double rowHeight = (area.height - (numRows - 1) * gap / 3.0) / numRows;
        const double plotHeight = rowHeight - above - below;
        const double total = std::accumulate(figure.columns.begin(), figure.columns.end(), 0.0);
        const double width = area.width - (figure.numColumns() - 1) * gap;
        double left = area.left;
        for (int column = 0; column < figure.numColumns(); ++column) {
            const double columnWidth =
                width * figure.columns[static_cast<std::size_t>(column)] / total;
            double margin = 0.0;
            for (int row = 0; row < numRows; ++row)
                if (const Panel* panel = panelAt(row, column))
                    margin = std::max(margin, marginOf(*panel, plotHeight));
            for (int row = 0; row < numRows; ++row) {
                const Panel* const panel = panelAt(row, column);
                if (!panel) continue;
                const double top = area.top + row * (rowHeight + gap / 3.0) + above;
                const Area plot = {left + margin, top, columnWidth - margin - 8.0, plotHeight};
                PanelDrawing(canvas, *panel, plot).draw();
                canvas.textUpwards(panel->y.label, left + 10.0, top + plotHeight / 2.0, quietFont);
            }
            left += columnWidth + gap;
        }
    }

    const Panel* panelAt(int row, int column) const {
        const auto index = static_cast<std::size_t>(row * figure.numColumns() + column);
        return index < figure.panels.size() ? &figure.panels[index] : nullptr;
    }

    Canvas& canvas;
    const Figure& figure;
};

}  // namespace

void drawFigure(Canvas& canvas, const Figure& figure) {
    FigureDrawing(canvas, figure).draw();
}

}  // namespace cinder
