#pragma once

#include "modulation/slots/ModulationMatrixParameterSet.h"
#include "modulation/slots/ModulationSlotParameterSet.h"
#include "modulation/slots/TargetParameterSetList.h"

namespace cinder {

/// All the slots. Each owns one target, its level, so slots that modulate a slot go with it and
/// follow it. The set behind an inserted one, and the inserted one, are connected alike.
class ModulationSlotParameterSetList final
    : public ModulationMatrixParameterSet,
      public TargetParameterSetList<ModulationSlotParameterSet> {
public:
    /// `owner` is that of the parameters, and has the update bracket. The shape lives longer; the
    /// count of its sources and targets is that of the choices.
    ModulationSlotParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrixOwner,
                                   const ModulationMatrixShape& shape);

    AbstractParameterSetList* slotList() override { return this; }
    ModulationSlotParameterSet& slot(int index) const override { return *set(index); }
};

}  // namespace cinder
