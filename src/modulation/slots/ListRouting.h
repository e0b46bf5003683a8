#pragma once

#include <vector>

#include "modulation/matrix/ModulationMatrixOwner.h"

namespace cinder {

class AbstractParameterSetList;

/// Where a list's sets stand among the targets or among the sources: set i has the numbers from
/// first + i * perSet to first + (i + 1) * perSet - 1.
struct SetSpan {
    int first = 0;
    int perSet = 0;

    int firstOf(int set) const { return first + set * perSet; }
};

/// Keeps the slots with the sets that they connect while the sets of a list change places.
/// Errors  none; without slot parameters there is nothing to keep
class ListRouting {
public:
    ListRouting(ModulationMatrixOwner* matrixOwner, SetSpan targets, SetSpan sources)
        : matrixOwner(matrixOwner), targets(targets), sources(sources) {}

    static bool isRemovable(const AbstractParameterSetList& list, int index);
    /// Before a set goes: takes away the slots that start from it, those aimed at it, and those
    /// that modulate the levels of either. If the list is that of the slots, the set may have moved
    /// by then, and the answer is its place; -1 if it is gone already, in a circle of slots.
    int release(int index);
    /// Behind it: what belongs to later sets of the `count` that there were moves down with them.
    void setRemoved(int index, int count) { shift(index + 1, count, -1); }
    /// What belongs to this and later sets of the `count` that there were has moved up.
    void setInserted(int index, int count) { shift(index, count, 1); }

private:
    /// Whatever refers to the sets first..last - 1 refers to those `by` places behind.
    void shift(int first, int last, int by);
    int placeAfterRemoval(int index, const std::vector<int>& removed) const;
    void removeSlots(const std::vector<int>& ascending);

    ModulationMatrixOwner* const matrixOwner;
    const SetSpan targets, sources;
};

}  // namespace cinder
