#pragma once

#include "cinder/ParameterRow.h"
#include "distortion/styles/StyleRecipes.h"

#include <algorithm>
#include <array>

namespace cinder {

inline constexpr int maxBands = 6;
inline constexpr int maxCrossovers = maxBands - 1;

/// The flat ids of the parameters, which are rows of the table. Of those that a crossover or a band
/// has, this is the first.
enum BandsParameterId : int {
    bandsId = 0,
    crossoverId = 1,
    bandStyleId = crossoverId + maxCrossovers,
    bandDriveId = bandStyleId + maxBands,
    bandsOversamplingId = bandDriveId + maxBands,
    bandsBypassId,
    numBandsParameters,
};

inline constexpr const char* bandCountNames[] = {"1", "2", "3", "4", "5", "6"};

inline constexpr auto styleNames = [] {
    std::array<const char*, numStyles> names{};
    std::ranges::transform(styleRecipes, names.begin(), &StyleRecipe::name);
    return names;
}();

namespace band_rows {

constexpr ParameterRow crossover(const char* name, float hz) {
    return {name, "Hz", 40.0f, 18000.0f, hz, {}, "where bands meet; the default goes with six"};
}
constexpr ParameterRow style(const char* name) {
    return {name, "", 0.0f, numStyles - 1, 0.0f, styleNames, "what bends the band"};
}
constexpr ParameterRow drive(const char* name) {
    return {name, "%", 0.0f, 100.0f, 50.0f, {}, "how far it goes"};
}

}  // namespace band_rows

inline constexpr std::array<ParameterRow, numBandsParameters> bandsParameterRows = {{
    // name          unit   min   max  default  choices            hint
    {"Bands", "", 1.0f, maxBands, 1.0f, bandCountNames, "into how many the sound is split"},
    band_rows::crossover("Crossover 1", 110.0f),
    band_rows::crossover("Crossover 2", 310.0f),
    band_rows::crossover("Crossover 3", 850.0f),
    band_rows::crossover("Crossover 4", 2300.0f),
    band_rows::crossover("Crossover 5", 6500.0f),
    band_rows::style("Style 1"),
    band_rows::style("Style 2"),
    band_rows::style("Style 3"),
    band_rows::style("Style 4"),
    band_rows::style("Style 5"),
    band_rows::style("Style 6"),
    band_rows::drive("Drive 1"),
    band_rows::drive("Drive 2"),
    band_rows::drive("Drive 3"),
    band_rows::drive("Drive 4"),
    band_rows::drive("Drive 5"),
    band_rows::drive("Drive 6"),
    {"Oversampling", "", 0.0f, 3.0f, 3.0f, oversamplingNames, "times the rate, up to 384 kHz"},
    {"Bypass", "", 0.0f, 1.0f, 0.0f, switchNames, "1 lets the input through"},
}};
static_assert(std::ranges::all_of(bandsParameterRows, isWhole));

// clang-format off
/// Crossovers in Hz that part 40 to 18000 Hz into bands of as many octaves each, rounded to two
/// digits: row i for i + 1 bands.
inline constexpr float evenCrossovers[maxBands][maxCrossovers] = {
    {},
    {850.0f},
    {310.0f, 2300.0f},
    {180.0f,  850.0f, 3900.0f},
    {140.0f,  460.0f, 1600.0f, 5300.0f},
    {110.0f,  310.0f,  850.0f, 2300.0f, 6500.0f},
};
// clang-format on

}  // namespace cinder
