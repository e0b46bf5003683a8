#include "modulation/slots/SlotOperations.h"

#include <algorithm>
#include <utility>

namespace cinder::slots {

namespace {

using Controller = ModulationMatrix::Controller;

class UpdateBracket {
public:
    explicit UpdateBracket(Controller& controller) : controller(controller) {
        controller.beginUpdate();
    }
    ~UpdateBracket() { controller.endUpdate(); }
    UpdateBracket(const UpdateBracket&) = delete;
    UpdateBracket& operator=(const UpdateBracket&) = delete;

private:
    Controller& controller;
};

struct Fields {
    int source = -1, target = -1;
    bool bypassed = false, inverted = false;
    float level = 0.0f;

    bool operator==(const Fields&) const = default;
};

Fields read(const Controller& controller, int slot) {
    return {controller.getSource(slot), controller.getTarget(slot), controller.isBypassed(slot),
            controller.isInverted(slot), controller.getLevel(slot)};
}

/// Source and target come last, so that an empty slot sounds only when it is complete.
void write(Controller& controller, int slot, const Fields& next) {
    const Fields now = read(controller, slot);
    if (next.level != now.level) controller.setLevel(slot, next.level);
    if (next.bypassed != now.bypassed) controller.setBypassed(slot, next.bypassed);
    if (next.inverted != now.inverted) controller.setInverted(slot, next.inverted);
    if (next.source != now.source) controller.setSource(slot, next.source);
    if (next.target != now.target) controller.setTarget(slot, next.target);
}

/// A copy of all slots, in which they move as often as they like; each is written once.
class Arrangement {
public:
    explicit Arrangement(Controller& controller) : controller(controller) {
        for (int i = 0; i < controller.getShape().slotCount; ++i)
            slots.push_back(read(controller, i));
    }

    void swap(int a, int b) {
        std::swap(at(a), at(b));
        const int levelOfA = controller.getShape().levelTargetOf(a);
        const int levelOfB = controller.getShape().levelTargetOf(b);
        for (Fields& fields : slots)
            if (fields.target == levelOfA)
                fields.target = levelOfB;
            else if (fields.target == levelOfB)
                fields.target = levelOfA;
    }

    bool isBefore(int a, int b) {
        const auto key = [this](int slot) {
            // None is -1, and the largest of all without its sign.
            return std::pair(static_cast<unsigned>(at(slot).source),
                             static_cast<unsigned>(at(slot).target));
        };
        return key(a) < key(b);
    }

    void writeBack() {
        UpdateBracket bracket(controller);
        for (int i = 0; i < controller.getShape().slotCount; ++i)
            write(controller, i, at(i));
    }

private:
    Fields& at(int slot) { return slots[static_cast<std::size_t>(slot)]; }

    Controller& controller;
    std::vector<Fields> slots;
};

bool contains(const std::vector<int>& list, int slot) {
    return std::find(list.begin(), list.end(), slot) != list.end();
}

/// Target first, so that it is silent before anything else about it changes.
void clearFields(Controller& controller, int slot) {
    controller.setTarget(slot, -1);
    controller.setSource(slot, -1);
    controller.setBypassed(slot, false);
    controller.setInverted(slot, false);
    controller.setLevel(slot, 0.0f);
}

}  // namespace

int addSlot(Controller& controller, int source, int target) {
    UpdateBracket bracket(controller);
    const int slot = controller.findFreeSlot();
    if (slot >= 0) write(controller, slot, {source, target, false, false, controller.defaultLevel});
    return slot;
}

void copySlot(Controller& controller, int from, int to) {
    UpdateBracket bracket(controller);
    write(controller, to, read(controller, from));
}

void swapSlots(Controller& controller, int a, int b) {
    if (a == b) return;
    Arrangement arrangement(controller);
    arrangement.swap(a, b);
    arrangement.writeBack();
}

int sortSlots(Controller& controller, int count, int selected) {
    Arrangement arrangement(controller);
    bool hasMoved = false;
    for (int i = 1; i < count; ++i)
        for (int place = i; place > 0 && arrangement.isBefore(place, place - 1); --place) {
            arrangement.swap(place, place - 1);
            hasMoved = true;
            if (selected == place)
                --selected;
            else if (selected == place - 1)
                ++selected;
        }
    if (hasMoved) arrangement.writeBack();
    return selected;
}

void clearSlot(Controller& controller, int slot, std::vector<int>& out) {
    if (contains(out, slot)) return;
    UpdateBracket bracket(controller);
    std::vector<int> modulators;
    std::size_t next = out.size();
    out.push_back(slot);
    for (; next < out.size(); ++next) {  // which grows as it is walked
        const int cleared = out[next];
        clearFields(controller, cleared);
        controller.findSlotsOfTarget(controller.getShape().levelTargetOf(cleared), modulators);
        out.insert(out.end(), modulators.begin(), modulators.end());
    }
}

void clearTarget(Controller& controller, int target, std::vector<int>& out) {
    UpdateBracket bracket(controller);
    std::vector<int> found;
    controller.findSlotsOfTarget(target, found);
    for (const int slot : found)
        clearSlot(controller, slot, out);
}

void clearSource(Controller& controller, int source, std::vector<int>& out) {
    UpdateBracket bracket(controller);
    std::vector<int> found;
    controller.findSlotsOfSource(source, found);
    for (const int slot : found)
        clearSlot(controller, slot, out);
    for (const int target : controller.getShape().source(source).ownTargets)
        clearTarget(controller, target, out);
}

}  // namespace cinder::slots
