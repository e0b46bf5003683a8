#pragma once

#include <span>

#include "distortion/tone/CabinetProcessor.h"

// The loudspeakers, as they stand in saved sounds: a row's place is what counts, and no number
// moves. Taps and filters are installed from top to bottom, which is the filters' order in the
// signal path. Poles2 has 12 dB per octave, Poles4 has 24.

namespace cinder {

struct CabinetRecipe {
    const char* name;
    std::span<const TapRow> taps;
    std::span<const FilterRow> filters;
};

namespace cabinet_rows {
using enum FilterShape;
using enum FilterSlope;

// clang-format off
inline constexpr TapRow speaker1Taps[] = {
    // ms    gain
    {1.07f, -0.21f },
    {2.18f, -0.209f},
    {5.97f, -0.23f },
    {8.0f,  -0.22f },
};
inline constexpr FilterRow speaker1Filters[] = {
    // Hz         dB      Q       shape     slope
    {  41.464f,   0.0f,   1.0f,   HighPass, Poles2},
    { 103.96f,    6.07f,  1.596f, Bell,     Poles2},
    {5109.6f,   -11.05f,  1.123f, Bell,     Poles2},
    {5496.3f,     0.0f,   1.0f,   LowPass,  Poles4},
};

inline constexpr TapRow speaker2Taps[] = {
    // ms    gain
    {1.07f, -0.215f},
    {2.18f, -0.228f},
    {5.97f, -0.217f},
    {7.99f, -0.217f},
};
inline constexpr FilterRow speaker2Filters[] = {
    // Hz         dB      Q       shape     slope
    {  52.219f,   0.0f,   1.399f, HighPass, Poles2},
    { 550.92f,    7.04f,  1.0f,   Bell,     Poles2},
    {5109.6f,    -7.07f,  1.123f, Bell,     Poles2},
    {5996.9f,     0.0f,   1.0f,   LowPass,  Poles4},
};

inline constexpr TapRow speaker3Taps[] = {
    // ms    gain
    {1.07f, -0.053f},
    {2.18f, -0.048f},
    {5.97f, -0.051f},
    {8.0f,  -0.051f},
};
inline constexpr FilterRow speaker3Filters[] = {
    // Hz         dB      Q       shape     slope
    { 100.0f,     5.0f,   0.3f,   LowShelf, Poles2},
    { 495.0f,    -4.0f,   1.0f,   Bell,     Poles2},
    {6000.0f,     1.5f,   1.0f,   Bell,     Poles2},
};

inline constexpr TapRow speaker4Taps[] = {
    // ms    gain
    {1.17f, -0.31f},
    {4.33f, -0.12f},
    {7.97f,  0.18f},  // the one echo that is not turned over
    {9.99f, -0.3f },
};
inline constexpr FilterRow speaker4Filters[] = {
    // Hz         dB      Q         shape     slope
    {  30.0f,     0.0f,   1.1f,     HighPass, Poles2},
    { 154.0f,     5.0f,   1.7f,     Bell,     Poles2},
    {2000.0f,   -10.0f,   2.8f,     Bell,     Poles2},
    {4400.0f,     0.0f,   0.838417f, LowPass, Poles2},
    {4400.0f,     0.0f,   2.02412f,  LowPass, Poles2},
};

inline constexpr CabinetRecipe cabinetRecipes[] = {
    {"Speaker 1", speaker1Taps, speaker1Filters},
    {"Speaker 2", speaker2Taps, speaker2Filters},
    {"Speaker 3", speaker3Taps, speaker3Filters},
    {"Speaker 4", speaker4Taps, speaker4Filters},
};
// clang-format on

constexpr bool fit(std::span<const CabinetRecipe> recipes) {
    for (const CabinetRecipe& recipe : recipes) {
        if (recipe.taps.size() > CabinetProcessor::MultiDelay::maxTaps) return false;
        if (recipe.filters.size() > CabinetProcessor::maxFilters) return false;
        for (const TapRow& tap : recipe.taps)
            if (tap.ms > 10.0f) return false;
    }
    return true;
}
static_assert(fit(cabinetRecipes));
}  // namespace cabinet_rows

using cabinet_rows::cabinetRecipes;

/// Named by their rows.
enum class Cabinet : int { None = -1, Speaker1, Speaker2, Speaker3, Speaker4 };
inline constexpr int numCabinets = 4;
static_assert(sizeof(cabinetRecipes) / sizeof(cabinetRecipes[0]) == numCabinets);

}  // namespace cinder
