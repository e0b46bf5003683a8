#include "processor/ModulationMatrixProcessor.h"

#include "modulation/matrix/ModulationMatrix.h"
#include "state/BinaryData.h"

namespace cinder {

void ModulationMatrixProcessor::writeRealtimeData(BinaryDataWriter& writer) {
    GenericPluginProcessor::writeRealtimeData(writer);
    for (int source = 0; source < getMatrix()->getShape().sourceCount(); ++source)
        writeValue(writer.getStream(), getSourceValue(source));
}

}  // namespace cinder
