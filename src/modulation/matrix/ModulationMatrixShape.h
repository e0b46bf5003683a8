#pragma once

#include <cstddef>
#include <vector>

#include "modulation/vocabulary/ModulationTargets.h"

namespace cinder {

/// What a matrix is made for. Plain data; both halves of an instance have one of their own, and a
/// kind may change while it is in use.
struct ModulationMatrixShape {
    struct Source {
        SourceKind kind = SourceKind::XY;
        std::vector<int> ownTargets = {};
    };

    int firstSlotTarget = 0;  // slot i's level is target firstSlotTarget + i
    int slotCount = 0;
    int variantCount = 1;
    int targetCount = 0;
    std::vector<Source> sources;
    /// For each target. Null: from 0 to 1, and every depth is 1.
    std::vector<const ModulationTargetRange*> targetRanges;

    /// The shape that the vocabulary describes.
    static ModulationMatrixShape ofVocabulary();

    int sourceCount() const { return static_cast<int>(sources.size()); }
    int levelTargetOf(int slot) const { return firstSlotTarget + slot; }
    const Source& source(int index) const { return sources[static_cast<std::size_t>(index)]; }
    const ModulationTargetRange* rangeOf(int target) const {
        return targetRanges[static_cast<std::size_t>(target)];
    }
};

}  // namespace cinder
