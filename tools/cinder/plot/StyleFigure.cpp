#include "cinder/plot/StyleFigure.h"

#include "cinder/plot/SineRun.h"
#include "cinder/plot/Text.h"
#include "core/Constants.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cinder {

namespace {

constexpr double lowestDb = -150.0;
constexpr double highestDb = 6.0;
constexpr double highestKiloHertz = 20.5;
constexpr int spectrumWidthHz = 41;  // about a pixel
constexpr Colour inputColour = {0xc4c4c4};
constexpr double stemDistance = 5.0;  // pixels
constexpr int curvePoints = 1000;

/// The curve with its gains alone, without filters and without memory.
std::vector<Point> bareCurve(const FunctionTableClipper::Style& style, double drivePercent,
                             double reach) {
    const auto drive = static_cast<float>(drivePercent * 0.01);
    const float pre = style.preTable.lookup(drive), post = style.postTable.lookup(drive);
    std::vector<Point> points;
    for (int i = -curvePoints; i <= curvePoints; ++i) {
        const double x = reach * i / curvePoints;
        float y = static_cast<float>(x) * pre;
        style.shaper->process(&y, &y, 1);
        points.push_back({x, static_cast<double>(y * post)});
    }
    return points;
}

std::vector<Point> sineWave(double amplitude, int numPeriods) {
    constexpr int pointsEach = 200;
    std::vector<Point> points;
    for (int i = 0; i <= pointsEach * numPeriods; ++i) {
        const double phase = i * 1.0 / pointsEach;
        points.push_back({phase, amplitude * std::sin(2.0 * std::numbers::pi * phase)});
    }
    return points;
}

std::string legendOf(double drivePercent, const SineRun& run) {
    const double percent = 100.0 * run.distortion();
    // Where the periods differ what is wrong with them is no harmonic.
    if (!run.isPeriodic()) return formatted("drive %g %%", drivePercent);
    if (percent < 0.001) return formatted("drive %g %%, THD < 0.001 %%", drivePercent);
    return formatted(percent < 10.0 ? "drive %g %%, THD %.2g %%" : "drive %g %%, THD %.0f %%",
                     drivePercent, percent);
}

/// With 0 in its middle.
Axis outputAxis(const std::vector<Series>& waves) {
    const auto [lowest, highest] = heightsOf(waves);
    const double height = std::max(-lowest, highest);
    return axisAround(Axis::Kind::Plain, "", -height, height);
}

/// A style at one drive.
struct Take {
    double drive;
    Colour colour;
    SineRun run;
};

std::vector<Take> takesOf(const StyleSet& styles, const StylePlot& plot) {
    std::vector<Take> takes;
    for (std::size_t i = 0; i < plot.drives.size(); ++i) {
        const double last = static_cast<double>(plot.drives.size()) - 1.0;
        const double amount = last > 0.0 ? static_cast<double>(i) / last : 0.6;
        takes.push_back(
            {plot.drives[i], palette::ember(amount), SineRun(styles, plot, plot.drives[i])});
    }
    return takes;
}

std::vector<Series> transferSeries(const std::vector<Take>& takes, const DistortionStyle& style,
                                   double reach) {
    using enum Series::Look;
    std::vector<Series> series;
    if (style.getRecipe().setup.path.clip == 1) {
        series.push_back({"curve without filters", palette::quietInk, {}, Dashes, 1.1});
        for (const auto& [drive, colour, run] : takes)
            series.push_back({"",
                              {colour.rgb, 0.8},
                              bareCurve(style.getClipperStyle(), drive, reach),
                              Dashes,
                              1.1});
    }
    for (const auto& [drive, colour, run] : takes)
        if (run.isPeriodic())
            series.push_back({"", colour, run.transfer(), Line, 1.8});
        else
            series.push_back({"", {colour.rgb, 0.4}, run.transfer(), Dots, 1.4});
    return series;
}

std::vector<Series> waveSeries(const std::vector<Take>& takes, double reach, int numPeriods) {
    std::vector<Series> series;
    series.push_back({"input", inputColour, sineWave(reach, numPeriods), Series::Look::Line, 2.0});
    for (const auto& [drive, colour, run] : takes)
        series.push_back({legendOf(drive, run), colour, run.wave(numPeriods)});
    return series;
}

std::vector<Series> spectrumSeries(const std::vector<Take>& takes) {
    std::vector<Series> series;
    for (const auto& [drive, colour, run] : takes)
        series.push_back(
            {"", {colour.rgb, 0.35}, run.between(spectrumWidthHz), Series::Look::Line, 1.0});
    double shift = -0.5 * stemDistance * (static_cast<double>(takes.size()) - 1.0);
    for (const auto& [drive, colour, run] : takes) {
        series.push_back({"", colour, run.harmonics(), Series::Look::Stems, 1.6, shift});
        shift += stemDistance;
    }
    return series;
}

}  // namespace

Figure styleFigure(const StylePlot& plot) {
    const StyleSet styles;
    const DistortionStyle& style = styles.style(plot.style);
    const StyleRecipe& recipe = style.getRecipe();
    const double reach = std::exp(plot.levelDb * logPerDecibel);
    const auto takes = takesOf(styles, plot);
    // A sample may be held for ten periods.
    const int numPeriods = recipe.setup.path.crush == 1 ? 30 : 2;

    Figure figure;
    figure.title = recipe.name;
    figure.subtitle =
        formatted("A sine of %d Hz at %s, played for a second at %g kHz%s", SineRun::hz,
                  withMinus(formatted("%g dBFS", plot.levelDb)).c_str(), plot.sampleRate * 1e-3,
                  recipe.cabinet == Cabinet::None ? ""
                  : plot.cabinet                  ? ", through the cabinet"
                                                  : ", without the cabinet");
    figure.columns = {1.0, 1.0, 1.7};
    figure.width = 1280;
    figure.height = 480;
    auto waves = waveSeries(takes, reach, numPeriods);
    const Axis output = outputAxis(waves);
    figure.addPanel("Output against input", {"input", Axis::Kind::Plain, -reach, reach}, output,
                    transferSeries(takes, style, reach));
    figure.addPanel("Wave", {"periods", Axis::Kind::Plain, 0.0, numPeriods * 1.0}, output,
                    std::move(waves));
    figure.addPanel("Harmonics 1 to 20, and what lies between them",
                    {"kHz", Axis::Kind::Plain, 0.0, highestKiloHertz},
                    {"dBFS", Axis::Kind::Decibels, lowestDb, highestDb}, spectrumSeries(takes));
    return figure;
}

}  // namespace cinder
