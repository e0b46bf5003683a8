#pragma once

#include <algorithm>
#include <set>
#include <vector>

#include "modulation/matrix/ModulationController.h"
#include "support/Rng.h"

namespace cinder::test {

/// The slots in plain containers, everything worked out anew by brute force when it is asked for.
struct SlotModel {
    struct Slot {
        int source = -1, target = -1;
        bool bypassed = false, inverted = false;
        float level = 0.0f;
    };

    const ModulationMatrixShape& shape;
    std::vector<Slot> slots = std::vector<Slot>(static_cast<std::size_t>(shape.slotCount));

    bool isConnected(const Slot& slot) const { return slot.source >= 0 && slot.target >= 0; }

    /// What a slot needs: its level and the controls of its source.
    std::set<int> needs(std::size_t slot) const {
        const auto& own = shape.source(slots[slot].source).ownTargets;
        std::set<int> needed(own.begin(), own.end());
        needed.insert(shape.levelTargetOf(static_cast<int>(slot)));
        return needed;
    }

    /// Slot by slot: one is routed unless what it moves comes back to it through those before.
    std::vector<bool> routed() const {
        std::vector<bool> result(slots.size());
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (!isConnected(slots[i])) continue;
            std::set<int> moved = {slots[i].target};
            for (std::size_t before = 0; before != moved.size();) {
                before = moved.size();
                for (std::size_t k = 0; k < i; ++k)
                    if (result[k] && meets(needs(k), moved)) moved.insert(slots[k].target);
            }
            result[i] = !meets(needs(i), moved);
        }
        return result;
    }
    std::vector<bool> active() const {
        std::vector<bool> result = routed();
        for (std::size_t i = 0; i < slots.size(); ++i)
            result[i] = result[i] && !slots[i].bypassed;
        return result;
    }

    /// What a level of 1 adds to the target when the source is 1.
    float depth(int slot, const std::vector<bool>& isActive) const {
        if (!isActive[static_cast<std::size_t>(slot)]) return 1.0f;
        const Slot& s = slots[static_cast<std::size_t>(slot)];
        float result = shape.rangeOf(s.target)->depthOf(shape.source(s.source).kind);
        if (s.target >= shape.firstSlotTarget)
            result *= depth(s.target - shape.firstSlotTarget, isActive);
        return s.inverted ? -result : result;
    }

    static bool meets(const std::set<int>& a, const std::set<int>& b) {
        return std::any_of(a.begin(), a.end(), [&](int x) { return b.count(x) > 0; });
    }
};

/// The operations that work for any keeper of slots, on the model.
class ModelController final : public ModulationMatrix::Controller {
public:
    explicit ModelController(SlotModel* model) : Controller(&model->shape), model(model) {}

    void beginUpdate() override {}
    void endUpdate() override {}
    bool isBypassed(int slot) const override { return at(slot).bypassed; }
    bool isInverted(int slot) const override { return at(slot).inverted; }
    float getLevel(int slot) const override { return at(slot).level; }
    int getSource(int slot) const override { return at(slot).source; }
    int getTarget(int slot) const override { return at(slot).target; }
    void setBypassed(int slot, bool bypassed) override { at(slot).bypassed = bypassed; }
    void setInverted(int slot, bool inverted) override { at(slot).inverted = inverted; }
    void setLevel(int slot, float level) override { at(slot).level = level; }
    void setSource(int slot, int source) override { at(slot).source = source; }
    void setTarget(int slot, int target) override { at(slot).target = target; }

private:
    SlotModel::Slot& at(int slot) const { return model->slots[static_cast<std::size_t>(slot)]; }

    SlotModel* const model;
};

/// A setting of one slot, the kind of change a parameter makes. Sources and targets are chosen such
/// that loops, levels of levels and empty slots are all common.
struct SlotChange {
    enum Kind { Source, Target, Bypassed, Inverted, Level, numKinds };
    int slot, kind;
    float value;

    static SlotChange random(Rng& rng, int numSlots) {
        const int slot = rng.integer(0, numSlots - 1), kind = rng.integer(0, numKinds - 1);
        switch (kind) {
            case Source:
                return {slot, kind, static_cast<float>(rng.integer(-1, numModulationSources - 1))};
            case Target:
                return {slot, kind, static_cast<float>(randomTarget(rng, numSlots))};
            case Level:
                return {slot, kind, static_cast<float>(rng.real(0.0, 1.0))};
            default:
                return {slot, kind, rng.integer(0, 3) == 0 ? 1.0f : 0.0f};
        }
    }
    static int randomTarget(Rng& rng, int numSlots) {
        switch (rng.integer(0, 4)) {
            case 0:
                return -1;
            case 1:
                return rng.integer(0, numModulationTargets - 1);
            case 2:
                return firstSlotTarget + rng.integer(0, numSlots - 1);
            default:
                return rng.integer(83, firstSlotTarget - 1);  // the sources' own
        }
    }
    void apply(ModulationMatrix::Controller& controller) const {
        switch (kind) {
            case Source:
                return controller.setSource(slot, static_cast<int>(value));
            case Target:
                return controller.setTarget(slot, static_cast<int>(value));
            case Bypassed:
                return controller.setBypassed(slot, value > 0.0f);
            case Inverted:
                return controller.setInverted(slot, value > 0.0f);
            default:
                return controller.setLevel(slot, value);
        }
    }
};

}  // namespace cinder::test
