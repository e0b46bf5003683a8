#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/Realtime.h"

namespace cinder {

/// A function of one variable, to fill tables from.
class FunctionTableFunction {
public:
    virtual ~FunctionTableFunction() = default;
    virtual double evaluate(double x) const = 0;
};

/// A function evaluated ahead of time at `size` equidistant points, read by linear interpolation.
/// Shape   values holds size + 1 numbers; the last is the one before it again, so that a lookup at
///         the end of the range may read one place on
/// Range   x from minimum to the maximum of build; beyond it the index wraps round, it does not
///         stop at the ends. NaN reads some value
/// State   built before audio starts and immutable from then on: any thread may read it
template <class Value>
struct BasicFunctionTable {
    float scale = 0.0f;           // 1 / step, 0 if the step is 0
    float offsetFraction = 0.0f;  // offset in two parts
    std::int32_t offsetInteger = 0;
    float minimum = 0.0f;
    double offset = 0.0;    // minimum in units of the index
    std::int32_t size = 0;  // a power of two, at least 2
    std::vector<Value> values;

    /// Fills it with f from the lesser to the greater of the two ends, at the next power of two
    /// points from requestedSize (up to 2^24). [any, allocates]
    void build(int requestedSize, const FunctionTableFunction& f, double from, double to);

    Value lookup(float x) const noexcept CINDER_REALTIME {  ///< [audio]
        // Kept where an int is defined, NaN too; nothing in the range of a table is near it.
        constexpr double farthest = 1 << 30;
        const double t = std::max(
            -farthest,
            std::min(static_cast<double>(x) * static_cast<double>(scale) - offset, farthest));
        const auto whole = static_cast<std::int32_t>(t);
        const std::int32_t i = whole & (size - 1);
        return values[i] + (values[i + 1] - values[i]) * static_cast<Value>(t - whole);
    }
};

using FunctionTable = BasicFunctionTable<float>;
using DoubleFunctionTable = BasicFunctionTable<double>;

}  // namespace cinder
