#include "modulation/matrix/InternalController.h"

#include <algorithm>

namespace cinder {

using InternalController = ModulationMatrix::InternalController;

void InternalController::findSlotsOfTargets(const std::vector<int>& targets,
                                            std::vector<int>& out) const {
    out.clear();
    for (const int target : targets)
        for (const Slot* slot : matrix->getTarget(target).slots)
            out.push_back(slot->index);
    std::sort(out.begin(), out.end());
    out.erase(std::unique(out.begin(), out.end()), out.end());
}

void InternalController::findSlotsOfTarget(int target, std::vector<int>& out) const {
    out.clear();
    for (const Slot* slot : matrix->getTarget(target).slots)
        out.push_back(slot->index);
}

void InternalController::visitTarget(int target) noexcept CINDER_REALTIME {
    for (const Slot* slot : matrix->getTarget(target).slots)
        if (isRouted(slot->index)) visitSlot(slot->index);
}

}  // namespace cinder
