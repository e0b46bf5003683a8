#pragma once

#include <cstdint>
#include <vector>

#include "core/Property.h"
#include "modulation/matrix/ModulationMatrix.h"
#include "modulation/matrix/VisitedTargets.h"

namespace cinder {

/// The slots, wherever they are kept: in the matrix of the processing half, or in the parameters of
/// the half that has no matrix. Both answer alike, since both walk the same routing.
///
/// A slot is valid if it has source and target, is not bypassed, and closes no loop. It depends on
/// its own level and on the targets that its source owns, and on all that the slots depend on which
/// are aimed at those, and so on; it closes a loop if its own target is among them. Slots are taken
/// in their order, and one that closes a loop takes no part in the walks of those behind it: where
/// slots modulate each other in a circle the last of them is left out and the others stay. Bypass
/// has no part in it, so switching one slot on or off never switches another.
class ModulationMatrix::Controller {
public:
    explicit Controller(const ModulationMatrixShape* shape);
    virtual ~Controller() = default;
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;

    /// Opens a bracket: the changes up to `endUpdate` count as one.
    virtual void beginUpdate() = 0;
    /// The first slot with neither source nor target; if there is none, the first that is not
    /// valid; else -1.
    virtual int findFreeSlot();
    virtual void endUpdate() = 0;

    virtual bool isBypassed(int slot) const = 0;
    virtual bool isInverted(int slot) const = 0;
    virtual float getLevel(int slot) const = 0;  ///< in target units
    virtual int getSource(int slot) const = 0;   ///< -1 for none
    virtual int getTarget(int slot) const = 0;   ///< -1 for none

    // `out` ends up with the slots found, ascending.

    virtual void findSlotsOfSources(int first, int count, std::vector<int>& out) const;
    virtual void findSlotsOfSource(int source, std::vector<int>& out) const;
    /// Slots with both ends set. -1 for the kind, and null for the record, match all.
    virtual void findSlotsOfKinds(int sourceKind, const ModulationTargetRange* rangeRecord,
                                  std::vector<int>& out) const;
    virtual void findSlotsOfTargets(const std::vector<int>& targets, std::vector<int>& out) const;
    virtual void findSlotsOfTargetRange(int first, int count, std::vector<int>& out) const;
    virtual void findSlotsOfTarget(int target, std::vector<int>& out) const;

    virtual void setBypassed(int slot, bool bypassed) = 0;
    virtual void setInverted(int slot, bool inverted) = 0;
    virtual void setLevel(int slot, float level) = 0;
    virtual void setSource(int slot, int source) = 0;
    virtual void setTarget(int slot, int target) = 0;

    /// Whether the slot has an effect.
    virtual bool isValid(int slot);
    /// Whether the slot has both ends and is left out for a loop that it would close.
    virtual bool closesLoop(int slot);

    const ModulationMatrixShape& getShape() const { return *shape; }

    Property<float> defaultLevel{0.5f};

protected:
    /// One step of the walk: adds what the slots aimed at `target` depend on, of those that are
    /// routed.
    virtual void visitTarget(int target) noexcept CINDER_REALTIME;

    /// Settles which of the slots first..last - 1 are routed. Those below are known.
    void findRoutes(int first, int last) noexcept CINDER_REALTIME;
    bool isRouted(int slot) const { return routed[static_cast<std::size_t>(slot)] != 0; }
    void visitSlot(int slot) noexcept CINDER_REALTIME;

private:
    bool dependsOnItself(int slot) noexcept CINDER_REALTIME;
    template <class Predicate>
    void collect(std::vector<int>& out, Predicate matches) const;

    const ModulationMatrixShape* const shape;
    VisitedTargets visited;
    std::vector<std::uint8_t> routed;  // both ends set, and no loop closed
};

}  // namespace cinder
