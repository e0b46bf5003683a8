#include "modulation/matrix/ModulationController.h"

#include <algorithm>

namespace cinder {

using Controller = ModulationMatrix::Controller;

Controller::Controller(const ModulationMatrixShape* shape)
    : shape(shape),
      visited(shape->targetCount),
      routed(static_cast<std::size_t>(shape->slotCount)) {}

int Controller::findFreeSlot() {
    int firstInvalid = -1;
    for (int slot = 0; slot < shape->slotCount; ++slot) {
        if (getSource(slot) < 0 && getTarget(slot) < 0) return slot;
        if (firstInvalid < 0 && !isValid(slot)) firstInvalid = slot;
    }
    return firstInvalid;
}

template <class Predicate>
void Controller::collect(std::vector<int>& out, Predicate matches) const {
    out.clear();
    for (int slot = 0; slot < shape->slotCount; ++slot)
        if (matches(slot)) out.push_back(slot);
}

void Controller::findSlotsOfSources(int first, int count, std::vector<int>& out) const {
    collect(out, [=, this](int slot) {
        const int source = getSource(slot);
        return source >= first && source < first + count;
    });
}

void Controller::findSlotsOfSource(int source, std::vector<int>& out) const {
    findSlotsOfSources(source, 1, out);
}

void Controller::findSlotsOfKinds(int sourceKind, const ModulationTargetRange* rangeRecord,
                                  std::vector<int>& out) const {
    collect(out, [=, this](int slot) {
        const int source = getSource(slot), target = getTarget(slot);
        if (source < 0 || target < 0) return false;
        const bool isOfKind =
            sourceKind < 0 || static_cast<int>(shape->source(source).kind) == sourceKind;
        return isOfKind && (!rangeRecord || shape->rangeOf(target) == rangeRecord);
    });
}

void Controller::findSlotsOfTargets(const std::vector<int>& targets, std::vector<int>& out) const {
    collect(out, [&](int slot) {
        const int target = getTarget(slot);
        return target >= 0 && std::find(targets.begin(), targets.end(), target) != targets.end();
    });
}

void Controller::findSlotsOfTargetRange(int first, int count, std::vector<int>& out) const {
    collect(out, [=, this](int slot) {
        const int target = getTarget(slot);
        return target >= first && target < first + count;
    });
}

void Controller::findSlotsOfTarget(int target, std::vector<int>& out) const {
    findSlotsOfTargetRange(target, 1, out);
}

bool Controller::isValid(int slot) {
    return getSource(slot) >= 0 && getTarget(slot) >= 0 && !isBypassed(slot) && !closesLoop(slot);
}

bool Controller::closesLoop(int slot) {
    if (getSource(slot) < 0 || getTarget(slot) < 0) return false;
    findRoutes(0, slot + 1);
    return !isRouted(slot);
}

void Controller::findRoutes(int first, int last) noexcept CINDER_REALTIME {
    std::fill(routed.begin() + first, routed.end(), std::uint8_t{0});
    for (int slot = first; slot < last; ++slot) {
        const bool isRoute = getSource(slot) >= 0 && getTarget(slot) >= 0 && !dependsOnItself(slot);
        routed[static_cast<std::size_t>(slot)] = isRoute ? 1 : 0;
    }
}

bool Controller::dependsOnItself(int slot) noexcept CINDER_REALTIME {
    visited.clear();
    visitSlot(slot);
    for (int i = 0; i < visited.size(); ++i)  // which grows as it is walked
        visitTarget(visited[i]);
    return visited.contains(getTarget(slot));
}

void Controller::visitSlot(int slot) noexcept CINDER_REALTIME {
    visited.add(shape->levelTargetOf(slot));
    for (const int target : shape->source(getSource(slot)).ownTargets)
        visited.add(target);
}

void Controller::visitTarget(int target) noexcept CINDER_REALTIME {
    for (int slot = 0; slot < shape->slotCount; ++slot)
        if (isRouted(slot) && getTarget(slot) == target) visitSlot(slot);
}

}  // namespace cinder
