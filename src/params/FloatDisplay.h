#pragma once

#include <string>

#include "core/Property.h"
#include "core/Realtime.h"

namespace cinder {

/// How a stored value becomes what the processing gets, and that what the user reads:
///
///     target  = toTarget(value) * targetScale + targetOffset
///     display = toDisplay(target * displayScale + displayOffset)
///
/// A step that is null is the identity. The way back takes the inverse steps in reverse.
struct FloatDisplay {
    using Function = float (*)(float) noexcept;
    using TextFunction = std::string (*)(float);

    Property<std::string> separator{" "};  // between number and label
    Property<std::string> prefix;          // may stand in front of a typed number
    std::string format = "%.3f";           // see formatNumber()
    Function toDisplay = nullptr;
    Function fromDisplay = nullptr;
    float displayOffset = 0.0f;
    float displayScale = 1.0f;
    std::string label;                  // behind the number
    TextFunction customText = nullptr;  // in place of the format
    Function toTarget = nullptr;
    Function fromTarget = nullptr;
    float targetOffset = 0.0f;
    float targetScale = 1.0f;

    float targetFromValue(float value) const noexcept CINDER_REALTIME {
        return through(toTarget, value) * targetScale + targetOffset;
    }
    float valueFromTarget(float target) const noexcept CINDER_REALTIME {
        return through(fromTarget, (target - targetOffset) / targetScale);
    }
    float displayFromValue(float value) const noexcept CINDER_REALTIME {
        return through(toDisplay, targetFromValue(value) * displayScale + displayOffset);
    }
    float valueFromDisplay(float display) const noexcept CINDER_REALTIME {
        return valueFromTarget((through(fromDisplay, display) - displayOffset) / displayScale);
    }
    /// The text of a display number, with the label. [ui, host]
    std::string text(float display) const;

private:
    static float through(Function step, float x) noexcept CINDER_REALTIME {
        return step ? step(x) : x;
    }
};

}  // namespace cinder
