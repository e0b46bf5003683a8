#include "modulation/slots/ModulationSlotParameterSetList.h"

#include <memory>

namespace cinder {

ModulationSlotParameterSetList::ModulationSlotParameterSetList(GenericParameterOwner* owner,
                                                               ModulationMatrixOwner* matrixOwner,
                                                               const ModulationMatrixShape& shape)
    : ModulationMatrixParameterSet(owner, matrixOwner, shape),
      TargetParameterSetList<ModulationSlotParameterSet>(
          owner, "Slots", {0, shape.slotCount, 0}, matrixOwner, {shape.firstSlotTarget, 1},
          [=, this](int slot) {
              return std::make_unique<ModulationSlotParameterSet>(owner, matrixOwner, this, slot);
          }) {}

}  // namespace cinder
