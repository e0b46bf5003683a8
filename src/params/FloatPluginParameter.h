#pragma once

#include <atomic>
#include <string>

#include "params/AbstractPluginParameter.h"

namespace cinder {

struct FloatRange {
    float minimum = 0.0f;
    float maximum = 1.0f;
    float defaultValue = 0.0f;
};

/// A continuous parameter: normalised = (value - minimum) / (maximum - minimum).
/// Range   minimum <= maximum; two values closer than 1.2e-7 are the same value
class FloatPluginParameter : public AbstractPluginParameter {
public:
    FloatPluginParameter(GenericParameterOwner* owner, std::string name, FloatRange range = {});

    /// The value becomes the default. Before audio runs.
    void setRange(FloatRange newRange);

    float normalize(float value) const noexcept CINDER_REALTIME override;
    float denormalize(float normalised) const noexcept CINDER_REALTIME override;
    float defaultValue() const noexcept CINDER_REALTIME override { return range.defaultValue; }
    float maximum() const noexcept CINDER_REALTIME override { return range.maximum; }
    float minimum() const noexcept CINDER_REALTIME override { return range.minimum; }
    float value() const noexcept CINDER_REALTIME override {
        return stored.load(std::memory_order_relaxed);
    }
    bool storeValue(float value) noexcept CINDER_REALTIME override;
    void applyValue(float) noexcept CINDER_REALTIME override {}

private:
    FloatRange range;
    std::atomic<float> stored;
};

}  // namespace cinder
