#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "modulation/matrix/ModulationMatrixShape.h"
#include "wave/FloatParameter.h"

namespace cinder {

/// Any source drives any target through a slot, and a slot's level is a target as well:
///
///     target = clamp(base + the sum over its active slots of source * level of the slot)
///
/// in the target's own units, at the sample rate. What a target needs is rendered when it is
/// pulled, so sources that modulate each other need no schedule. A cycle would never end: a slot
/// that closes one is left out (see Controller).
///
/// Shape   a block of up to maxBlockSize samples a target; the base block by pointer where no slot
///         is active, one sample spread over the block where base, sources and levels stand still
/// Range   clamped to the target's limits as a whole; a source that is not a number gives the
///         lower limit
/// State   slots and base values; it depends on the settings, not on the order they came in
/// Errors  none: an index of -1 is no source and no target, and a slot without one is inactive
///
/// Nothing but the construction and `getTargetController` allocates.
class ModulationMatrix final : public wave::Component {
public:
    struct Slot;
    struct Target;
    class SecondaryTarget;
    class GlobalModulationProducer;
    class GlobalTargetController;
    class Controller;
    class InternalController;

    /// The shape is not owned, and lives longer.
    ModulationMatrix(wave::Environment* environment, ModulationMatrixShape* shape);
    ~ModulationMatrix();
    ModulationMatrix(const ModulationMatrix&) = delete;
    ModulationMatrix& operator=(const ModulationMatrix&) = delete;

    // Wiring, before audio runs.

    /// The producer of all variants of a source, not owned.
    void setSource(int source, wave::Producer* producer);
    void setSourceVariant(int source, int variant, wave::Producer* producer);
    /// Told of every change of the target's base value.
    void setSecondaryTarget(int target, SecondaryTarget* secondary);
    /// What the signal path connects to. Made on first use.
    GlobalTargetController* getTargetController(int target);

    // Settings. [audio]

    /// The base value in target units; it goes there on the automatic ramp.
    void setTargetValue(int target, float value) noexcept CINDER_REALTIME;
    /// The depths of the source's slots follow its kind.
    void setSourceKind(int source, SourceKind kind) noexcept CINDER_REALTIME;
    void setSlotBypassed(int slot, bool bypassed) noexcept CINDER_REALTIME;
    void setSlotInverted(int slot, bool inverted) noexcept CINDER_REALTIME;
    void setSlotSource(int slot, int source) noexcept CINDER_REALTIME;  ///< -1: none
    void setSlotTarget(int slot, int target) noexcept CINDER_REALTIME;  ///< -1: none

    /// The slots as the rest of the system handles them.
    Controller& getController();
    const ModulationMatrixShape& getShape() const { return *shape; }
    const Slot& getSlot(int index) const;
    const Target& getTarget(int index) const;

private:
    Slot& slotAt(int index);
    Target& targetAt(int index);
    /// Null for an inactive slot, and where nothing has been wired.
    wave::Producer* producerOf(const Slot& slot,
                               const Target& target) const noexcept CINDER_REALTIME;
    wave::Producer* levelOf(const Slot& slot) const noexcept CINDER_REALTIME;
    bool isInForce(const Slot& slot) const noexcept CINDER_REALTIME;
    void routingChanged(Slot& changed) noexcept CINDER_REALTIME;
    void refresh(Slot& slot) noexcept CINDER_REALTIME;
    void updateLevel(Slot& slot) noexcept CINDER_REALTIME;

    ModulationMatrixShape* const shape;
    std::unique_ptr<InternalController> controller;
    std::vector<wave::Producer*> sources;  // variant by variant
    std::vector<Slot> slots;
    std::deque<Target> targets;  // which don't move
    std::vector<std::unique_ptr<GlobalModulationProducer>> targetProducers;
    std::vector<std::unique_ptr<GlobalTargetController>> targetControllers;
    std::vector<const float*> sourceBlocks, levelBlocks;  // scratch of one producer's render
};

/// One connection. Only `ModulationMatrix` changes it.
struct ModulationMatrix::Slot {
    enum class State : std::int32_t { Inactive = 0, Active = 1 };

    explicit Slot(int index, int levelTarget) : index(index), levelTarget(levelTarget) {}
    bool isActive() const { return state == State::Active; }

    int index;
    int levelTarget;  // carries this slot's level
    bool inverted = false;
    bool bypassed = false;
    int source = -1;
    int target = -1;
    State state = State::Inactive;
};

/// What can be modulated. Only `ModulationMatrix` changes it.
struct ModulationMatrix::Target {
    Target(wave::Environment* environment, int index, const ModulationTargetRange* range);

    bool hasActiveSlot() const noexcept CINDER_REALTIME;
    void setValue(float newValue) noexcept CINDER_REALTIME;
    /// A new multiplier: limits and value change at once.
    void setScale(float newScale) noexcept CINDER_REALTIME;

    int index;
    const ModulationTargetRange* range;  // null: 0..1
    std::vector<Slot*> slots;     // aimed at this target, ascending; has room for all there are
    Slot* levelOfSlot = nullptr;  // the slot whose level this is
    SecondaryTarget* secondaryTarget = nullptr;
    float maximum, minimum;            // of the value
    float clampMaximum, clampMinimum;  // of the result: those times the scale
    float scale = 1.0f;                // an active slot's depth for its level, otherwise 1
    float value;                       // as last given, in target units, before the scale
    wave::FloatParameter base;         // smoothed, value * scale
};

class ModulationMatrix::SecondaryTarget {
public:
    /// The base value of a target that this one listens to has a new goal. [audio]
    virtual void targetChanged() noexcept CINDER_REALTIME = 0;

protected:
    ~SecondaryTarget() = default;
};

// Here, where the elements are complete.

inline const ModulationMatrix::Slot& ModulationMatrix::getSlot(int index) const {
    return slots[static_cast<std::size_t>(index)];
}

inline ModulationMatrix::Slot& ModulationMatrix::slotAt(int index) {
    return slots[static_cast<std::size_t>(index)];
}

inline const ModulationMatrix::Target& ModulationMatrix::getTarget(int index) const {
    return targets[static_cast<std::size_t>(index)];
}

inline ModulationMatrix::Target& ModulationMatrix::targetAt(int index) {
    return targets[static_cast<std::size_t>(index)];
}

}  // namespace cinder
