#include "plugin/ModulationMatrixPlugin.h"

namespace cinder {

float ModulationMatrixPlugin::getSourceValue(int index) const {
    const bool isSource = index >= 0 && index < static_cast<int>(sourceValues.size());
    return isSource ? sourceValues[static_cast<std::size_t>(index)] : 0.0f;
}

bool ModulationMatrixPlugin::readRealtimeData(BinaryDataReader& reader) {
    if (!GenericPlugin::readRealtimeData(reader)) return false;
    sourceValues.resize(static_cast<std::size_t>(getShape().sourceCount()));
    readValues(reader.getStream(), sourceValues.data(), sourceValues.size());
    return reader.isGood();
}

}  // namespace cinder
