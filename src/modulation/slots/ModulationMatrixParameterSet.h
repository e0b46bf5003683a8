#pragma once

#include <string>
#include <vector>

#include "modulation/matrix/ModulationMatrixOwner.h"
#include "params/GenericParameterOwner.h"

namespace cinder {

class ModulationSlotParameterSet;

/// The slots as parameters: what a controller works on in the half that has no matrix.
/// State   the names of the menus, one list for all sources and one for all targets
class ModulationMatrixParameterSet : public ModulationMatrixOwner::SlotParameters {
public:
    /// Makes itself known to the matrix owner. `owner` has the update bracket. The shape lives
    /// longer.
    ModulationMatrixParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrixOwner,
                                 const ModulationMatrixShape& shape);
    ModulationMatrixParameterSet(const ModulationMatrixParameterSet&) = delete;
    ModulationMatrixParameterSet& operator=(const ModulationMatrixParameterSet&) = delete;

    /// A ModMatrixParamController.
    std::unique_ptr<ModulationMatrix::Controller> createController() override;
    virtual ModulationSlotParameterSet& slot(int index) const = 0;

    void beginUpdate() { updateOwner->beginUpdate(); }
    void endUpdate() { updateOwner->endUpdate(); }

    const ModulationMatrixShape& getShape() const { return shape; }
    /// "< Source >", which is none, and then the sources in their order.
    const std::vector<std::string>& getSourceNames() const { return sourceNames; }
    /// "< Target >", which is none, and then the targets in their order.
    const std::vector<std::string>& getTargetNames() const { return targetNames; }

protected:
    ~ModulationMatrixParameterSet() = default;

private:
    const ModulationMatrixShape& shape;
    GenericParameterOwner* const updateOwner;
    std::vector<std::string> sourceNames, targetNames;
};

}  // namespace cinder
