#pragma once

#include <memory>

#include "modulation/matrix/ModulationMatrix.h"

namespace cinder {

class AbstractParameterSetList;

/// What either half of an instance has of the modulation: the shape, the slots as parameters, and,
/// in the processing half alone, the matrix.
class ModulationMatrixOwner {
public:
    /// The parameters of the slots, as the owner needs them. They stand in a room above.
    class SlotParameters {
    public:
        virtual AbstractParameterSetList* slotList() = 0;
        /// A controller that works on the parameters.
        virtual std::unique_ptr<ModulationMatrix::Controller> createController() = 0;

    protected:
        ~SlotParameters() = default;
    };

    ModulationMatrixOwner();
    ModulationMatrixOwner(const ModulationMatrixOwner&) = delete;
    ModulationMatrixOwner& operator=(const ModulationMatrixOwner&) = delete;

    /// Null where this half has none.
    ModulationMatrix* getMatrix() const { return matrix.get(); }
    /// Filled by the parameter tree, before there is a matrix.
    ModulationMatrixShape& getShape() { return shape; }
    void setSlotParameters(SlotParameters* parameters) { slotParameters = parameters; }
    /// Null without slot parameters.
    AbstractParameterSetList* getSlotList() const;
    /// Works on the slots' parameters. Made on first use; null without them. [ui]
    ModulationMatrix::Controller* getController();

protected:
    ~ModulationMatrixOwner();

    void createMatrix(wave::Environment* environment);

private:
    ModulationMatrixShape shape;
    std::unique_ptr<ModulationMatrix> matrix;
    SlotParameters* slotParameters = nullptr;  // not owned
    std::unique_ptr<ModulationMatrix::Controller> controller;
};

}  // namespace cinder
