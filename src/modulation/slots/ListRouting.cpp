#include "modulation/slots/ListRouting.h"

#include <algorithm>

#include "modulation/slots/SlotOperations.h"
#include "params/AbstractParameterSetList.h"

namespace cinder {

bool ListRouting::isRemovable(const AbstractParameterSetList& list, int index) {
    const int count = list.activeCount();
    return index >= 0 && index < count && count > static_cast<int>(list.numActive.minimum());
}

int ListRouting::release(int index) {
    ModulationMatrix::Controller* const controller = matrixOwner->getController();
    if (!controller) return index;
    std::vector<int> cleared;
    for (int i = 0; i < sources.perSet; ++i)
        slots::clearSource(*controller, sources.firstOf(index) + i, cleared);
    for (int i = 0; i < targets.perSet; ++i)
        slots::clearTarget(*controller, targets.firstOf(index) + i, cleared);
    std::sort(cleared.begin(), cleared.end());
    removeSlots(cleared);
    return placeAfterRemoval(index, cleared);
}

/// From the highest down, so that each leaves those below in place. They are empty, and nothing is
/// aimed at their levels any more.
void ListRouting::removeSlots(const std::vector<int>& ascending) {
    AbstractParameterSetList& list = *matrixOwner->getSlotList();
    for (auto slot = ascending.rbegin(); slot != ascending.rend(); ++slot)
        if (*slot < list.activeCount())
            list.removeSet(*slot);
        else
            list.resetSet(*slot);
}

int ListRouting::placeAfterRemoval(int index, const std::vector<int>& removed) const {
    const bool isOfSlots =
        targets.perSet > 0 && targets.first == matrixOwner->getShape().firstSlotTarget;
    if (!isOfSlots) return index;
    if (std::binary_search(removed.begin(), removed.end(), index)) return -1;
    const auto above = std::lower_bound(removed.begin(), removed.end(), index);
    return index - static_cast<int>(above - removed.begin());
}

void ListRouting::shift(int first, int last, int by) {
    ModulationMatrix::Controller* const controller = matrixOwner->getController();
    if (!controller) return;
    const auto lies = [first, last](const SetSpan& span, int number) {
        return number >= span.firstOf(first) && number < span.firstOf(last);
    };
    for (int slot = 0; slot < controller->getShape().slotCount; ++slot) {
        const int target = controller->getTarget(slot), source = controller->getSource(slot);
        if (lies(targets, target)) controller->setTarget(slot, target + by * targets.perSet);
        if (lies(sources, source)) controller->setSource(slot, source + by * sources.perSet);
    }
}

}  // namespace cinder
