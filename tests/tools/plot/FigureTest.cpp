#include "cinder/plot/CabinetFigure.h"
#include "cinder/plot/CrossoverFigure.h"
#include "cinder/plot/FilterFigure.h"
#include "cinder/plot/StyleFigure.h"
#include "cinder/plot/ToneFigure.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>

namespace cinder::test {

namespace {

/// The first series of this name in the panel.
const Series& named(const Panel& panel, const std::string& name) {
    const auto found = std::ranges::find(panel.series, name, &Series::name);
    REQUIRE(found != panel.series.end());
    return *found;
}

/// Between the points on both sides.
double heightAt(const Series& series, double x) {
    for (std::size_t i = 1; i < series.points.size(); ++i) {
        const auto& [x0, y0] = series.points[i - 1];
        const auto& [x1, y1] = series.points[i];
        if (x0 <= x && x <= x1) return x1 > x0 ? y0 + (y1 - y0) * (x - x0) / (x1 - x0) : y0;
    }
    FAIL("nothing at " << x);
    return 0.0;
}

double worstHeight(const Series& series) {
    const auto [lowest, highest] = heightsOf({&series, 1});
    return std::max(-lowest, highest);
}

/// Degrees between the two, at the points that both have.
double worstTurn(const Series& series, const Series& other) {
    double worst = 0.0;
    for (const auto& [hz, degrees] : series.points)
        for (const auto& [otherHz, otherDegrees] : other.points)
            if (hz == otherHz && !std::isnan(degrees) && !std::isnan(otherDegrees))
                worst = std::max(worst, std::abs(std::remainder(degrees - otherDegrees, 360.0)));
    return worst;
}

bool areNumbers(const Series& series) {
    return std::ranges::all_of(
        series.points, [](const Point& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

}  // namespace

TEST_CASE("crossoverFigure: flat sum, bands that meet where they should, in its phase") {
    for (const auto slope : {CrossoverSlope::Db12, CrossoverSlope::Db24, CrossoverSlope::Db48})
        for (const int numBands : {1, 2, 4, 6}) {
            const CrossoverPlot plot = {evenSplit(numBands), slope, 44100.0};
            const Figure figure = crossoverFigure(plot);
            INFO("slope " << static_cast<int>(slope) << ", bands " << numBands);
            REQUIRE(figure.panels.size() == 2);
            const auto& [magnitudes, phases] = std::tie(figure.panels[0], figure.panels[1]);
            REQUIRE(static_cast<int>(magnitudes.series.size()) == numBands + 1);
            CHECK(worstHeight(named(magnitudes, "sum")) < 0.01);
            // Gentle slopes reach as far as the next crossover, and it lowers one side alone.
            const double apart = slope == CrossoverSlope::Db48 ? 0.1 : 1.5;
            for (int band = 1; band < numBands; ++band) {
                const double hz = plot.hz[static_cast<std::size_t>(band - 1)];
                const Series& low = named(magnitudes, "band " + std::to_string(band));
                const Series& high = named(magnitudes, "band " + std::to_string(band + 1));
                CHECK(std::abs(heightAt(low, hz) - heightAt(high, hz)) < apart);
            }
            for (const Series& series : phases.series)
                CHECK(worstTurn(series, named(phases, "sum")) < 0.1);
        }
}

TEST_CASE("filterFigure: gain at the centre, and the analog filter where there is no warping") {
    for (const FilterShapeRow& row : filterShapes)
        for (const double rate : {44100.0, 192000.0}) {
            FilterPlot plot{row.shape};
            plot.gainDb = -9.0;
            plot.sampleRate = rate;
            const Figure figure = filterFigure(plot);
            INFO(std::string(row.name) << " at " << rate);
            for (const Panel& panel : figure.panels) {
                REQUIRE(panel.series.size() == 2);
                for (const double hz : {30.0, 300.0, 1500.0})
                    CHECK(std::abs(heightAt(panel.series[0], hz) - heightAt(panel.series[1], hz)) <
                          1.0);
            }
            if (row.shape == FilterShape::Bell)
                CHECK(heightAt(figure.panels[0].series[1], 1000.0) ==
                      doctest::Approx(-9.0).epsilon(0.001));
        }
}

TEST_CASE("toneFigure: each control reaches its gain where it acts, and nothing elsewhere") {
    const Figure figure = toneFigure({{-12.0, 18.0}, 48000.0});
    REQUIRE(figure.panels.size() == 4);
    const double acting[] = {20.0, 600.0, 20000.0, 20000.0};
    const double resting[] = {20000.0, 20.0, 20.0, 20.0};
    for (std::size_t i = 0; i < 4; ++i) {
        INFO(figure.panels[i].title);
        CHECK(heightAt(figure.panels[i].series[0], acting[i]) ==
              doctest::Approx(-12.0).epsilon(0.06));
        CHECK(heightAt(figure.panels[i].series[1], acting[i]) ==
              doctest::Approx(18.0).epsilon(0.06));
        CHECK(std::abs(heightAt(figure.panels[i].series[1], resting[i])) < 0.6);
    }
}

TEST_CASE("cabinetFigure: the response begins at 0 and leaves echoes at the taps") {
    for (int i = 0; i < numCabinets; ++i) {
        const Figure figure = cabinetFigure({Cabinet{i}, 48000.0});
        const Series& impulse = named(figure.panels[0], "the cabinet");
        INFO("cabinet " << i);
        CHECK(std::ranges::all_of(impulse.points,
                                  [](const Point& p) { return p.x >= 0.0 || p.y == 0.0; }));
        // Behind each tap the response steps aside, in the direction of the tap.
        for (const TapRow& tap : cabinetRecipes[i].taps) {
            const double ms = static_cast<double>(tap.ms);
            const double before = heightAt(impulse, ms - 0.04);
            double step = 0.0;
            for (const auto& [time, height] : impulse.points)
                if (std::abs(time - ms) < 0.1 && std::abs(height - before) > std::abs(step))
                    step = height - before;
            CHECK(step * static_cast<double>(tap.gain) > 0.0);
        }
    }
}

TEST_CASE("styleFigure: symmetric styles make odd harmonics alone, a rectifier even ones") {
    const auto harmonics = [](StyleId style) {
        StylePlot plot{style};
        plot.drives = {30.0};
        return styleFigure(plot).panels[2].series.back().points;
    };
    for (const StyleId style : {StyleId::CleanTape, StyleId::WarmTape, StyleId::OldTape,
                                StyleId::GentleSaturation, StyleId::HeavySaturation}) {
        const auto points = harmonics(style);
        INFO(std::string(styleRecipes[static_cast<int>(style)].name));
        REQUIRE(points.size() == 20);
        CHECK(points[2].y > -90.0);
        for (std::size_t even = 1; even < points.size(); even += 2)
            CHECK(points[even].y < -140.0);
    }
    CHECK(harmonics(StyleId::WarmTube)[1].y > -60.0);
    const auto rectified = harmonics(StyleId::Rectify);
    CHECK(rectified[0].y < rectified[1].y - 60.0);
    CHECK(rectified[2].y < rectified[1].y - 60.0);
}

TEST_CASE("styleFigure: THD is the share of the harmonics from 2 on in all that are drawn") {
    StylePlot plot{StyleId::WarmTube};
    plot.drives = {100.0};
    const Figure figure = styleFigure(plot);
    double above = 0.0, all = 0.0;
    for (const auto& [kiloHertz, decibels] : figure.panels[2].series.back().points) {
        const double power = std::pow(10.0, 0.1 * decibels);
        all += power;
        if (kiloHertz > 1.0) above += power;
    }
    const auto percent = std::lround(100.0 * std::sqrt(above / all));
    CHECK(figure.panels[1].series.back().name ==
          "drive 100 %, THD " + std::to_string(percent) + " %");
}

TEST_CASE("styleFigure: every style draws numbers, at any rate") {
    for (const StyleRecipe& recipe : styleRecipes)
        for (const int rate : {8000, 44100}) {
            StylePlot plot{recipe.id};
            plot.sampleRate = rate;
            plot.cabinet = true;
            const Figure figure = styleFigure(plot);
            INFO(std::string(recipe.name) << " at " << rate);
            REQUIRE(figure.panels.size() == 3);
            for (const Panel& panel : figure.panels)
                for (const Series& series : panel.series)
                    CHECK(areNumbers(series));
        }
}

}  // namespace cinder::test
