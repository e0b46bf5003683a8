// How values get from any thread into the graph.
#include "params/AbstractPluginParameter.h"
#include "processor/frame/Channel.h"
#include "processor/frame/GenericPluginProcessor.h"

namespace cinder {

void GenericPluginProcessor::suspendParameterUpdates() noexcept CINDER_REALTIME {
    parameterUpdateSuspensions.fetch_add(1, std::memory_order_acq_rel);
}

void GenericPluginProcessor::resumeParameterUpdates() noexcept CINDER_REALTIME {
    parameterUpdateSuspensions.fetch_sub(1, std::memory_order_acq_rel);
}

void GenericPluginProcessor::setParameterValue(int index, float value,
                                               unsigned flags) noexcept CINDER_REALTIME {
    AbstractPluginParameter* const changed = getParameter(index);
    if (!changed) return;
    changed->storeValue(value);  // done already where the parameter itself is the caller
    parameterWillChange(index);
    queueParameterChange(static_cast<std::uint32_t>(index), changed->value());
    if (!(flags & AbstractPluginParameter::hostKnows) && adapter)
        adapter->parameterValueChanged(index);
}

void GenericPluginProcessor::requestDiscontinuity() noexcept CINDER_REALTIME {
    queueParameterChange(discontinuity, 0.0f);
}

void GenericPluginProcessor::queueParameterChange(std::uint32_t index,
                                                  float value) noexcept CINDER_REALTIME {
    if (!parameterQueue.push({index, value}))
        parameterChangeDropped.store(true, std::memory_order_release);
}

void GenericPluginProcessor::applyQueuedParameters() noexcept CINDER_REALTIME {
    const UpdateBracket bracket(forwarders);
    const auto mayApply = [this] {
        return parameterUpdateSuspensions.load(std::memory_order_acquire) == 0;
    };
    ParameterChange change{};
    // Asked again for each entry: a bulk change may begin while the queue is being emptied.
    while (mayApply() && parameterQueue.pop(change)) {
        if (change.index == discontinuity)
            environment->reset(wave::Environment::ResetMode::MarkOnly);
        else
            applyParameter(static_cast<int>(change.index), change.value);
    }
    if (mayApply() && parameterChangeDropped.load(std::memory_order_relaxed) &&
        parameterChangeDropped.exchange(false, std::memory_order_acquire))
        applyParameters();
}

void GenericPluginProcessor::applyParameters() noexcept CINDER_REALTIME {
    const UpdateBracket bracket(forwarders);
    for (int i = 0; i < getParameterCount(); ++i)
        applyParameter(i, getParameter(i)->value());
}

void GenericPluginProcessor::applyParameter(int index, float value) noexcept CINDER_REALTIME {
    AbstractPluginParameter* const changed = getParameter(index);
    changed->applyValue(value);
    // Two threads that set one parameter at a time may queue in another order than they stored.
    // The value that was stored last wins in the graph as well.
    const float newest = changed->value();
    if (newest != value) changed->applyValue(newest);
    respond(newest, changed);
    parameterChanged(index);
}

void GenericPluginProcessor::parameterWillChange(int) noexcept CINDER_REALTIME {}

void GenericPluginProcessor::parameterChanged(int index) noexcept CINDER_REALTIME {
    for (auto& channel : channels)
        channel->parameterChanged(index);
    const AbstractPluginParameter* const changed = getParameter(index);
    if (!changed) return;
    if (changed == midiStateParameter) {
        midiState = static_cast<std::int32_t>(changed->value());
        if (midiState == static_cast<std::int32_t>(MidiState::Disabled)) noteOff(0, 1.0f);
    }
    if (changed == bypassParameter)
        setBypass(static_cast<std::int32_t>(changed->value()) != 0, parameterBypassIndex);
}

}  // namespace cinder
