#include "params/FloatParamPluginParameter.h"

namespace cinder {

void FloatParamPluginParameter::applyValue(float value) noexcept CINDER_REALTIME {
    for (wave::FloatParameter* target : targets)
        target->setValue(value, wave::FloatParameter::automaticRamp);
}

}  // namespace cinder
