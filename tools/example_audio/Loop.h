#pragma once

#include <cstddef>
#include <vector>

namespace cinder::example {

// Four bars of four beats at 100 to the minute: 9.6 s. A step is a sixteenth, 0.15 s, which is a
// whole number of samples at 44.1 and 48 kHz.
inline constexpr double stepSeconds = 60.0 / 100.0 / 4.0;
inline constexpr int stepsPerBar = 16;
inline constexpr int barsPerLoop = 4;
inline constexpr int stepsPerLoop = stepsPerBar * barsPerLoop;

using Sound = std::vector<double>;

/// A stereo sound that is heard again from the start when it ends: what rings on past the end is
/// heard at the beginning.
struct Loop {
    explicit Loop(int rate);

    size_t size() const { return left.size(); }
    size_t sampleAt(double step) const;

    /// Adds `sound` from sample `at` on; pan -1 is left, 1 is right, at equal power.
    void add(size_t at, const Sound& sound, double gain, double pan);
    void add(const Loop& other, double gain);

    int rate;
    Sound left;
    Sound right;
};

double gainOfDb(double db);
/// Middle A is 69 and 440 Hz.
double hzOfNote(double note);

}  // namespace cinder::example
