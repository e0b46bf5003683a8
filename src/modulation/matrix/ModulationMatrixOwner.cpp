#include "modulation/matrix/ModulationMatrixOwner.h"

#include "modulation/matrix/ModulationController.h"

namespace cinder {

ModulationMatrixOwner::ModulationMatrixOwner() = default;

ModulationMatrixOwner::~ModulationMatrixOwner() = default;

AbstractParameterSetList* ModulationMatrixOwner::getSlotList() const {
    return slotParameters ? slotParameters->slotList() : nullptr;
}

ModulationMatrix::Controller* ModulationMatrixOwner::getController() {
    if (!controller && slotParameters) controller = slotParameters->createController();
    return controller.get();
}

void ModulationMatrixOwner::createMatrix(wave::Environment* environment) {
    matrix = std::make_unique<ModulationMatrix>(environment, &shape);
}

}  // namespace cinder
