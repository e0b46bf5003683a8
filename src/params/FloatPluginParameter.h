#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "params/FloatDisplay.h"
#include "params/TypedPluginParameter.h"

namespace cinder {

struct FloatPluginParameterUnit;

struct FloatRange {
    float minimum = 0.0f;
    float maximum = 1.0f;
    float defaultValue = 0.0f;
};

/// A continuous parameter: normalised = (value - minimum) / (maximum - minimum). What bends lies in
/// its display, so the host's straight line is the travel of a knob.
/// Range   minimum <= maximum; two values closer than 1.2e-7 are the same value
/// Errors  see `parseText`
class FloatPluginParameter : public TypedPluginParameter<float> {
public:
    FloatPluginParameter(GenericParameterOwner* owner, std::string name, FloatRange range = {});

    // Setting up, before anybody else knows of the parameter.

    /// The value becomes the default.
    void setRange(FloatRange newRange);
    /// Scales such that the range reads as low..high, before `toDisplay`. Behind all that concerns
    /// the target.
    void setDisplayRange(float low, float high);
    /// Scales such that a taper from the range to itself gives targets in low..high.
    void setTargetRange(float low, float high);
    /// Takes the unit's label, its words and its look.
    void setUnit(const FloatPluginParameterUnit& newUnit);
    /// The label and the words alone: numbers look as they did.
    void setUnitWords(const FloatPluginParameterUnit& newUnit);

    const FloatPluginParameterUnit* getUnit() const { return unit; }

    float valueFromDisplay(float number) const noexcept CINDER_REALTIME override {
        return display.valueFromDisplay(number);
    }
    float displayFromValue(float value) const noexcept CINDER_REALTIME override {
        return display.displayFromValue(value);
    }
    float targetValue(float value) const noexcept CINDER_REALTIME override {
        return display.targetFromValue(value);
    }
    float valueFromTarget(float target) const noexcept CINDER_REALTIME {
        return display.valueFromTarget(target);
    }
    float normalize(float value) const noexcept CINDER_REALTIME override;
    float denormalize(float normalised) const noexcept CINDER_REALTIME override;
    float defaultValue() const noexcept CINDER_REALTIME override { return range.defaultValue; }
    float maximum() const noexcept CINDER_REALTIME override { return range.maximum; }
    float minimum() const noexcept CINDER_REALTIME override { return range.minimum; }
    float value() const noexcept CINDER_REALTIME override {
        return stored.load(std::memory_order_relaxed);
    }
    bool storeValue(float value) noexcept CINDER_REALTIME override;

    std::string text(float value) const override;
    /// A decimal number, with a point or a comma, and a word or none behind it:
    ///
    ///     no word        the number is what the display would show
    ///     %              a place in the stored range, unless % is the label
    ///     a unit's word  a number of that unit; without a unit, the label
    ///
    /// Where no number stands the unit may know what is meant (a note's name); only that answer may
    /// lie out of range. Where the display ends at 0 or below, every number is negative.
    /// Errors  false, and `out` as it was: no number, or a word that means nothing here. A decimal
    ///         number has digits: "inf", "nan" and hexadecimal are no numbers
    bool parseText(std::string_view text, float& out) const override;
    bool hasNumericText() const override { return true; }

    FloatDisplay display;

private:
    float limited(float value) const noexcept CINDER_REALTIME;
    bool parseUnitText(std::string_view text, float& out) const;
    bool parseTyped(float number, std::string_view word, float& out) const;
    float valueFromTyped(float number) const;

    const FloatPluginParameterUnit* unit = nullptr;
    FloatRange range;
    std::atomic<float> stored;
};

}  // namespace cinder
