#include "host/UnifiedPluginAdapter.h"

#include <istream>
#include <utility>

#include "params/AbstractPluginParameter.h"
#include "state/BinaryData.h"

namespace cinder {

UnifiedPluginAdapter::UnifiedPluginAdapter() : lock(CriticalSection::create()) {}

/// The lock goes last: the others may be left while they go.
UnifiedPluginAdapter::~UnifiedPluginAdapter() {
    if (processor) {
        processor->getEnvironment()->beginShutdown();
        processor->setAdapter(nullptr);
    }
    if (plugin) plugin->setAdapter(nullptr);
    plugin.reset();
    processor.reset();
}

void UnifiedPluginAdapter::setHalves(std::unique_ptr<GenericPlugin> newPlugin,
                                     std::unique_ptr<GenericPluginProcessor> newProcessor) {
    plugin = std::move(newPlugin);
    processor = std::move(newProcessor);
    plugin->setAdapter(this);
}

void UnifiedPluginAdapter::start() {
    const ScopedLock inside(*lock);
    processor->setAdapter(this);
    processor->getEnvironment()->setSampleRate(plugin->getSampleRate());
    copyControllerMap();
    syncProcessor(false);
}

void UnifiedPluginAdapter::copyControllerMap() {
    std::stringstream stream;
    BinaryDataWriter writer(stream);
    plugin->getControllerMapping().write(writer);
    BinaryDataReader reader(stream);
    processor->getControllerMapping().read(reader);
}

void UnifiedPluginAdapter::syncProcessor(bool discontinuity) {
    bool isNew = false;
    processor->suspendParameterUpdates();
    for (int id = 0; id < plugin->parameterCount(); ++id) {
        AbstractPluginParameter& parameter = *processor->getParameter(id);
        const float before = parameter.value();
        parameter.setValue(plugin->parameter(id)->value(), AbstractPluginParameter::hostKnows);
        isNew = isNew || parameter.value() != before;
    }
    // A state that has come here by another way must not cut short what has begun since.
    if (discontinuity && isNew) processor->requestDiscontinuity();
    processor->resumeParameterUpdates();
}

void UnifiedPluginAdapter::controllerMapChanged() {
    const ScopedLock inside(*lock);
    copyControllerMap();
}

void UnifiedPluginAdapter::sendMidiMessage(const MidiEvent& event) {
    const ScopedLock inside(*lock);
    processor->enqueueMidiEvent(event);
}

void UnifiedPluginAdapter::parameterChanged(int id, bool refresh) {
    const ScopedLock inside(*lock);
    if (id >= 0) return setHostParameter(id, plugin->parameter(id)->value());
    syncProcessor(refresh);
    for (int i = 0; i < plugin->parameterCount(); ++i)
        setHostParameter(i, plugin->parameter(i)->value());
}

bool UnifiedPluginAdapter::readPluginSections(std::istream& stream) {
    const ParameterStateResult values = plugin->readParameters(stream);
    // The plug-in may only have left word for the thread of the interface, which may not look
    // before the next block is rendered, or wait for a bracket that another thread has open.
    if (values.applied) {
        const ScopedLock inside(*lock);
        syncProcessor(true);
    }
    return values.good && plugin->readPluginState(stream);
}

void UnifiedPluginAdapter::transferRealtimeData(unsigned /*elapsedMs*/) {
    const ScopedLock inside(*lock);
    RealtimeCopies& copies = plugin->getRealtimeCopies();
    for (int i = 0; i < copies.levelCount(); ++i)
        processor->resetLevels(i, copies.level(i).takeRequests());
    transferStream.clear();
    transferStream.seekp(0);
    BinaryDataWriter writer(transferStream);
    processor->writeRealtimeData(writer);
    transferStream.seekg(0);
    BinaryDataReader reader(transferStream);
    plugin->receiveRealtimeData(reader);
}

void UnifiedPluginAdapter::programChanged(int bank, int program) noexcept CINDER_REALTIME {
    plugin->programChanged(bank, program);
}

void UnifiedPluginAdapter::midiProcessed(int lastController) noexcept CINDER_REALTIME {
    plugin->notify(GenericPlugin::controllerNotification, static_cast<unsigned>(lastController));
}

void UnifiedPluginAdapter::parameterValueChanged(int index) noexcept CINDER_REALTIME {
    setHostParameter(index, processor->getParameter(index)->value());
}

}  // namespace cinder
