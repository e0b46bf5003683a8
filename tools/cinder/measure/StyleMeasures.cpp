#include "cinder/measure/StyleMeasures.h"

#include "cinder/measure/SpectralLines.h"
#include "cinder/measure/StyleProbe.h"
#include "core/Constants.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>

namespace cinder {

namespace {

using Samples = std::vector<float>;

/// A sine that fits a whole number of times into the samples that are looked at, so that the lines
/// need no window.
struct Tone {
    int length;  // samples
    int line;    // turns in them
};

constexpr double fadeSeconds = 0.5;    // an onset would ring for long in the sharper filters
constexpr double settleSeconds = 2.0;  // the fade included
constexpr int numHarmonics = 20;
constexpr double highestHz = 20000.0;
constexpr double quietDb = -48.0;  // against the tone

/// 997 Hz, the usual prime: of many different values, and its harmonics below 20 kHz.
Tone toneAt(int sampleRate) {
    return {sampleRate, 997};
}

/// Near 5 kHz. Nothing that folds back falls on a harmonic, since the turns have no divisor in
/// common with the length.
Tone aliasToneAt(int sampleRate) {
    const int length = sampleRate / 10;
    return {length, length % 499 == 0 ? 503 : 499};
}

Samples sine(const Tone& tone, double amplitude, int sampleRate) {
    const double fade = fadeSeconds * sampleRate;
    Samples samples(static_cast<std::size_t>(settleSeconds * sampleRate + tone.length));
    for (std::size_t n = 0; n < samples.size(); ++n) {
        const std::size_t place =
            n * static_cast<std::size_t>(tone.line) % static_cast<std::size_t>(tone.length);
        const double turns = static_cast<double>(place) / tone.length;
        const double rise = std::sin(halfPi * std::min(static_cast<double>(n) / fade, 1.0));
        samples[n] =
            static_cast<float>(amplitude * rise * rise * std::sin(2.0 * std::numbers::pi * turns));
    }
    return samples;
}

double meanOf(const Samples& samples) {
    return std::accumulate(samples.begin(), samples.end(), 0.0) /
           static_cast<double>(samples.size());
}

double powerOf(const Samples& samples) {
    const auto addSquare = [](double sum, float x) {
        return sum + static_cast<double>(x) * static_cast<double>(x);
    };
    return std::accumulate(samples.begin(), samples.end(), 0.0, addSquare) /
           static_cast<double>(samples.size());
}

double decibelsOf(double power) {
    return 10.0 * std::log10(power);
}

struct Harmonics {
    double first = 0.0, even = 0.0, odd = 0.0;  // power; the first one by itself

    explicit Harmonics(const Samples& samples, const Tone& tone) {
        const auto lines = spectralLines(samples, tone.line, numHarmonics, tone.line);
        first = std::norm(lines[0]);
        for (std::size_t i = 1; i < lines.size(); ++i)
            (i % 2 == 1 ? even : odd) += std::norm(lines[i]);
    }
    double shareOf(double power) const { return std::sqrt(power / (first + even + odd)); }
};

/// One style at one rate and level.
class Bench {
public:
    Bench(const StyleSet& styles, StyleId style, const StyleMeasurement& measurement)
        : styles(styles),
          style(style),
          rate(measurement.sampleRate),
          amplitude(std::exp(measurement.levelDb * logPerDecibel)) {}

    StyleMeasures measure() const {
        StyleMeasures measures{};
        measureDrives(measures);
        for (int i = 0; i < 2; ++i)
            measures.aliasDb[i] = aliasDb(StyleMeasures::factors[i]);
        measures.noiseDb[0] = noiseDb(amplitude);
        measures.noiseDb[1] = noiseDb(amplitude * std::exp(quietDb * logPerDecibel));
        return measures;
    }

private:
    StyleProbeSetup at(double drive, int factor = 8, std::uint32_t noiseSeed = 1) const {
        return {style, static_cast<double>(rate), factor, static_cast<float>(drive), noiseSeed,
                true};
    }
    /// What comes out when all has settled.
    Samples play(const Tone& tone, double toneAmplitude, const StyleProbeSetup& setup) const {
        const Samples out = StyleProbe(styles, setup).play(sine(tone, toneAmplitude, rate));
        return {out.end() - tone.length, out.end()};
    }

    void measureDrives(StyleMeasures& measures) const {
        const Tone tone = toneAt(rate);
        double power[3];
        for (int i = 0; i < 3; ++i) {
            const Samples out = play(tone, amplitude, at(StyleMeasures::drives[i]));
            const Harmonics harmonics(out, tone);
            const double mean = meanOf(out);
            power[i] = powerOf(out) - mean * mean;
            measures.harmonics[i] = harmonics.shareOf(harmonics.even + harmonics.odd);
            measures.even = harmonics.shareOf(harmonics.even);
            measures.offsetDb = decibelsOf(mean * mean);
        }
        for (int i = 0; i < 2; ++i)
            measures.levelDb[i] = decibelsOf(power[i + 1] / power[0]);
    }

    double aliasDb(int factor) const {
        const Tone tone = aliasToneAt(rate);
        const Samples out = play(tone, amplitude, at(1.0, factor));
        const int numLines = static_cast<int>(highestHz * tone.length / rate);
        double on = 0.0, off = 0.0;
        for (int line = 1; const auto& amplitudeOfLine : spectralLines(out, 1, numLines)) {
            (line % tone.line == 0 ? on : off) += std::norm(amplitudeOfLine);
            ++line;
        }
        return decibelsOf(off / on);
    }

    /// From two runs that differ in their noise and in nothing else.
    double noiseDb(double toneAmplitude) const {
        const Tone tone = toneAt(rate);
        Samples a = play(tone, toneAmplitude, at(1.0, 8, 1));
        const Samples b = play(tone, toneAmplitude, at(1.0, 8, 2));
        std::transform(a.begin(), a.end(), b.begin(), a.begin(), std::minus<>());
        return decibelsOf(0.5 * powerOf(a));
    }

    const StyleSet& styles;
    StyleId style;
    int rate;
    double amplitude;
};

}  // namespace

StyleMeasures measureStyle(const StyleSet& styles, StyleId style,
                           const StyleMeasurement& measurement) {
    return Bench(styles, style, measurement).measure();
}

}  // namespace cinder
