#pragma once

#include <cstring>
#include <span>
#include <vector>

#include "dsp/sr/IIRDecimator.h"
#include "dsp/sr/IIRInterpolator.h"
#include "support/RealtimeGuard.h"

namespace cinder::test {

/// An environment at a rate and a style that is asked for a factor.
struct StyleRig {
    explicit StyleRig(float rate, int requestedFactor = 8) {
        environment.setSampleRate(rate);
        style.setFactor(requestedFactor);
    }

    wave::Environment environment;
    sr::IIRConverterStyle style{&environment};
};

using Signal = std::vector<float>;

inline Signal impulse(int numSamples) {
    Signal samples(static_cast<std::size_t>(numSamples));
    samples.front() = 1.0f;
    return samples;
}

/// Bits, not values: 0 and -0 are told apart.
inline bool sameBits(std::span<const float> a, std::span<const float> b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size_bytes()) == 0;
}

/// The whole signal at once.
inline std::vector<int> uncut(const Signal& in) {
    return {static_cast<int>(in.size())};
}

/// `pieces` are the lengths of the blocks at the base rate.
inline Signal raise(sr::ConverterBase& interpolator, const Signal& in, int factor,
                    const std::vector<int>& pieces) {
    Signal out(in.size() * static_cast<std::size_t>(factor));
    const RealtimeGuard guard;
    for (int at = 0; const int n : pieces) {
        interpolator.process(in.data() + at, out.data() + at * factor, n);
        at += n;
    }
    return out;
}

inline Signal lower(sr::ConverterBase& decimator, const Signal& in, int factor,
                    const std::vector<int>& pieces) {
    Signal out(in.size() / static_cast<std::size_t>(factor));
    const RealtimeGuard guard;
    for (int at = 0; const int n : pieces) {
        decimator.process(in.data() + at * factor, out.data() + at, n);
        at += n;
    }
    return out;
}

/// Up and down again in one block, by fresh converters.
inline Signal roundTrip(sr::IIRConverterStyle& style, const Signal& in) {
    sr::IIRInterpolator interpolator(&style);
    sr::IIRDecimator decimator(&style);
    const int factor = style.getFactor();
    return lower(decimator, raise(interpolator, in, factor, uncut(in)), factor, uncut(in));
}

}  // namespace cinder::test
