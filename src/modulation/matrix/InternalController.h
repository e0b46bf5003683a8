#pragma once

#include "modulation/matrix/ModulationController.h"

namespace cinder {

/// The slots as the matrix keeps them. Setters are the matrix' own; brackets do nothing.
class ModulationMatrix::InternalController final : public ModulationMatrix::Controller {
public:
    explicit InternalController(ModulationMatrix* matrix)
        : Controller(matrix->shape), matrix(matrix) {}

    void beginUpdate() override {}
    void endUpdate() override {}

    bool isBypassed(int slot) const override { return matrix->getSlot(slot).bypassed; }
    bool isInverted(int slot) const override { return matrix->getSlot(slot).inverted; }
    float getLevel(int slot) const override {
        return matrix->getTarget(matrix->getSlot(slot).levelTarget).value;
    }
    int getSource(int slot) const override { return matrix->getSlot(slot).source; }
    int getTarget(int slot) const override { return matrix->getSlot(slot).target; }

    void findSlotsOfTargets(const std::vector<int>& targets, std::vector<int>& out) const override;
    void findSlotsOfTarget(int target, std::vector<int>& out) const override;

    void setBypassed(int slot, bool bypassed) override { matrix->setSlotBypassed(slot, bypassed); }
    void setInverted(int slot, bool inverted) override { matrix->setSlotInverted(slot, inverted); }
    void setLevel(int slot, float level) override {
        matrix->setTargetValue(matrix->getSlot(slot).levelTarget, level);
    }
    void setSource(int slot, int source) override { matrix->setSlotSource(slot, source); }
    void setTarget(int slot, int target) override { matrix->setSlotTarget(slot, target); }

    bool isValid(int slot) override { return matrix->getSlot(slot).isActive(); }
    bool closesLoop(int slot) override {
        return getSource(slot) >= 0 && getTarget(slot) >= 0 && !isRouted(slot);
    }

    /// For the matrix: the routing of this slot has changed. Those before it are as they were.
    void routingChanged(int slot) noexcept CINDER_REALTIME {
        findRoutes(slot, getShape().slotCount);
    }
    using Controller::isRouted;

protected:
    void visitTarget(int target) noexcept CINDER_REALTIME override;

private:
    ModulationMatrix* const matrix;
};

}  // namespace cinder
