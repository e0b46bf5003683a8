#pragma once

#include <algorithm>
#include <cstddef>
#include <span>

namespace cinder {

/// One parameter as the command line shows it. A stepped one has choices, and its values are whole
/// numbers, from its minimum on.
struct ParameterRow {
    const char* name;
    const char* unit;
    float minimum, maximum, defaultValue;
    std::span<const char* const> choices;
    const char* hint;
};

inline constexpr const char* oversamplingNames[] = {"1", "2", "4", "8"};  // 2 to the power of index
inline constexpr const char* switchNames[] = {"0", "1"};

/// The default lies in the range, and a stepped row has as many choices as steps.
constexpr bool isWhole(const ParameterRow& row) {
    if (!(row.minimum <= row.defaultValue && row.defaultValue <= row.maximum)) return false;
    return row.choices.empty() ||
           row.choices.size() == static_cast<std::size_t>(row.maximum - row.minimum) + 1;
}

}  // namespace cinder
