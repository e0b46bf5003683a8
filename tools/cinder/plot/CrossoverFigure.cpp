#include "cinder/plot/CrossoverFigure.h"

#include "cinder/plot/Text.h"
#include "dsp/filters/crossover/MultiBand.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

constexpr double lowestDb = -72.0;
constexpr double highestDb = 12.0;
// Where a band is quieter its phase is no matter, and hides that of the others.
constexpr double phaseFromDb = -30.0;

void setUp(CrossoverMultiBandModel& model, const CrossoverPlot& plot) {
    const UpdateBracket bracket(model);
    model.sampleRate = static_cast<float>(plot.sampleRate);
    model.bandCount.assign(static_cast<int>(plot.hz.size()) + 1);
    for (std::size_t i = 0; i < plot.hz.size(); ++i) {
        auto& crossover = model.getCrossover(static_cast<int>(i));
        crossover.frequency = static_cast<float>(std::log2(plot.hz[i]));
        crossover.slope = 6.0f * static_cast<float>(rowOf(plot.slope).order);
    }
}

std::string subtitleOf(const CrossoverPlot& plot, const SplitResponse& split) {
    if (plot.hz.empty()) return "The input itself";
    std::string text = plot.hz.size() == 1 ? "Crossover at " : "Crossovers at ";
    for (std::size_t i = 0; i < plot.hz.size(); ++i)
        text += (i == 0 ? "" : i + 1 < plot.hz.size() ? ", " : " and ") + hertzText(plot.hz[i]);
    return text + formatted(" Hz, %d dB per octave, at %g kHz; the sum is flat within %.1g dB",
                            6 * rowOf(plot.slope).order, plot.sampleRate * 1e-3,
                            std::max(split.worstDb(), 0.0001));
}

}  // namespace

double SplitResponse::worstDb() const {
    double worst = 0.0;
    for (const auto& value : sum)
        worst = std::max(worst, std::abs(decibelsOf(value)));
    return worst;
}

SplitResponse measureSplit(const CrossoverPlot& plot) {
    ImpulseRig rig(plot.sampleRate);
    CrossoverMultiBandModel model;
    MultiBand split(&rig.environment, &model);
    split.setInput(&rig.source);
    setUp(model, plot);

    std::vector<wave::Producer*> outputs;
    for (std::size_t band = 0; band <= plot.hz.size(); ++band)
        outputs.push_back(split.getOutput(static_cast<int>(band)));
    SplitResponse response{audibleHertz(plot.sampleRate), {}, {}};
    response.sum.resize(response.hz.size());
    for (const auto& h : rig.play(outputs)) {
        response.bands.push_back(responseOf(h, response.hz, plot.sampleRate));
        std::ranges::transform(response.sum, response.bands.back(), response.sum.begin(),
                               std::plus<>());
    }
    return response;
}

Figure crossoverFigure(const CrossoverPlot& plot) {
    const SplitResponse split = measureSplit(plot);
    const auto isHeard = [](std::complex<double> value) { return decibelsOf(value) > phaseFromDb; };
    using enum Series::Look;
    constexpr Colour sumColour = {0x2b2b2b, 0.28};
    std::vector<Series> magnitudes = {
        {"sum", sumColour, magnitudePoints(split.hz, split.sum), Line, 5.0}};
    std::vector<Series> phases = {
        {"sum", sumColour, wrappedPhasePoints(split.hz, split.sum), Line, 5.0}};
    for (std::size_t band = 0; band < split.bands.size(); ++band) {
        const std::string name = formatted("band %zu", band + 1);
        const Colour colour = palette::apart[band];
        magnitudes.push_back({name, colour, magnitudePoints(split.hz, split.bands[band])});
        phases.push_back({name, colour, wrappedPhasePoints(split.hz, split.bands[band], isHeard)});
    }

    Figure figure;
    figure.title = split.bands.size() == 1 ? "One band"
                                           : formatted("Split into %zu bands", split.bands.size());
    figure.subtitle = subtitleOf(plot, split);
    figure.width = 900;
    figure.height = 680;
    figure.addPanel("Magnitude", hertzAxis(split.hz),
                    {"dB", Axis::Kind::Decibels, lowestDb, highestDb}, std::move(magnitudes));
    figure.addPanel(
        "Phase, of each band where it is louder than \xe2\x88\x92"
        "30 dB",
        hertzAxis(split.hz), {"degrees", Axis::Kind::Degrees, -180.0, 180.0}, std::move(phases));
    return figure;
}

std::vector<double> evenSplit(int numBands) {
    std::vector<double> hz;
    for (int i = 1; i < numBands; ++i) {
        const double exact = 40.0 * std::pow(450.0, i * 1.0 / numBands);
        const double digit = std::pow(10.0, std::floor(std::log10(exact)) - 1.0);
        hz.push_back(std::round(exact / digit) * digit);
    }
    return hz;
}

}  // namespace cinder
