#include "plugin/GenericPlugin.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "midi/ControllerMapFile.h"
#include "params/AbstractPluginParameter.h"
#include "presets/files/Paths.h"

namespace cinder {

GenericPlugin::GenericPlugin(std::int32_t channelLayout, std::uint32_t features,
                             RealtimeCounts realtimeCounts)
    : GenericPluginBase(channelLayout, features, &parameterCollection.parameters),
      interfaceThread([this](int event, int argument) { handleQueuedEvent(event, argument); }) {
    this->realtimeCounts = realtimeCounts;
    parameterCollection.owner = this;
    interfaceDefaults.owner = this;
}

GenericPlugin::~GenericPlugin() {
    const ScopedLock inside(instanceLock());
    if (shared)
        shared->controllerMapping.changed().removeHandler(
            *NotifyEvent::makeHandler(this, &GenericPlugin::controllerMappingChanged));
    std::erase(instances, this);
    if (instances.empty()) sharedObjects.reset();
}

void GenericPlugin::init(const std::string& productName) {
    const ScopedLock inside(instanceLock());
    const bool isFirst = instances.empty();
    if (isFirst)
        createSharedObjects(productName);
    else
        shared = sharedObjects.get();
    settings = createSettings();
    if (isFirst)
        setUpFirstInstance();
    else
        readSettings();
    settings->live = true;
    shared->settings.live = true;
    shared->controllerMapping.changed().addHandler(
        NotifyEvent::makeHandler(this, &GenericPlugin::controllerMappingChanged));
    instances.insert(instances.begin(), this);
    if (features & isNamedAfterTrack) updateInstanceName("");
    componentCollections.resize(static_cast<std::size_t>(shared->componentKindCount()));
    realtime = std::make_unique<RealtimeCopies>(realtimeCounts, getChannelCount(),
                                                (features & keepsMidiQueue) != 0);
}

void GenericPlugin::createSharedObjects(const std::string& productName) {
    sharedObjects =
        std::make_unique<SharedObjects>(VersionInfo(productName, productVersion()),
                                        presetExtension(), (features & hasOneStateChunk) != 0);
    shared = sharedObjects.get();
}

void GenericPlugin::setUpFirstInstance() {
    if (!readControllerMap()) loadControllerMapDefaults();
    readSettings();
    if (shared->running.isFirstRun) writeSettings();
    const PresetManager& presets = shared->presets;  // one cut short may hold more than it shows
    if (presets.isEmpty() && !presets.isCutShort()) installFactoryFiles(false);
}

std::unique_ptr<Settings> GenericPlugin::createSettings() {
    InterfaceShape shape;
    shape.isResizable = isInterfaceResizable();
    return std::make_unique<Settings>(shared->productKey(), shape);
}

int GenericPlugin::instanceCount() {
    const ScopedLock inside(instanceLock());
    return static_cast<int>(instances.size());
}

void GenericPlugin::addComponentCollections(int kind, int count) {
    auto& collections = componentCollections.at(static_cast<std::size_t>(kind));
    collections.resize(static_cast<std::size_t>(count));
    for (ParameterCollection& collection : collections)
        collection.owner = this;
}

ParameterCollection* GenericPlugin::componentCollection(int kind, int index) {
    if (kind < 0 || kind >= static_cast<int>(componentCollections.size())) return nullptr;
    auto& collections = componentCollections[static_cast<std::size_t>(kind)];
    if (index < 0 || index >= static_cast<int>(collections.size())) return nullptr;
    return &collections[static_cast<std::size_t>(index)];
}

void GenericPlugin::setSampleRate(float rate) {
    if (!std::isfinite(rate) || rate <= 0.0f) return;
    if (std::abs(rate - sampleRate) <= sameValue) return;
    sampleRate = rate;
    realtime->setSampleRate(rate);
    updateLatency();
}

void GenericPlugin::receiveRealtimeData(BinaryDataReader& reader) {
    ++listenerCalls;
    Listener* const open = listener;
    CriticalSection* const guard = open ? open->realtimeDataLock() : nullptr;
    if (guard) guard->enter();
    readRealtimeData(reader);
    if (guard) guard->leave();
    --listenerCalls;
}

bool GenericPlugin::readRealtimeData(BinaryDataReader& reader) {
    return realtime->read(reader);
}

void GenericPlugin::receiveMidiMessage(const MidiEvent& event) noexcept CINDER_REALTIME {
    if (adapter) adapter->sendMidiMessage(event);
}

void GenericPlugin::pushUndo(int parameterId) {
    undoHistory.commit();
    const auto& kept = interfaceDefaults.parameters;
    const bool isKept = std::ranges::any_of(
        kept, [&](const auto* parameter) { return parameter->getId() == parameterId; });
    if (isKept) saveInterfaceDefault(parameterId);
}

void GenericPlugin::stateRestored(bool fileChanged) {
    if (fileChanged) presetIsNew();
    notify(stateNotification, 0);
}

void GenericPlugin::loadControllerMapDefaults() {
    const ScopedLock inside(instanceLock());
    shared->controllerMapping.clear();
}

bool GenericPlugin::readControllerMap() {
    const ScopedLock inside(instanceLock());
    return readControllerMapFile(nativePath(shared->controllerMapPath()),
                                 shared->controllerMapping);
}

void GenericPlugin::assignController(int controller, std::int32_t target) {
    const ScopedLock inside(instanceLock());
    shared->controllerMapping.assign(controller, target);
}

bool GenericPlugin::writeControllerMap() {
    return writeControllerMapFile(nativePath(shared->controllerMapPath()),
                                  shared->controllerMapping);
}

void GenericPlugin::controllerMappingChanged(NotifyEvent::Argument) {
    if (adapter) adapter->controllerMapChanged();
    notify(controllerMapNotification, 0);
}

}  // namespace cinder
