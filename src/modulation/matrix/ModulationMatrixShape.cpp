#include "modulation/matrix/ModulationMatrixShape.h"

namespace cinder {

ModulationMatrixShape ModulationMatrixShape::ofVocabulary() {
    ModulationMatrixShape shape;
    shape.firstSlotTarget = cinder::firstSlotTarget;
    shape.slotCount = numModulationSlots;
    shape.variantCount = numSourceVariants;
    shape.targetCount = numModulationTargets;
    for (int source = 0; source < numModulationSources; ++source) {
        Source& entry = shape.sources.emplace_back();
        entry.kind = kindOfSource(source);
        const TargetSpan own = ownTargetsOfSource(source);
        for (int i = 0; i < own.count; ++i)
            entry.ownTargets.push_back(own.first + i);
    }
    for (int target = 0; target < numModulationTargets; ++target)
        shape.targetRanges.push_back(&rangeOfTarget(target));
    return shape;
}

}  // namespace cinder
