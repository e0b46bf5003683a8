#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "distortion/styles/StyleSet.h"

namespace cinder {

struct StyleProbeSetup {
    StyleId style;
    double sampleRate = 48000.0;
    int factor = 8;  // as far as the rate allows
    float drive = 0.0f;
    std::uint32_t noiseSeed = 1;
    bool cabinet = true;  // false leaves out the one that the style brings
};

/// One band's distortion in one channel, its cabinet behind it, played offline: what a style does,
/// without a split, a mix or a host around it.
/// Shape   any number of samples a call, as many out as in; cut into blocks of 256
/// Range   as the stages clamp it
/// State   that of the stages, from call to call; the output is `latency` samples late, and nothing
///         fades or ramps at the start. The set has to live as long as this
/// Errors  none
class StyleProbe {
public:
    StyleProbe(const StyleSet& styles, const StyleProbeSetup& setup);
    ~StyleProbe();
    StyleProbe(const StyleProbe&) = delete;
    StyleProbe& operator=(const StyleProbe&) = delete;

    std::vector<float> play(std::span<const float> in);
    /// Samples by which the converters in the path delay the signal; a style that goes around them
    /// has none.
    int latency() const;

private:
    struct Graph;
    std::unique_ptr<Graph> graph;
};

}  // namespace cinder
