#pragma once

#include <vector>

#include "modulation/matrix/ModulationMatrixOwner.h"
#include "plugin/GenericPlugin.h"

namespace cinder {

/// The plug-in half of a product that modulates. It has slots as parameters and no matrix, and sees
/// what the sources are worth by the processor's real-time data.
class ModulationMatrixPlugin : public GenericPlugin, public ModulationMatrixOwner {
public:
    /// As of the last transfer, 0..1; 0 for an index without a source. [ui]
    float getSourceValue(int index) const;

protected:
    using GenericPlugin::GenericPlugin;

    bool readRealtimeData(BinaryDataReader& reader) override;

private:
    std::vector<float> sourceValues;
};

}  // namespace cinder
