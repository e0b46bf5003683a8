#include "cinder/plot/FilterFigure.h"

#include "cinder/plot/Response.h"
#include "cinder/plot/Text.h"
#include "dsp/filters/EQFilter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace cinder {

namespace {

constexpr double deepest = 96.0;  // dB below the highest

std::string titleOf(const FilterPlot& plot) {
    const FilterShapeRow& row = rowOf(plot.shape);
    std::string title = row.name;
    title[0] = static_cast<char>(title[0] - 'a' + 'A');
    title += formatted(" at %g Hz", plot.hz);
    if (row.usesGain) title += ", " + gainText(plot.gainDb);
    return title + formatted(", Q %g", plot.q);
}

/// Of the design itself, which no transform has squeezed below half the sample rate.
Response analogResponse(EQFilter& filter, const std::vector<double>& hz, double sampleRate) {
    AnalogFilterPrototype prototype = filter.getPrototype();
    Response response;
    for (const double frequency : hz)
        response.push_back(prototype.getResponse(2.0 * std::numbers::pi * frequency / sampleRate));
    return response;
}

Axis phaseAxis(const std::vector<Series>& series) {
    const auto [lowest, highest] = heightsOf(series);
    return axisAround(Axis::Kind::Degrees, "degrees", std::min(lowest, -10.0),
                      std::max(highest, 10.0));
}

}  // namespace

Figure filterFigure(const FilterPlot& plot) {
    ImpulseRig rig(plot.sampleRate);
    EQFilter filter(&rig.environment);
    filter.setInput(&rig.source);
    filter.frequency.getParameter().setValue(static_cast<float>(std::log2(plot.hz)), 0.0f);
    filter.gain.getParameter().setValue(static_cast<float>(plot.gainDb), 0.0f);
    filter.q.getParameter().setValue(static_cast<float>(plot.q), 0.0f);
    filter.shape = plot.shape;
    filter.slope = plot.slope;
    filter.reset();

    const auto hz = audibleHertz(plot.sampleRate);
    const Response digital = responseOf(rig.play(filter), hz, plot.sampleRate);
    const Response analog = analogResponse(filter, hz, plot.sampleRate);
    const Colour colour = palette::apart[0], analogColour = palette::quietInk;
    const std::string name = formatted("at %g kHz", plot.sampleRate * 1e-3);
    using enum Series::Look;
    std::vector<Series> magnitudes = {
        {"analog", analogColour, magnitudePoints(hz, analog), Dashes, 1.2},
        {name, colour, magnitudePoints(hz, digital), Line, 2.0}};
    std::vector<Series> phases = {{"analog", analogColour, phasePoints(hz, analog), Dashes, 1.2},
                                  {name, colour, phasePoints(hz, digital), Line, 2.0}};

    Figure figure;
    figure.title = titleOf(plot);
    figure.subtitle =
        formatted("%d dB per octave; the impulse response of the running filter, transformed",
                  6 * polesOf(plot.slope, plot.shape));
    figure.width = 820;
    figure.height = 640;
    const Axis decibels = decibelAxis(magnitudes, deepest);
    const Axis degrees = phaseAxis(phases);
    figure.addPanel("Magnitude", hertzAxis(hz), decibels, std::move(magnitudes));
    figure.addPanel("Phase", hertzAxis(hz), degrees, std::move(phases));
    return figure;
}

}  // namespace cinder
