#pragma once

#include <array>
#include <cstddef>
#include <limits>

namespace cinder::sr {

/// Which half-band filter a stage gets whose upper rate is at most `highestRate`: the first row
/// that fits. The higher the rate, the further away is what would fold into the audible range, and
/// the less has to be done to keep it out.
struct StageRule {
    float highestRate;  // Hz
    int order;
    float edge;  // end of the passband, radians at the stage's upper rate
};

inline constexpr float anyRate = std::numeric_limits<float>::infinity();

inline constexpr std::array eightfoldRules = {
    //         rate  order edge            edge / pi
    StageRule{88201.0f, 13, 1.4891149f},  // 0.474
    StageRule{96001.0f, 11, 1.3948672f},  // 0.444
    StageRule{anyRate, 7, 1.0367255f},    // 0.33
};

/// For factors 2 and 4, also where a high base rate leaves no more of a requested 8.
inline constexpr std::array lowerRules = {
    StageRule{96001.0f, 13, 1.3823007f},  // 0.44
    StageRule{anyRate, 7, 1.0367255f},    // 0.33
};

/// No stage runs at a higher rate, in Hz: a little above 8 x 48, 4 x 96 and 2 x 192 kHz.
inline constexpr float highestStageRate = 384001.0f;

/// Delay of an interpolator and a decimator in a row for a base rate of at most `highestRate`: the
/// first row that fits. Low-frequency group delay, rounded to base-rate samples.
struct LatencyRow {
    float highestRate;                    // Hz
    int atFactor2, atFactor4, atFactor8;  // samples
};

inline constexpr std::array latencyRows = {
    LatencyRow{48001.0f, 3, 4, 4},
    LatencyRow{96001.0f, 2, 3, 3},
    LatencyRow{192001.0f, 2, 2, 2},
    LatencyRow{anyRate, 0, 0, 0},
};

/// The row for a rate; every table ends with one for any rate.
template <class Row, std::size_t size>
constexpr const Row& rowForRate(const std::array<Row, size>& rows, float rate) noexcept {
    std::size_t i = 0;
    while (i + 1 < size && rate > rows[i].highestRate)
        ++i;
    return rows[i];
}

template <class Row, std::size_t size>
constexpr bool coversAllRates(const std::array<Row, size>& rows) {
    for (std::size_t i = 0; i + 1 < size; ++i)
        if (!(rows[i].highestRate < rows[i + 1].highestRate)) return false;
    return rows.back().highestRate == anyRate;
}

/// The conversion kernels know stages of 3, 5 and 6 sections, the longer ones first.
template <std::size_t size>
constexpr bool hasKernels(const std::array<StageRule, size>& rules) {
    int before = 13;
    for (const StageRule& rule : rules) {
        if (rule.order != 7 && rule.order != 11 && rule.order != 13) return false;
        if (rule.order > before) return false;
        before = rule.order;
    }
    return true;
}

static_assert(coversAllRates(eightfoldRules) && hasKernels(eightfoldRules));
static_assert(coversAllRates(lowerRules) && hasKernels(lowerRules));
static_assert(coversAllRates(latencyRows));

}  // namespace cinder::sr
