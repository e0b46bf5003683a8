#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

#include "params/AbstractPluginParameter.h"

namespace cinder {

struct IndexRange {
    std::int32_t minimum = 0;
    std::int32_t maximum = 1;
    std::int32_t defaultValue = 0;
};

/// A stepped parameter: a whole number within its range, which stands for a T (int, bool or an
/// enumeration). A value between two steps is cut to the one below.
template <typename T>
class IndexedPluginParameter : public AbstractPluginParameter {
public:
    IndexedPluginParameter(GenericParameterOwner* owner, std::string name, IndexRange range = {})
        : AbstractPluginParameter(owner, std::move(name)),
          range(range),
          stored(range.defaultValue) {}

    /// The value becomes the default. Before audio runs.
    void setRange(IndexRange newRange) {
        range = newRange;
        stored.store(std::clamp(range.defaultValue, range.minimum, range.maximum),
                     std::memory_order_relaxed);
    }

    float normalize(float value) const noexcept CINDER_REALTIME override {
        const std::int32_t steps = range.maximum - range.minimum;
        return steps > 0
                   ? static_cast<float>(position(value) - range.minimum) / static_cast<float>(steps)
                   : 0.0f;
    }
    /// Rounds to the nearest step.
    float denormalize(float normalised) const noexcept CINDER_REALTIME override {
        const auto steps = static_cast<double>(range.maximum - range.minimum);
        if (!(normalised > 0.0f) || steps == 0.0) return minimum();
        const double step = (0.5 / steps + static_cast<double>(normalised)) * steps;
        return static_cast<float>(static_cast<std::int32_t>(std::min(step, steps)) + range.minimum);
    }
    float defaultValue() const noexcept CINDER_REALTIME override {
        return static_cast<float>(range.defaultValue);
    }
    float maximum() const noexcept CINDER_REALTIME override {
        return static_cast<float>(range.maximum);
    }
    float minimum() const noexcept CINDER_REALTIME override {
        return static_cast<float>(range.minimum);
    }
    float value() const noexcept CINDER_REALTIME override {
        return static_cast<float>(stored.load(std::memory_order_relaxed));
    }
    T typedValue() const noexcept CINDER_REALTIME { return typed(value()); }

    bool storeValue(float newValue) noexcept CINDER_REALTIME override {
        const std::int32_t next = position(newValue);
        if (next == stored.load(std::memory_order_relaxed)) return false;
        stored.store(next, std::memory_order_relaxed);
        return true;
    }
    void applyValue(float) noexcept CINDER_REALTIME override {}

protected:
    T typed(float value) const noexcept CINDER_REALTIME { return static_cast<T>(position(value)); }

private:
    /// Clamped before it is cut, so that no value is too large for a whole number. A NaN ends at
    /// the minimum.
    std::int32_t position(float value) const noexcept CINDER_REALTIME {
        if (!(value > minimum())) return range.minimum;
        return value >= maximum() ? range.maximum : static_cast<std::int32_t>(value);
    }

    IndexRange range;
    std::atomic<std::int32_t> stored;
};

}  // namespace cinder
