// Who hears of a change, and on which thread.
#include <chrono>
#include <thread>

#include "params/AbstractPluginParameter.h"
#include "plugin/GenericPlugin.h"

namespace cinder {
namespace {

constexpr int programBits = 8;

}  // namespace

void GenericPlugin::parameterChanged(int id, float value, unsigned flags) {
    parameter(id)->applyValue(value);
    parameterValueApplied(id);
    currentPreset.setModified(true);
    const bool hostKnows = (flags & AbstractPluginParameter::hostKnows) != 0;
    if (brackets.add(hostKnows ? UpdateBrackets::forListener
                               : UpdateBrackets::forListener | UpdateBrackets::forHost))
        return;
    if (!hostKnows) notifyHost(id, false);
    notify(valueNotification, static_cast<unsigned>(id));
}

/// A new state goes to the host even if the host brought it: only the adapter brings it to the
/// processor.
void GenericPlugin::endUpdate() {
    const std::uint32_t waiting = brackets.end();
    if ((waiting & UpdateBrackets::forListener) == 0) return;
    const bool refresh = (waiting & UpdateBrackets::asNewState) != 0;
    if (refresh || (waiting & UpdateBrackets::forHost) != 0) notifyHost(-1, refresh);
    notify(valueNotification, static_cast<unsigned>(-1));
}

void GenericPlugin::notifyHost(int id, bool refresh) {
    if (!adapter) return;
    if (interfaceThread.isCurrent() || !interfaceThread.hasQueue())
        adapter->parameterChanged(id, refresh);
    else
        interfaceThread.post(parameterEvent, id == -1 && refresh ? refreshAll : id);
}

void GenericPlugin::setLatency(std::int32_t samples) {
    if (latency.exchange(samples) == samples || !adapter) return;
    if (interfaceThread.isCurrent() || !interfaceThread.hasQueue())
        adapter->latencyChanged();
    else
        interfaceThread.post(latencyEvent, 0);
}

void GenericPlugin::programChanged(int bank, int program) noexcept CINDER_REALTIME {
    if (!shared->settings.midiProgramChangesEnabled()) return;
    if (interfaceThread.hasQueue())
        interfaceThread.leaveLatest(programEvent, (bank << programBits) | program);
    else
        loadProgram(bank, program);
}

void GenericPlugin::handleQueuedEvent(int event, int argument) {
    if (event == programEvent)
        return loadProgram(argument >> programBits, argument & ((1 << programBits) - 1));
    if (!adapter) return;
    if (event == latencyEvent) adapter->latencyChanged();
    if (event != parameterEvent) return;
    if (argument == refreshAll)
        adapter->parameterChanged(-1, true);
    else if (argument >= -1 && argument < parameterCount())
        adapter->parameterChanged(argument, false);
}

void GenericPlugin::notify(int code, unsigned value) noexcept CINDER_REALTIME {
    // In this order: who waits for the calls to end has changed the listener before.
    ++listenerCalls;
    if (Listener* const open = listener) open->notify(code, value);
    --listenerCalls;
}

void GenericPlugin::attachListener(Listener* newListener) {
    if (newListener && interfaceThread.moveHere()) {
        interfaceThread.post(latencyEvent, 0);
        interfaceThread.post(parameterEvent, refreshAll);
    }
    listener = newListener;
    realtime->discardMidiEvents();
    while (listenerCalls != 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

}  // namespace cinder
