#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <vector>

namespace cinder {

/// Values of parameters as states and presets hold them: a count, 4 bytes, then as many floats.
struct ValueList {
    std::int32_t count = 0;     ///< how many should follow
    std::vector<float> values;  ///< the first of them; what the stream lacks is 0
    bool whole = false;         ///< nothing was lacking, as far as it was read
};

/// Reads the count and the first values, `wanted` at most; the others stay on the stream. It costs
/// memory for `wanted` values, however large the count is.
/// Errors  none: the count can't be read or is below 0
std::optional<ValueList> readValueList(std::istream& stream, std::size_t wanted);

/// Passes over values, all or as many as there are; where some lack, the stream fails.
void skipValues(std::istream& stream, std::size_t count);

}  // namespace cinder
