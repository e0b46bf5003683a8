#pragma once

#include "modulation/matrix/ModulationMatrixOwner.h"
#include "processor/frame/GenericPluginProcessor.h"

namespace cinder {

/// The frame of a product that modulates: what its sources are worth goes to the interface, behind
/// the frame's own data.
class ModulationMatrixProcessor : public GenericPluginProcessor, public ModulationMatrixOwner {
public:
    using GenericPluginProcessor::GenericPluginProcessor;

    void writeRealtimeData(BinaryDataWriter& writer) override;
    /// What a source is worth at present, 0..1. [any]
    virtual float getSourceValue(int index) const = 0;
};

}  // namespace cinder
