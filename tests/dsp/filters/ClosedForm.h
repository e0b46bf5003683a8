#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "dsp/filters/FilterTables.h"

namespace cinder::test {

/// The squared magnitude of an analog equaliser at w times its frequency, from the formula of a
/// Butterworth filter of order N without going through its roots:
///   low pass 1 / (1 + w^2N),  low shelf (w^2N + g) / (w^2N + 1 / g)
/// High shapes by w -> 1 / w; the bell is a low shelf of w -> q (w - 1 / w). Q then changes the
/// damping 2 r sin(pi / 2N) of the first pair of roots, which lie at radius r.
inline double closedForm(FilterShape shape, int poles, double gainDb, double rawQ, double w) {
    const double g = std::pow(10.0, gainDb / 20.0);
    if (shape == FilterShape::Bell) {
        const int order = (poles + 1) / 2;
        const double x = std::pow(rawQ / std::numbers::sqrt2 * (w - 1.0 / w), 2 * order);
        return (x + g) / (x + 1.0 / g);
    }
    const bool isShelf = shape == FilterShape::LowShelf || shape == FilterShape::HighShelf;
    if (shape == FilterShape::HighPass || shape == FilterShape::HighShelf) w = 1.0 / w;
    const double x = std::pow(w, 2 * poles);
    const double plain = isShelf ? (x + g) / (x + 1.0 / g) : 1.0 / (x + 1.0);
    if (poles < 2) return plain;

    const double q = isShelf ? std::pow(32.0, std::log(rawQ) * 0.13554251 + 0.5) / 8.0
                             : rawQ / std::numbers::sqrt2;
    const double sine = std::sin(std::numbers::pi / (2 * poles));
    const double apart = isShelf ? std::pow(g, 0.5 / poles) : 1.0;
    const auto change = [&](double radius) {
        const double before = 2.0 * radius * sine;
        const double after = std::max(before * std::numbers::sqrt2 / 2.0 / q, 0.035355337);
        const double distance = std::pow(radius * radius - w * w, 2);
        return (distance + after * after * w * w) / (distance + before * before * w * w);
    };
    return plain * (isShelf ? change(apart) : 1.0) / change(1.0 / apart);
}

}  // namespace cinder::test
