#include "modulation/slots/ModulationMatrixParameterSet.h"

#include "modulation/slots/ModMatrixParamController.h"

namespace cinder {

ModulationMatrixParameterSet::ModulationMatrixParameterSet(GenericParameterOwner* owner,
                                                           ModulationMatrixOwner* matrixOwner,
                                                           const ModulationMatrixShape& shape)
    : shape(shape),
      updateOwner(owner),
      sourceNames{std::string("< Source >")},
      targetNames{std::string("< Target >")} {
    for (int i = 0; i < shape.sourceCount(); ++i)
        sourceNames.push_back(nameOfSource(i));
    for (int i = 0; i < shape.targetCount; ++i)
        targetNames.push_back(nameOfTarget(i));
    matrixOwner->setSlotParameters(this);
}

std::unique_ptr<ModulationMatrix::Controller> ModulationMatrixParameterSet::createController() {
    return std::make_unique<ModMatrixParamController>(this);
}

}  // namespace cinder
