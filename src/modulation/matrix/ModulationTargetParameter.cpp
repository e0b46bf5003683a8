#include "modulation/matrix/ModulationTargetParameter.h"

#include <utility>

namespace cinder {

ModulationTargetParameter::ModulationTargetParameter(GenericParameterOwner* owner, std::string name,
                                                     ModulationMatrixOwner* matrixOwner, int target,
                                                     FloatRange range)
    : FloatPluginParameter(owner, std::move(name), range),
      matrixOwner(matrixOwner),
      target(target) {}

void ModulationTargetParameter::applyValue(float value) noexcept CINDER_REALTIME {
    FloatPluginParameter::applyValue(value);
    if (ModulationMatrix* const matrix = matrixOwner->getMatrix())
        matrix->setTargetValue(target, targetValue(value));
}

}  // namespace cinder
