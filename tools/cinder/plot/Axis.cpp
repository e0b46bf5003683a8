#include "cinder/plot/Axis.h"

#include "cinder/plot/Text.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace cinder {

namespace {

// clang-format off
constexpr double decibelSteps[] = {0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1, 2, 3,
                                   6, 12, 24, 48, 96};
constexpr double degreeSteps[] = {1, 5, 15, 30, 45, 90, 180, 360, 720, 1440, 2880};
// clang-format on

/// Rounding must not lose the tick at either end.
constexpr double slack = 1e-9;

double plainStep(double smallest) {
    const double decade = std::pow(10.0, std::floor(std::log10(smallest)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * decade >= smallest * (1.0 - slack)) return digit * decade;
    return 10.0 * decade;
}

double stepFrom(std::span<const double> steps, double smallest) {
    for (const double step : steps)
        if (step >= smallest * (1.0 - slack)) return step;
    return steps.back() * std::ceil(smallest / steps.back());
}

double smallestStep(Axis::Kind kind, double smallest) {
    if (kind == Axis::Kind::Decibels) return stepFrom(decibelSteps, smallest);
    if (kind == Axis::Kind::Degrees) return stepFrom(degreeSteps, smallest);
    return plainStep(smallest);
}

std::vector<Tick> hertzTicks(double from, double to, int most) {
    // Labels at 1, 2 and 5 of each decade, or where that is too many at 1 alone.
    const bool isWide = std::log10(to / from) * 3.0 > static_cast<double>(most);
    std::vector<Tick> ticks;
    for (double decade = std::pow(10.0, std::floor(std::log10(from))); decade <= to; decade *= 10.0)
        for (int digit = 1; digit <= 9; ++digit) {
            const double hz = decade * digit;
            if (hz < from * (1.0 - slack) || hz > to * (1.0 + slack)) continue;
            const bool isLabelled = digit == 1 || (!isWide && (digit == 2 || digit == 5));
            ticks.push_back({hz, isLabelled ? hertzText(hz) : ""});
        }
    return ticks;
}

}  // namespace

double Axis::placeOf(double value) const {
    if (kind == Kind::Hertz) return std::log(value / from) / std::log(to / from);
    return (value - from) / (to - from);
}

double Axis::step(int most) const {
    return smallestStep(kind, (to - from) / std::max(most - 1, 1));
}

std::vector<Tick> Axis::ticks(int most) const {
    if (kind == Kind::Hertz) return hertzTicks(from, to, most);
    const double distance = step(most);
    const double first = std::ceil(from / distance - slack);
    const double last = std::floor(to / distance + slack);
    std::vector<Tick> ticks;
    for (double index = first; index <= last; index += 1.0)
        ticks.push_back({index * distance, tickLabel(index * distance, distance)});
    return ticks;
}

Axis axisAround(Axis::Kind kind, std::string label, double lowest, double highest) {
    const double room = 0.06 * (highest - lowest);
    return {std::move(label), kind, lowest - room, highest + room};
}

std::string tickLabel(double value, double step) {
    const int decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(step) - slack)), 0, 6);
    return withMinus(formatted("%.*f", decimals, value == 0.0 ? 0.0 : value));
}

}  // namespace cinder
