#pragma once

#include <cstdint>

#include "core/Realtime.h"

// What the shapes and slopes of an equaliser are made of. The numbers of both stand in saved
// recipes.

namespace cinder {

enum class FilterShape : std::int32_t {
    LowPass = 0,
    LowShelf = 2,
    HighPass = 3,
    HighShelf = 5,
    Bell = 7,
};

/// How the low-pass prototype becomes the shape.
enum class FilterTransformation {
    None,
    ToHighPass,  // s becomes 1 / s
    ToBandPass,  // s becomes q (s + 1 / s), which doubles the poles
};

/// How a filter's Q becomes the q of its design. Both give 0.7071 for a Q of 1.
enum class QLaw {
    Proportional,  // 0.7071 Q
    Shelf,         // 32^(0.1355 ln Q + 0.5) / 8, which makes 0.125..4 of 0.025..40
};

struct FilterShapeRow {
    FilterShape shape;
    const char* name;
    bool usesGain;  // poles and zeros lie apart by the gain; without one there are no zeros
    FilterTransformation transformation;
    QLaw qLaw;
};

namespace filter_rows {
using enum FilterTransformation;
using enum QLaw;
using Shape = FilterShape;

// clang-format off
inline constexpr FilterShapeRow filterShapes[] = {
    // shape            name          gain   transformation  Q
    {Shape::LowPass,   "low pass",   false, None,           Proportional},
    {Shape::LowShelf,  "low shelf",  true,  None,           Shelf},
    {Shape::HighPass,  "high pass",  false, ToHighPass,     Proportional},
    {Shape::HighShelf, "high shelf", true,  ToHighPass,     Shelf},
    {Shape::Bell,      "bell",       true,  ToBandPass,     Proportional},
};
// clang-format on
}  // namespace filter_rows

using filter_rows::filterShapes;

/// A number that names no shape reads as the last row, the bell.
constexpr const FilterShapeRow& rowOf(FilterShape shape) noexcept CINDER_REALTIME {
    const FilterShapeRow* row = filterShapes;
    while (row->shape != shape && row->shape != FilterShape::Bell)
        ++row;
    return *row;
}

/// Named by the poles of the design; a bell has an even number of them.
enum class FilterSlope : std::int32_t {
    Poles1 = 0,
    Poles2 = 1,
    Poles3 = 2,
    Poles4 = 3,
    Poles5 = 4,
    Poles6 = 5,
    Poles8 = 6,
    Poles12 = 7,
    Poles16 = 8,
};
inline constexpr int polesOfSlope[] = {1, 2, 3, 4, 5, 6, 8, 12, 16};
inline constexpr int numFilterSlopes = 9;
static_assert(sizeof(polesOfSlope) / sizeof(polesOfSlope[0]) == numFilterSlopes);

/// A number beyond the table reads as its nearest end.
constexpr int polesOf(FilterSlope slope, FilterShape shape) noexcept CINDER_REALTIME {
    const int index = static_cast<int>(slope);
    const int poles = polesOfSlope[index < 0 ? 0 : index < numFilterSlopes ? index : 8];
    const bool isBandPass = rowOf(shape).transformation == FilterTransformation::ToBandPass;
    return isBandPass ? poles + poles % 2 : poles;
}

}  // namespace cinder
