#pragma once

#include <cstdint>

#include "dsp/filters/BiquadFilter.h"
#include "dsp/filters/crossover/CrossoverTables.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// One side of a Linkwitz-Riley crossover of order N, or the phase of both together. With the
/// Butterworth polynomial B of order N / 2, by the bilinear transform:
///   low-pass 1 / B(s)^2, high-pass +-s^N / B(s)^2, all-pass B(-s) / B(s), which is their sum
///   order 1: 1 / (s + 1), s / (s + 1), and 1
/// Shape   one channel, up to 4 sections; designs at most every 32 samples, in fast sweeps every 4,
///         and only when the frequency has moved
/// Range   frequency in log2 of Hz, 1 Hz up to as near below half the sample rate as the transform
///         goes
/// State   that of BiquadFilter; sections start from zero. A frequency that moves, however fast and
///         far, leaves the charge of the sections as it is, so that the sum stays near its input
/// Source  S. Linkwitz, "Active crossover networks for noncoincident drivers", 1976
class CrossoverFilter final : public BiquadFilter {
public:
    using Slope = CrossoverSlope;
    enum class Response : std::int32_t { LowPass = 0, HighPass = 1, AllPass = 2 };

    explicit CrossoverFilter(wave::Environment* environment, Response response = Response::LowPass);

    void reset() noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;
    /// The sections start anew at the next block. [audio]
    void restartSoftly() noexcept CINDER_REALTIME { processor.restartSoftly(); }

    wave::FloatParameterBus frequency;
    Property<Response> response;
    Property<Slope> slope{Slope::Db24, this};

protected:
    void computeCoefficients(int numSamples,
                             BiquadProcessor& target) noexcept CINDER_REALTIME override;

private:
    static constexpr int maxSections = 4;

    /// A factor of the Butterworth polynomial: s + 1, or s^2 + s / q + 1.
    struct Factor {
        int order;
        float q;
    };

    void layOut() noexcept CINDER_REALTIME;
    void design(float log2Hz) noexcept CINDER_REALTIME;
    BiquadCoefficients sectionOf(const Factor& factor,
                                 double tangent) const noexcept CINDER_REALTIME;

    bool isLaidOut = false;
    int numFactors = 0;
    bool runsTwice = false;
    bool inverts = false;
    Factor factors[maxSections] = {};
    float designedLog2Hz;
    BiquadCoefficients coefficients[maxSections];
};

}  // namespace cinder
