#include "params/FloatDisplay.h"

#include "params/NumberText.h"

namespace cinder {

std::string FloatDisplay::text(float number) const {
    std::string text = customText ? customText(number) : formatNumber(number, format);
    if (!label.empty()) text += separator.get() + label;
    return text;
}

}  // namespace cinder
