#pragma once

#include "modulation/matrix/ModulationController.h"
#include "modulation/slots/ModulationMatrixParameterSet.h"

namespace cinder {

/// The slots as their parameters have them. A bracket is the update bracket of the parameters'
/// owner. All [ui]
class ModMatrixParamController final : public ModulationMatrix::Controller {
public:
    /// Not owned. The default level is that of the parameter's middle.
    explicit ModMatrixParamController(ModulationMatrixParameterSet* parameters);

    void beginUpdate() override { parameters->beginUpdate(); }
    /// One more slot is in use, and it is the last one; -1 where all are in use.
    int findFreeSlot() override;
    void endUpdate() override { parameters->endUpdate(); }

    bool isBypassed(int slot) const override;
    bool isInverted(int slot) const override;
    float getLevel(int slot) const override;
    int getSource(int slot) const override;
    int getTarget(int slot) const override;

    void setBypassed(int slot, bool bypassed) override;
    void setInverted(int slot, bool inverted) override;
    void setLevel(int slot, float level) override;
    void setSource(int slot, int source) override;
    void setTarget(int slot, int target) override;

private:
    ModulationMatrixParameterSet* const parameters;
};

}  // namespace cinder
