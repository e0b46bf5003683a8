#pragma once

#include <cmath>

namespace cinder::example {

/// What turns a step of height 2 at phase 0 into a band-limited one: the difference of the step and
/// a parabola on either side of it (a polynomial step). `phase` and `increment` in turns.
inline double stepCorrection(double phase, double increment) {
    if (phase < increment) {
        const double x = phase / increment;
        return x + x - x * x - 1.0;
    }
    if (phase > 1.0 - increment) {
        const double x = (phase - 1.0) / increment;
        return x * x + x + x + 1.0;
    }
    return 0.0;
}

inline double wrapped(double phase) {
    return phase - std::floor(phase);
}

/// A saw from -1 to 1 with a band-limited jump.
class Saw {
public:
    explicit Saw(double startPhase = 0.0) : phase(startPhase) {}

    double next(double increment) {
        const double y = 2.0 * phase - 1.0 - stepCorrection(phase, increment);
        phase = wrapped(phase + increment);
        return y;
    }

private:
    double phase;
};

/// A square wave as the difference of two saws half a turn apart.
class Square {
public:
    explicit Square(double startPhase = 0.0)
        : first(startPhase), second(wrapped(startPhase + 0.5)) {}

    double next(double increment) { return first.next(increment) - second.next(increment); }

private:
    Saw first;
    Saw second;
};

/// The flow of air through the vocal folds, differentiated: the folds part slowly, close fast and
/// rest. d(x) = x (2 - 3 x) while open, x = phase / openQuotient, and 0 while closed; the jump from
/// -1 to 0 at the closing is what makes the voice bright, and is band-limited.
class VocalFolds {
public:
    double next(double increment) {
        const double x = phase / openQuotient;
        double y = x < 1.0 ? x * (2.0 - 3.0 * x) : 0.0;
        y += 0.5 * stepCorrection(wrapped(phase - openQuotient), increment);
        phase = wrapped(phase + increment);
        return y;
    }

    bool areOpen() const { return phase < openQuotient; }

private:
    static constexpr double openQuotient = 0.62;

    double phase = 0.0;
};

}  // namespace cinder::example
