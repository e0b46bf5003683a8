#include "wave/Environment.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "wave/Producer.h"

namespace cinder::wave {

Environment::Environment() : zeroBlock(std::make_unique<BasicBlock<float>>(this)) {}

Environment::~Environment() = default;

void Environment::render(int numSamples, unsigned flags) noexcept CINDER_REALTIME {
    if (!(flags & skipCycle)) {
        // A sink may switch others on and off while it runs; the index goes with them.
        for (nextSink = 0; nextSink < sinks.size();)
            sinks[nextSink++]->visitAsSink(numSamples);
    }
    position += static_cast<std::uint64_t>(numSamples);
}

void Environment::reset(ResetMode mode) noexcept CINDER_REALTIME {
    resetPosition = position;
    if (mode == ResetMode::MarkOnly) return;
    hardResetPosition = position;
    for (Producer* producer : resettables) {
        if (mode == ResetMode::All)
            producer->reset();
        else
            producer->resetIfActive();
    }
}

void Environment::setSampleRate(float rate) {
    if (!std::isfinite(rate) || rate <= 0.0f) return;
    const bool changed = std::abs(rate - sampleRate) > sameValue;
    sampleRate = rate;
    if (!changed) return;
    reset(ResetMode::All);
    sampleRateChanged.fire(this);
}

void Environment::registerProducer() {
    const auto needed = static_cast<std::size_t>(++producerCount);
    for (auto* list : {&sinks, &resettables})
        if (list->capacity() < needed) list->reserve(needed * 2);
}

void Environment::addSink(Producer* producer, unsigned priority) noexcept CINDER_REALTIME {
    std::size_t place = sinks.size();
    if (priority == 0) {
        place = 0;
        ++firstPriorityCount;
    } else if (priority == 1) {
        place = static_cast<std::size_t>(firstPriorityCount);
    }
    sinks.insert(sinks.begin() + static_cast<std::ptrdiff_t>(place), producer);
    // One of priority 0 that comes while sinks run waits for the next cycle: it may be back after
    // its own turn.
    if (place < nextSink || priority == 0) ++nextSink;
}

void Environment::removeSink(Producer* producer) noexcept CINDER_REALTIME {
    const auto next = sinks.begin() + static_cast<std::ptrdiff_t>(nextSink);
    nextSink -= static_cast<std::size_t>(std::count(sinks.begin(), next, producer));
    const auto removed = std::erase(sinks, producer);
    if (producer->getRenderPriority() == 0) firstPriorityCount -= static_cast<int>(removed);
}

}  // namespace cinder::wave
