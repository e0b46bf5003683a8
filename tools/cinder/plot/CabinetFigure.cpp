#include "cinder/plot/CabinetFigure.h"

#include "cinder/plot/Response.h"
#include "cinder/plot/Text.h"
#include "distortion/tone/CabinetStyle.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

constexpr double deepest = 60.0;  // dB below the highest
constexpr double shownMs = 14.0;  // of the impulse response
constexpr double shownBeforeMs = 0.6;
constexpr int numSteps = 3000;  // the echoes make dips that lie close

std::vector<float> impulseResponse(const CabinetRecipe& recipe, double sampleRate) {
    ImpulseRig rig(sampleRate);
    CabinetProcessor cabinet(&rig.environment);
    cabinet.setInput(&rig.source);
    rig.environment.reset(wave::Environment::ResetMode::All);
    CinderCabinetStyle(recipe).apply(cabinet);
    return rig.play(cabinet);
}

std::vector<Point> impulsePoints(const std::vector<float>& h, double sampleRate) {
    std::vector<Point> points = {{-shownBeforeMs, 0.0}, {-1000.0 / sampleRate, 0.0}};
    for (std::size_t i = 0; i < h.size(); ++i) {
        const double ms = static_cast<double>(i) * 1000.0 / sampleRate;
        if (ms > shownMs) break;
        points.push_back({ms, static_cast<double>(h[i])});
    }
    return points;
}

/// As high as what each of them leaves behind the filters, which make `peak` of a height of 1.
std::vector<Point> echoPoints(const CabinetRecipe& recipe, double peak) {
    std::vector<Point> points = {{0.0, peak}};
    for (const TapRow& tap : recipe.taps)
        points.push_back({static_cast<double>(tap.ms), static_cast<double>(tap.gain) * peak});
    return points;
}

Axis heightAxis(const std::vector<Series>& series) {
    const auto [lowest, highest] = heightsOf(series);
    return axisAround(Axis::Kind::Plain, "", lowest, highest);
}

}  // namespace

Figure cabinetFigure(const CabinetPlot& plot) {
    const CabinetRecipe& recipe = cabinetRecipes[static_cast<int>(plot.cabinet)];
    const auto whole = impulseResponse(recipe, plot.sampleRate);
    const auto filters = impulseResponse({recipe.name, {}, recipe.filters}, plot.sampleRate);
    const auto hz = audibleHertz(plot.sampleRate, numSteps);
    const Colour colour = palette::apart[0], tapColour = palette::apart[1];
    using enum Series::Look;

    const double peak = static_cast<double>(
        *std::ranges::max_element(filters, {}, [](float height) { return std::abs(height); }));

    std::vector<Series> impulse = {
        {"echoes", tapColour, echoPoints(recipe, peak), Bars, 1.2},
        {"the cabinet", colour, impulsePoints(whole, plot.sampleRate), Line, 1.4}};
    std::vector<Series> magnitudes = {
        {"its filters alone", palette::quietInk,
         magnitudePoints(hz, responseOf(filters, hz, plot.sampleRate)), Dashes, 1.4},
        {"the cabinet",
         {colour.rgb, 0.85},
         magnitudePoints(hz, responseOf(whole, hz, plot.sampleRate)),
         Line,
         1.0}};

    Figure figure;
    figure.title = formatted("Cabinet, %s", recipe.name);
    figure.subtitle =
        formatted("What comes out for a single sample of height 1 at %g kHz, and its magnitude",
                  plot.sampleRate * 1e-3);
    figure.columns = {1.0, 1.0};
    figure.width = 1080;
    figure.height = 460;
    const Axis height = heightAxis(impulse);
    const Axis decibels = decibelAxis(magnitudes, deepest);
    figure.addPanel("Impulse response", {"ms", Axis::Kind::Plain, -shownBeforeMs, shownMs}, height,
                    std::move(impulse));
    figure.addPanel("Magnitude", hertzAxis(hz), decibels, std::move(magnitudes));
    return figure;
}

}  // namespace cinder
