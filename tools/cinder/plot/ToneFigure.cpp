#include "cinder/plot/ToneFigure.h"

#include "cinder/plot/Response.h"
#include "cinder/plot/Text.h"
#include "distortion/styles/DistortionProcessor.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

constexpr const char* toneNames[] = {"Bass", "Mid", "Treble", "Presence"};
static_assert(std::size(toneNames) == DistortionProcessor::numTones);

/// A band's chain with nothing in it but the tone.
constexpr DistortionSetup toneAlone = {-110.0f, {0, 0, 0}, {}, {}};

Response toneResponse(const TonePlot& plot, int control, double gainDb,
                      const std::vector<double>& hz) {
    ImpulseRig rig(plot.sampleRate);
    sr::IIRConverterStyle converterStyle(&rig.environment);
    Capacitor::Style capacitorStyle;
    constexpr std::uint32_t noiseSeed = 1;
    DistortionProcessor chain(&converterStyle, &capacitorStyle, noiseSeed);
    chain.setInput(&rig.source);
    chain.setUp(toneAlone);
    chain.toneGain(control).getParameter().setValue(static_cast<float>(gainDb), 0.0f);
    rig.environment.reset(wave::Environment::ResetMode::All);
    return responseOf(rig.play(chain), hz, plot.sampleRate);
}

}  // namespace

Figure toneFigure(const TonePlot& plot) {
    const auto hz = audibleHertz(plot.sampleRate);
    double reach = 1.0;
    for (const double gainDb : plot.gainsDb)
        reach = std::max(reach, std::abs(gainDb));

    Figure figure;
    figure.title = "Tone controls of a band";
    figure.subtitle =
        formatted("Each by itself, the others at 0 dB; at %g kHz", plot.sampleRate * 1e-3);
    figure.columns = {1.0, 1.0};
    const Axis decibels = axisAround(Axis::Kind::Decibels, "dB", -reach, reach);
    for (int control = 0; control < DistortionProcessor::numTones; ++control) {
        std::vector<Series> series;
        for (const double gainDb : plot.gainsDb)
            series.push_back({gainText(gainDb), palette::cutOrBoost(gainDb / reach),
                              magnitudePoints(hz, toneResponse(plot, control, gainDb, hz))});
        figure.addPanel(toneNames[control], hertzAxis(hz), decibels, std::move(series));
    }
    return figure;
}

}  // namespace cinder
