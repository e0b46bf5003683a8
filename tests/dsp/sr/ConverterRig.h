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

/// Bits, not values: 0 and -0 are told apart.
inline bool sameBits(std::span<const float> a, std::span<const float> b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size_bytes()) == 0;
}

inline Signal raise(sr::ConverterBase& up, const Signal& in, int factor) {
    Signal out(in.size() * static_cast<std::size_t>(factor));
    const RealtimeGuard guard;
    up.process(in.data(), out.data(), static_cast<int>(in.size()));
    return out;
}

inline Signal lower(sr::ConverterBase& down, const Signal& in, int factor) {
    Signal out(in.size() / static_cast<std::size_t>(factor));
    const RealtimeGuard guard;
    down.process(in.data(), out.data(), static_cast<int>(out.size()));
    return out;
}

/// Up and down again, by fresh converters.
inline Signal roundTrip(sr::IIRConverterStyle& style, const Signal& in) {
    sr::IIRInterpolator up(&style);
    sr::IIRDecimator down(&style);
    return lower(down, raise(up, in, style.getFactor()), style.getFactor());
}

}  // namespace cinder::test
