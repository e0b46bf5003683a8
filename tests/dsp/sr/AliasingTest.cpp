#include "ConverterRig.h"
#include "core/Constants.h"
#include "distortion/curves/Clip.h"
#include "distortion/curves/WaveShaper.h"
#include "support/Spectrum.h"

#include <doctest/doctest.h>

#include <cmath>
#include <iomanip>
#include <iterator>
#include <numbers>
#include <sstream>

namespace cinder::test {

namespace {

/// A sine that fits an odd number of times into a power of two of samples: no line that folds back
/// falls on a harmonic, and the spectrum needs no window.
struct TestTone {
    int sampleRate;
    int length;
    int line;  // odd, near 5 kHz

    double hz() const { return static_cast<double>(line) * sampleRate / length; }
};

constexpr TestTone tones[] = {{44100, 32768, 3715}, {48000, 32768, 3413}};
constexpr int factors[] = {1, 2, 4, 8};
constexpr double foldedAt48kHz[] = {-15.9, -26.3, -38.6, -57.8};

const double drive = std::exp(24.0 * logPerDecibel);

/// Power off the harmonics below 20 kHz against power on them, in dB, of samples that hold a whole
/// number of turns of the tone.
double foldedDb(const TestTone& tone, std::span<const float> samples) {
    const auto power = powerSpectrum(samples);
    const int highest = static_cast<int>(20000.0 * tone.length / tone.sampleRate);
    double on = 0.0, off = 0.0;
    for (int line = 1; line <= highest; ++line)
        (line % tone.line == 0 ? on : off) += power[static_cast<std::size_t>(line)];
    return decibelsOfPower(off / on);
}

/// At full scale, `factor` times the rate.
double sampleOf(const TestTone& tone, int factor, int n) {
    const int length = factor * tone.length;
    const auto turns = static_cast<double>(tone.line) * (n % length) / length;
    return std::sin(2.0 * std::numbers::pi * turns);
}

/// The driven tone, up to the higher rate, through the curve, and down.
double measuredDb(const TestTone& tone, int factor) {
    StyleRig rig(static_cast<float>(tone.sampleRate), factor);
    Signal signal;
    for (int n = 0; n < 2 * tone.length; ++n)
        signal.push_back(static_cast<float>(drive * sampleOf(tone, 1, n)));
    sr::IIRInterpolator up(&rig.style);
    sr::IIRDecimator down(&rig.style);
    if (factor > 1) signal = raise(up, signal, factor);
    makeWaveShaper(arcTangentCurve, 1.0f, 1.0f)
        ->process(signal.data(), signal.data(), static_cast<int>(signal.size()));
    if (factor > 1) signal = lower(down, signal, factor);
    // In the first half the filters settle.
    return foldedDb(tone, std::span(signal).last(static_cast<std::size_t>(tone.length)));
}

/// What is left if the rate is raised and lowered by perfect filters: the curve of the sine at the
/// higher rate, whose lines below 20 kHz no filter touches.
double idealDb(const TestTone& tone, int factor) {
    std::vector<float> shaped;
    for (int n = 0; n < factor * tone.length; ++n)
        shaped.push_back(
            static_cast<float>(std::atan(drive * sampleOf(tone, factor, n) * halfPi) / halfPi));
    return foldedDb(tone, shaped);
}

}  // namespace

TEST_CASE("Aliasing: the oversampler folds back no more than a perfect one would") {
    std::ostringstream table;
    table << std::fixed << std::setprecision(1)
          << "power off the harmonics against power on them, below 20 kHz, dB (ideal)";
    for (const TestTone& tone : tones) {
        table << "\n  " << tone.sampleRate << " Hz, sine of " << tone.hz() << " Hz:";
        for (std::size_t i = 0; i < std::size(factors); ++i) {
            const double measured = measuredDb(tone, factors[i]);
            const double ideal = idealDb(tone, factors[i]);
            table << "  " << factors[i] << "x " << measured << " (" << ideal << ")";
            INFO(tone.sampleRate << " Hz, factor " << factors[i]);
            CHECK(measured < ideal + 0.5);
            if (tone.sampleRate == 48000) CHECK(std::abs(measured - foldedAt48kHz[i]) < 0.06);
        }
    }
    MESSAGE(table.str());
}

}  // namespace cinder::test
