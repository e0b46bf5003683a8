#include "modulation/matrix/ModulationMatrix.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "modulation/matrix/GlobalModulationProducer.h"
#include "modulation/matrix/InternalController.h"

namespace cinder {

namespace {

/// Written so that a NaN ends at the minimum.
float limited(float value, float minimum, float maximum) {
    if (!(value >= minimum)) return minimum;
    return value > maximum ? maximum : value;
}

}  // namespace

ModulationMatrix::Target::Target(wave::Environment* environment, int index,
                                 const ModulationTargetRange* range)
    : index(index),
      range(range),
      maximum(range ? range->maximum : 1.0f),
      minimum(range ? range->minimum : 0.0f),
      clampMaximum(maximum),
      clampMinimum(minimum),
      value(limited(0.0f, minimum, maximum)),
      base(environment, value, minimum, maximum) {
    setScale(1.0f);
}

bool ModulationMatrix::Target::hasActiveSlot() const noexcept CINDER_REALTIME {
    return std::any_of(slots.begin(), slots.end(),
                       [](const Slot* slot) { return slot->isActive(); });
}

void ModulationMatrix::Target::setValue(float newValue) noexcept CINDER_REALTIME {
    value = limited(newValue, minimum, maximum);
    base.setValue(value * scale, wave::FloatParameter::automaticRamp);
    if (secondaryTarget) secondaryTarget->targetChanged();
}

void ModulationMatrix::Target::setScale(float newScale) noexcept CINDER_REALTIME {
    scale = newScale;
    clampMaximum = scale * maximum;
    clampMinimum = scale * minimum;
    if (!(scale > 0.0f)) std::swap(clampMaximum, clampMinimum);
    const float size = std::abs(scale);
    base.setRange(clampMinimum, clampMaximum, range ? range->span * size : 0.0f);
    base.wrapPeriod = range ? range->period * size : 0.0f;
    base.finishRamp();  // a goal of 0 stays, but the way there would be one of the old scale
    base.setValue(value * scale, 0.0f);
    if (secondaryTarget) secondaryTarget->targetChanged();
}

ModulationMatrix::ModulationMatrix(wave::Environment* environment, ModulationMatrixShape* shape)
    : Component(environment), shape(shape) {
    const auto slotCount = static_cast<std::size_t>(shape->slotCount);
    sources.resize(shape->sources.size() * static_cast<std::size_t>(shape->variantCount));
    for (int i = 0; i < shape->slotCount; ++i)
        slots.emplace_back(i, shape->levelTargetOf(i));
    for (int i = 0; i < shape->targetCount; ++i) {
        Target& target = targets.emplace_back(environment, i, shape->rangeOf(i));
        target.slots.reserve(slotCount);  // so that no attachment allocates
        targetProducers.push_back(std::make_unique<GlobalModulationProducer>(this, &target));
    }
    targetControllers.resize(targets.size());
    for (Slot& slot : slots)
        targetAt(slot.levelTarget).levelOfSlot = &slot;
    sourceBlocks.resize(slotCount);
    levelBlocks.resize(slotCount);
    controller = std::make_unique<InternalController>(this);
}

ModulationMatrix::~ModulationMatrix() = default;

ModulationMatrix::Controller& ModulationMatrix::getController() {
    return *controller;
}

void ModulationMatrix::setSource(int source, wave::Producer* producer) {
    for (int variant = 0; variant < shape->variantCount; ++variant)
        setSourceVariant(source, variant, producer);
}

void ModulationMatrix::setSourceVariant(int source, int variant, wave::Producer* producer) {
    sources[static_cast<std::size_t>(source + variant * shape->sourceCount())] = producer;
}

void ModulationMatrix::setSecondaryTarget(int target, SecondaryTarget* secondary) {
    targetAt(target).secondaryTarget = secondary;
}

ModulationMatrix::GlobalTargetController* ModulationMatrix::getTargetController(int target) {
    const auto place = static_cast<std::size_t>(target);
    auto& made = targetControllers[place];
    if (!made)
        made = std::make_unique<GlobalTargetController>(targetProducers[place].get(),
                                                        &targetAt(target));
    return made.get();
}

void ModulationMatrix::setTargetValue(int target, float value) noexcept CINDER_REALTIME {
    targetAt(target).setValue(value);
}

void ModulationMatrix::setSourceKind(int source, SourceKind kind) noexcept CINDER_REALTIME {
    shape->sources[static_cast<std::size_t>(source)].kind = kind;
    for (Slot& slot : slots)
        if (slot.source == source) updateLevel(slot);
}

void ModulationMatrix::setSlotBypassed(int slot, bool bypassed) noexcept CINDER_REALTIME {
    slotAt(slot).bypassed = bypassed;
    refresh(slotAt(slot));
}

void ModulationMatrix::setSlotInverted(int slot, bool inverted) noexcept CINDER_REALTIME {
    slotAt(slot).inverted = inverted;
    updateLevel(slotAt(slot));
}

void ModulationMatrix::setSlotSource(int slot, int source) noexcept CINDER_REALTIME {
    Slot& changed = slotAt(slot);
    changed.source = source;
    if (changed.target >= 0) routingChanged(changed);  // half a slot decides nothing
}

void ModulationMatrix::setSlotTarget(int slot, int target) noexcept CINDER_REALTIME {
    Slot& changed = slotAt(slot);
    if (changed.target >= 0) std::erase(targetAt(changed.target).slots, &changed);
    changed.target = target;
    if (target >= 0) {
        // In the order of the slots, so that the sum has the same bits whichever came first.
        auto& list = targetAt(target).slots;
        list.insert(std::upper_bound(list.begin(), list.end(), &changed), &changed);
    }
    if (changed.source >= 0) routingChanged(changed);
}

wave::Producer* ModulationMatrix::producerOf(const Slot& slot,
                                             const Target& target) const noexcept CINDER_REALTIME {
    if (!slot.isActive()) return nullptr;
    const bool isSecond =
        target.range && target.range->usesSecondVariant && shape->variantCount > 1;
    return sources[static_cast<std::size_t>(slot.source + (isSecond ? shape->sourceCount() : 0))];
}

wave::Producer* ModulationMatrix::levelOf(const Slot& slot) const noexcept CINDER_REALTIME {
    return targetProducers[static_cast<std::size_t>(slot.levelTarget)].get();
}

bool ModulationMatrix::isInForce(const Slot& slot) const noexcept CINDER_REALTIME {
    return controller->isRouted(slot.index) && !slot.bypassed;
}

/// A slot that comes into force, or goes out of it, may decide about any that stand behind it.
void ModulationMatrix::routingChanged(Slot& changed) noexcept CINDER_REALTIME {
    controller->routingChanged(changed.index);
    const auto first = slots.begin() + changed.index;
    // First those that leave: with them and the new ones there might be a loop.
    for (auto slot = first; slot != slots.end(); ++slot)
        if (!isInForce(*slot)) slot->state = Slot::State::Inactive;
    for (auto slot = first; slot != slots.end(); ++slot)
        refresh(*slot);
}

void ModulationMatrix::refresh(Slot& slot) noexcept CINDER_REALTIME {
    slot.state = isInForce(slot) ? Slot::State::Active : Slot::State::Inactive;
    updateLevel(slot);
}

void ModulationMatrix::updateLevel(Slot& slot) noexcept CINDER_REALTIME {
    float depth = 1.0f;  // of a slot that is not heard
    if (slot.isActive()) {
        const Target& target = targetAt(slot.target);
        if (target.range) depth = target.range->depthOf(shape->source(slot.source).kind);
        depth *= slot.inverted ? -target.scale : target.scale;
    }
    Target& level = targetAt(slot.levelTarget);
    if (level.scale == depth) return;
    level.setScale(depth);
    // No loop is active, and each slot has one target: this visits every slot once at most.
    for (Slot* modulator : level.slots)
        if (modulator->isActive()) updateLevel(*modulator);
}

}  // namespace cinder
