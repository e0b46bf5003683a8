#include "modulation/slots/ModMatrixParamController.h"

#include "modulation/slots/ModulationSlotParameterSet.h"
#include "params/AbstractParameterSetList.h"

namespace cinder {

namespace {

constexpr float middle = 0.5f;

template <typename T>
void setTyped(IndexedPluginParameter<T>& parameter, T value) {
    parameter.setValue(static_cast<float>(parameter.positionOf(value)), 0);
}

}  // namespace

ModMatrixParamController::ModMatrixParamController(ModulationMatrixParameterSet* parameters)
    : Controller(&parameters->getShape()), parameters(parameters) {
    if (getShape().slotCount > 0) defaultLevel = parameters->slot(0).level.targetValue(middle);
}

int ModMatrixParamController::findFreeSlot() {
    AbstractParameterSetList& list = *parameters->slotList();
    const int count = list.activeCount();
    if (count >= list.setCount()) return -1;
    list.numActive.setValue(static_cast<float>(count + 1), 0);
    return count;
}

bool ModMatrixParamController::isBypassed(int slot) const {
    return parameters->slot(slot).bypassed.typedValue();
}

bool ModMatrixParamController::isInverted(int slot) const {
    return parameters->slot(slot).inverted.typedValue();
}

float ModMatrixParamController::getLevel(int slot) const {
    const ModulationTargetParameter& level = parameters->slot(slot).level;
    return level.targetValue(level.value());
}

int ModMatrixParamController::getSource(int slot) const {
    return parameters->slot(slot).source.typedValue() - 1;
}

int ModMatrixParamController::getTarget(int slot) const {
    return parameters->slot(slot).target.typedValue() - 1;
}

void ModMatrixParamController::setBypassed(int slot, bool bypassed) {
    setTyped(parameters->slot(slot).bypassed, bypassed);
}

void ModMatrixParamController::setInverted(int slot, bool inverted) {
    setTyped(parameters->slot(slot).inverted, inverted);
}

void ModMatrixParamController::setLevel(int slot, float level) {
    ModulationTargetParameter& parameter = parameters->slot(slot).level;
    parameter.setValue(parameter.valueFromTarget(level), 0);
}

void ModMatrixParamController::setSource(int slot, int source) {
    setTyped(parameters->slot(slot).source, source + 1);
}

void ModMatrixParamController::setTarget(int slot, int target) {
    setTyped(parameters->slot(slot).target, target + 1);
}

}  // namespace cinder
