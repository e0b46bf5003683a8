#pragma once

#include <cstddef>
#include <vector>

#include "modulation/sources/xlfo/XLFO.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder::test {

/// Control signals of an XLFO, one value a sample, or a single one that stands.
struct XLFOControls {
    std::vector<float> frequency{1.0f}, glide{0.0f}, phaseOffset{0.0f};
};

inline SignalSource playerOf(wave::Environment* environment, const std::vector<float>& samples) {
    if (samples.size() == 1) return {environment, samples[0]};
    return {environment, samples};
}

/// An XLFO with its three controls wired to signals.
struct XLFORig {
    explicit XLFORig(const XLFOControls& controls, float sampleRate = 48000.0f)
        : frequency(playerOf(&environment, controls.frequency)),
          glide(playerOf(&environment, controls.glide)),
          phaseOffset(playerOf(&environment, controls.phaseOffset)),
          xlfo(&environment) {
        environment.setSampleRate(sampleRate);
        xlfo.frequency.setSource(&frequency);
        xlfo.glide.setSource(&glide);
        xlfo.phaseOffset.setSource(&phaseOffset);
    }
    void setValues(const std::vector<float>& values) {
        xlfo.numSteps = static_cast<int>(values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            xlfo.steps[i].value.assign(values[i]);
    }
    std::vector<float> play(int numSamples, int blockSize = 64) {
        return test::play(environment, xlfo, numSamples, blockSize);
    }

    wave::Environment environment;
    SignalSource frequency, glide, phaseOffset;
    XLFO xlfo;
};

}  // namespace cinder::test
