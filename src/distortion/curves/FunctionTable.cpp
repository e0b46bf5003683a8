#include "distortion/curves/FunctionTable.h"

namespace cinder {

template <class Value>
void BasicFunctionTable<Value>::build(int requestedSize, const FunctionTableFunction& f,
                                      double from, double to) {
    constexpr int largest = 1 << 24;
    size = 2;
    while (size < requestedSize && size < largest)
        size *= 2;
    values.assign(static_cast<std::size_t>(size) + 1, Value{});

    const double lowest = std::min(from, to);
    const double highest = std::max(from, to);
    const double step = (highest - lowest) / (size - 1);
    minimum = static_cast<float>(lowest);
    scale = step > 0.0 ? static_cast<float>(1.0 / step) : 0.0f;
    offset = step > 0.0 ? (size - 1) * lowest / (highest - lowest) : 0.0;
    offsetInteger = static_cast<std::int32_t>(offset);
    offsetFraction = static_cast<float>(offset - offsetInteger);

    double x = lowest;
    values[0] = static_cast<Value>(f.evaluate(x));
    for (std::int32_t i = 1; i <= size - 2; ++i) {
        x += step;
        values[i] = static_cast<Value>(f.evaluate(x));
    }
    values[size - 1] = values[size] = static_cast<Value>(f.evaluate(highest));
}

template struct BasicFunctionTable<float>;
template struct BasicFunctionTable<double>;

}  // namespace cinder
