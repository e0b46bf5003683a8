// What of an instance a host stores with its project.
#include <istream>

#include "plugin/GenericPlugin.h"
#include "state/chunks/InstanceState.h"

namespace cinder {

bool GenericPlugin::writePluginState(std::ostream& stream) const {
    InstanceState state;
    state.presetName = currentPreset.name();
    {
        const ScopedLock inside(instanceLock());
        state.instanceNumber = instanceNumber;
        state.autoInstanceName = autoInstanceName;
        state.instanceName = instanceName;
    }
    return writeParameterState(stream, *this) && writeInstanceState(stream, productCode(), state);
}

ParameterStateResult GenericPlugin::readParameters(std::istream& stream) {
    return readParameterState(stream, *this);
}

bool GenericPlugin::readPluginState(std::istream& stream) {
    const auto state = readInstanceState(stream, productCode());
    if (!state) return false;
    setPresetName(state->presetName, -1);
    const ScopedLock inside(instanceLock());
    autoInstanceName = state->autoInstanceName;
    instanceName = state->instanceName;
    if (features & isNamedAfterTrack) updateInstanceName("");
    takeInstanceNumber(state->instanceNumber);
    return true;
}

}  // namespace cinder
