#pragma once

#include "cinder/plot/Figure.h"
#include "cinder/plot/StyleFigure.h"
#include "distortion/styles/StyleSet.h"

#include <vector>

namespace cinder {

/// A second of a style's answer to a sine, once it has settled.
/// Shape   a second of samples is 997 whole periods, so that a transform needs no window and its
///         lines are 1 Hz apart. Where the answer has the sine's period, all periods laid over each
///         other give one of as many points, finer than the samples stand
/// Errors  none
class SineRun {
public:
    static constexpr int hz = 997;  // prime, so that samples of different periods never coincide
    static constexpr int numHarmonics = 20;

    SineRun(const StyleSet& styles, const StylePlot& plot, double drivePercent);

    /// The same in each period, but for noise.
    bool isPeriodic() const { return periodic; }
    /// Output against time in periods, for `numPeriods`.
    std::vector<Point> wave(int numPeriods) const;
    /// Output against input, of one period, or of as many as make a cloud.
    std::vector<Point> transfer() const;

    /// Amplitudes in dB at the multiples of 997 Hz below half the rate, against kHz.
    std::vector<Point> harmonics() const;
    /// The highest of the lines in between, for each `widthHz`.
    std::vector<Point> between(int widthHz) const;
    /// RMS of the harmonics 2 to 20 next to that of all 20: what `cinder styles` calls THD, 0 to 1.
    double distortion() const;

private:
    struct Sample {
        double phase;  // of the sine that goes in, 0 to 1
        double value;
    };

    double inputAt(double phase) const;
    double amplitudeOf(int harmonic) const;
    void foldPeriods();

    int rate;
    double amplitude;            // of the sine
    int latency;                 // samples
    std::vector<float> out;      // as it came
    std::vector<Sample> folded;  // by phase
    std::vector<double> lines;   // amplitude by Hz
    bool periodic = false;
};

}  // namespace cinder
