#include "modulation/sources/dynamics/PeakHold.h"

#include <algorithm>
#include <bit>

#include "modulation/sources/dynamics/DynamicsKernels.h"

namespace cinder {

namespace {

constexpr float longestHoldMs = 2.0f;
constexpr double mostSamples = 65536.0;  // 2 ms at 32 MHz: a bound on memory, not on hold

double samplesOf(float milliseconds, float sampleRate) noexcept CINDER_REALTIME {
    return static_cast<double>(milliseconds * sampleRate) * 0.001;
}

}  // namespace

PeakHold::PeakHold(wave::Environment* environment)
    : Filter(environment), hold(environment, 0.0f, 0.0f, longestHoldMs), delay(environment) {
    makeResettable();
    fitToSampleRate();
}

void PeakHold::reset() noexcept CINDER_REALTIME {
    fitToSampleRate();
    delay.clear();
    clearPeaks();
}

/// Allocates where the rate has changed.
void PeakHold::fitToSampleRate() {
    const double samples = samplesOf(longestHoldMs, environment->getSampleRate());
    const auto window = static_cast<std::int32_t>(std::min(samples, mostSamples));
    if (window == longestWindow) return;
    longestWindow = window;
    delay.setMaxDelay(window);
    history.resize(window + environment->getMaxBlockSize() + slidingMaximumPadding);
    // One peak for every sample of the window and one more, which is let in before the oldest goes.
    const auto size = std::bit_ceil(static_cast<std::uint32_t>(window) + 2u);
    ring.resize(size);
    ringMask = static_cast<std::int32_t>(size) - 1;
}

/// Written so that a NaN ends at 0.
int PeakHold::windowOf(float holdMs) const noexcept CINDER_REALTIME {
    const double samples = samplesOf(holdMs, environment->getSampleRate());
    if (!(samples > 0.0)) return 0;
    return samples < longestWindow ? static_cast<int>(samples) : longestWindow;
}

void PeakHold::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                       unsigned) noexcept CINDER_REALTIME {
    const float* const holdMs = hold.pull(numSamples)->data();
    dynamicsKernels->magnitudes(in->data(), out->data(), numSamples);
    delay.write(out->data(), numSamples);
    const bool wasSilent = silentSamples >= longestWindow;
    const bool isSilent = input->isSilent();
    silentSamples = isSilent ? std::min(silentSamples, longestWindow) + numSamples : 0;
    setConstant(wasSilent && isSilent);
    if (!hold.isConstant()) {
        holdThroughMovingWindow(holdMs, out->data(), numSamples);
        return;
    }
    peaksAreCurrent = false;
    const int window = windowOf(holdMs[0]);
    if (isConstant()) return passOn(environment->getZeroBlock());
    if (window == 0) return;
    delay.read(0, history.data(), window + numSamples);
    dynamicsKernels->slidingMaximum(history.data(), window, out->data(), numSamples);
}

/// `out` holds the magnitudes of the block.
void PeakHold::holdThroughMovingWindow(const float* holdMs, float* out,
                                       int numSamples) noexcept CINDER_REALTIME {
    delay.read(0, history.data(), longestWindow + numSamples);
    const float* const present = history.data() + longestWindow;
    if (!peaksAreCurrent) {
        clearPeaks();
        findPeaks(history.data(), longestWindow);
    }
    countFromHere();
    for (int i = 0; i < numSamples; ++i) {
        const int window = windowOf(holdMs[i]);
        advance(present[i]);
        out[i] = std::max({highestPeak(window), present[i], present[i - window]});
        ++counter;
    }
}

void PeakHold::clearPeaks() noexcept CINDER_REALTIME {
    firstPeak = 0;
    numPeaks = 0;
    peaksAreCurrent = true;
    previous = 0.0f;
    peakMarked = false;
    counter = 0;
}

void PeakHold::findPeaks(const float* magnitudes, int numSamples) noexcept CINDER_REALTIME {
    for (int i = 0; i < numSamples; ++i) {
        advance(magnitudes[i]);
        ++counter;
    }
}

/// Numbers the samples anew with every block: a count through hours of sound would overflow.
void PeakHold::countFromHere() noexcept CINDER_REALTIME {
    for (int place = 0; place < numPeaks; ++place)
        peakAt(place).sample -= counter;
    counter = 0;
}

/// Takes in the magnitude of sample `counter`.
void PeakHold::advance(float magnitude) noexcept CINDER_REALTIME {
    if (magnitude >= previous) {
        peakMarked = false;
    } else if (!peakMarked) {
        peakMarked = true;
        int lower = 0;  // the first place whose peak is not above the new one lies in lower..upper
        int upper = numPeaks;
        while (lower < upper) {
            const int middle = (lower + upper) / 2;
            if (peakAt(middle).value > previous)
                lower = middle + 1;
            else
                upper = middle;
        }
        numPeaks = lower + 1;
        peakAt(lower) = {counter - 1, previous};
    }
    // By the longest window, not the present one: that may grow again and look further back.
    while (numPeaks > 0 && counter > peakAt(0).sample + longestWindow) {
        ++firstPeak;
        --numPeaks;
    }
    firstPeak &= ringMask;
    previous = magnitude;
}

/// The oldest peak inside the window, which is the highest; 0 if there is none.
float PeakHold::highestPeak(int window) const noexcept CINDER_REALTIME {
    int lower = 0;
    int upper = numPeaks;
    while (lower < upper) {
        const int middle = (lower + upper) / 2;
        if (counter > peakAt(middle).sample + window)
            lower = middle + 1;
        else
            upper = middle;
    }
    return lower < numPeaks ? peakAt(lower).value : 0.0f;
}

}  // namespace cinder
