#include "modulation/slots/ModulationSlotParameterSet.h"

#include "modulation/slots/ModulationMatrixParameterSet.h"
#include "params/tapers/Tapers.h"

namespace cinder {

namespace {

constexpr struct {
    const char *source, *level, *bypassed, *inverted, *target;
} suffixes = {" Source", " Level", " Bypassed", " Inverted", " Target"};

constexpr FloatRange levelRange = {0.0f, 1.0f, 0.5f};  // which the taper makes 0.16
const Taper& levelTaper = tapers::feedback;
constexpr IndexRange switchRange = {0, 1, 0};
constexpr const char* bypassNames = "Normal,Bypassed";
constexpr const char* invertNames = "Normal,Inverted";

std::string slotName(int slot) {
    return "Slot " + std::to_string(slot + 1);
}

/// A choice among `names`, whose first one means none.
void setUpChoice(IndexedPluginParameter<int>& parameter, const std::vector<std::string>& names) {
    parameter.setRange({0, static_cast<std::int32_t>(names.size()) - 1, 0});
    parameter.shareNames(&names);
}

void setUpSwitch(IndexedPluginParameter<bool>& parameter, const char* names) {
    parameter.setRange(switchRange);
    parameter.setNames(names);
}

}  // namespace

using Set = ModulationSlotParameterSet;

void Set::SourceParameter::applyValue(float value) noexcept CINDER_REALTIME {
    Parameter::applyValue(value);
    ModulationMatrix* const matrix = matrixOwner->getMatrix();
    const int newSource = targetValue(value) - 1;
    if (matrix && matrix->getSlot(slot).source != newSource) matrix->setSlotSource(slot, newSource);
}

void Set::TargetParameter::applyValue(float value) noexcept CINDER_REALTIME {
    Parameter::applyValue(value);
    ModulationMatrix* const matrix = matrixOwner->getMatrix();
    const int newTarget = targetValue(value) - 1;
    if (matrix && matrix->getSlot(slot).target != newTarget) matrix->setSlotTarget(slot, newTarget);
}

void Set::BypassParameter::applyValue(float value) noexcept CINDER_REALTIME {
    Parameter::applyValue(value);
    ModulationMatrix* const matrix = matrixOwner->getMatrix();
    const bool isNow = targetValue(value);
    if (matrix && matrix->getSlot(slot).bypassed != isNow) matrix->setSlotBypassed(slot, isNow);
}

void Set::InvertParameter::applyValue(float value) noexcept CINDER_REALTIME {
    Parameter::applyValue(value);
    ModulationMatrix* const matrix = matrixOwner->getMatrix();
    const bool isNow = targetValue(value);
    if (matrix && matrix->getSlot(slot).inverted != isNow) matrix->setSlotInverted(slot, isNow);
}

Set::ModulationSlotParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrixOwner,
                                const ModulationMatrixParameterSet* all, int slot)
    : PluginParameterSet(owner, slotName(slot)),
      all(all),
      source(this, slotName(slot) + suffixes.source, matrixOwner, slot),
      level(this, slotName(slot) + suffixes.level, matrixOwner,
            all->getShape().levelTargetOf(slot)),
      bypassed(this, slotName(slot) + suffixes.bypassed, matrixOwner, slot),
      inverted(this, slotName(slot) + suffixes.inverted, matrixOwner, slot),
      target(this, slotName(slot) + suffixes.target, matrixOwner, slot) {}

void Set::initialize() {
    setUpChoice(source, all->getSourceNames());
    level.setRange(levelRange);
    level.display.toTarget = levelTaper.toTarget;
    level.display.fromTarget = levelTaper.fromTarget;
    setUpSwitch(bypassed, bypassNames);
    setUpSwitch(inverted, invertNames);
    setUpChoice(target, all->getTargetNames());
}

}  // namespace cinder
