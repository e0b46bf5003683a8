#include "core/Constants.h"
#include "support/Spectrum.h"
#include "tools/shaper/ShaperFixture.h"

#include <doctest/doctest.h>

#include <cmath>
#include <iomanip>
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

constexpr double driveDb = 24.0;

double measuredDb(const TestTone& tone, int log2Factor) {
    ShaperFixture shaper(1, static_cast<float>(tone.sampleRate));
    shaper.set(curveId, arcTangentCurve);
    shaper.set(driveId, static_cast<float>(driveDb));
    shaper.set(levelId, 0.0f);
    shaper.set(oversamplingId, static_cast<float>(log2Factor));
    Channels input(1);
    for (int n = 0; n < 2 * tone.length; ++n)
        input[0].push_back(static_cast<float>(sampleOf(tone, 1, n)));
    const Channels output = shaper.render(input);
    // In the first half the filters settle.
    return foldedDb(tone, std::span(output[0]).last(static_cast<std::size_t>(tone.length)));
}

/// What is left if the rate is raised and lowered by perfect filters: the curve of the sine at the
/// higher rate, whose lines below 20 kHz no filter touches.
double idealDb(const TestTone& tone, int factor) {
    const double gain = std::exp(driveDb * logPerDecibel);
    std::vector<float> shaped;
    for (int n = 0; n < factor * tone.length; ++n)
        shaped.push_back(
            static_cast<float>(std::atan(gain * sampleOf(tone, factor, n) * halfPi) / halfPi));
    return foldedDb(tone, shaped);
}

}  // namespace

TEST_CASE("Aliasing: the oversampler folds back no more than a perfect one would") {
    std::ostringstream table;
    table << std::fixed << std::setprecision(1)
          << "power off the harmonics against power on them, below 20 kHz, dB (ideal)";
    for (const TestTone& tone : tones) {
        table << "\n  " << tone.sampleRate << " Hz, sine of " << tone.hz() << " Hz:";
        double measured[4];
        for (int log2Factor = 0; log2Factor < 4; ++log2Factor) {
            const int factor = 1 << log2Factor;
            measured[log2Factor] = measuredDb(tone, log2Factor);
            const double ideal = idealDb(tone, factor);
            table << "  " << factor << "x " << measured[log2Factor] << " (" << ideal << ")";
            INFO(tone.sampleRate << " Hz, factor " << factor);
            CHECK(measured[log2Factor] < ideal + 0.5);
            if (log2Factor > 0) CHECK(measured[log2Factor] < measured[log2Factor - 1] - 8.0);
        }
        if (tone.sampleRate != 48000) continue;
        CHECK(measured[0] > -18.0);
        CHECK(measured[0] < -14.0);
        CHECK(measured[3] <= -54.0);
    }
    MESSAGE(table.str());
}

}  // namespace cinder::test
