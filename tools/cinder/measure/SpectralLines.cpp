#include "cinder/measure/SpectralLines.h"

#include <numbers>

namespace cinder {

namespace {

constexpr std::size_t lanes = 8;  // lines side by side, since each is a chain of its own

/// s[n] = x[n] + 2 cos(w) s[n-1] - s[n-2]; the last two are kept for every line.
struct Resonators {
    double turn[lanes] = {};  // 2 cos(w)
    double last[lanes] = {}, before[lanes] = {};

    void run(std::span<const float> x) {
        for (const float sample : x)
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                const double next =
                    static_cast<double>(sample) + turn[lane] * last[lane] - before[lane];
                before[lane] = last[lane];
                last[lane] = next;
            }
    }
};

}  // namespace

std::vector<std::complex<double>> spectralLines(std::span<const float> x, int first, int count,
                                                int spacing) {
    const auto length = static_cast<double>(x.size());
    const auto angle = [&](std::size_t i) {
        return 2.0 * std::numbers::pi * (first + static_cast<double>(i) * spacing) / length;
    };
    std::vector<std::complex<double>> lines(static_cast<std::size_t>(count));
    for (std::size_t start = 0; start < lines.size(); start += lanes) {
        Resonators resonators;
        for (std::size_t lane = 0; lane < lanes; ++lane)
            resonators.turn[lane] = 2.0 * std::cos(angle(start + lane));
        resonators.run(x);
        for (std::size_t lane = 0; lane < lanes && start + lane < lines.size(); ++lane)
            lines[start + lane] = 2.0 / length *
                                  (std::polar(1.0, angle(start + lane)) * resonators.last[lane] -
                                   resonators.before[lane]);
    }
    return lines;
}

}  // namespace cinder
