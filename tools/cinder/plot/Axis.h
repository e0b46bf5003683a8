#pragma once

#include <string>
#include <vector>

namespace cinder {

struct Tick {
    double value;
    std::string label;  // empty: a line of the grid and no more
};

/// One direction of a panel: what it shows, and where.
/// Range   from below to; logarithmic ones above 0
struct Axis {
    /// How the ticks are spaced.
    enum class Kind {
        Plain,     // 1, 2 or 5 times a power of ten
        Decibels,  // 0.1, 1, 3, 6, 12 ...
        Degrees,   // 15, 30, 45, 90, 180 ...
        Hertz,     // logarithmic: each digit a line, 1, 2 and 5 labelled
    };

    std::string label;
    Kind kind = Kind::Plain;
    double from = 0.0;
    double to = 1.0;

    /// 0 at `from`, 1 at `to`.
    double placeOf(double value) const;
    /// In ascending order; of the labelled ones there are at most `most`, and three at least where
    /// the kind has a step that small.
    std::vector<Tick> ticks(int most) const;
    /// The distance of such ticks; not for Hertz.
    double step(int most) const;
};

/// An axis for what lies in lowest..highest, with room beyond, so that nothing is taken for the
/// frame.
Axis axisAround(Axis::Kind kind, std::string label, double lowest, double highest);

/// As many decimals as the step has.
std::string tickLabel(double value, double step);

}  // namespace cinder
