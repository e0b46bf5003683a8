#pragma once

#include <string>

#include "modulation/matrix/ModulationMatrixOwner.h"
#include "params/FloatPluginParameter.h"

namespace cinder {

/// Gives its target value to a target of the matrix, as the base that slots add to. In the half
/// without a matrix it is a parameter like any other.
class ModulationTargetParameter final : public FloatPluginParameter {
public:
    ModulationTargetParameter(GenericParameterOwner* owner, std::string name,
                              ModulationMatrixOwner* matrixOwner, int target,
                              FloatRange range = {});

    void applyValue(float value) noexcept CINDER_REALTIME override;

    int getTarget() const { return target; }

private:
    ModulationMatrixOwner* const matrixOwner;
    const int target;
};

}  // namespace cinder
