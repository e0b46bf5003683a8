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
        // By index: a sink may switch another one off while it runs.
        for (std::size_t i = 0; i < sinks.size(); ++i)
            sinks[i]->visitAsSink(numSamples);
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
    if (priority == 0) {
        sinks.insert(sinks.begin(), producer);
        ++firstPriorityCount;
    } else if (priority == 1) {
        sinks.insert(sinks.begin() + firstPriorityCount, producer);
    } else {
        sinks.push_back(producer);
    }
}

void Environment::removeSink(Producer* producer) noexcept CINDER_REALTIME {
    const auto removed = std::erase(sinks, producer);
    if (producer->getRenderPriority() == 0) firstPriorityCount -= static_cast<int>(removed);
}

}  // namespace cinder::wave
