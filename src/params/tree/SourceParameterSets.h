#pragma once

#include "modulation/slots/SourceParameterSetList.h"
#include "params/ParameterSetList.h"
#include "params/tree/EFRows.h"
#include "params/tree/EGRows.h"
#include "params/tree/MidiSourceRows.h"
#include "params/tree/RowParameterSet.h"
#include "params/tree/XLFORows.h"
#include "params/tree/XYRows.h"

// The sets of the modulation sources. Set i of a list is source i of its kind, counted from 0.

namespace cinder {

class XYParameterSet final : public RowParameterSet<XYParameter> {
public:
    XYParameterSet(GenericParameterOwner* owner, int index);
};

class XLFOParameterSet final : public RowParameterSet<XLFOParameter> {
public:
    class StepParameterSet final : public RowParameterSet<XLFOStepParameter> {
    public:
        StepParameterSet(GenericParameterOwner* xlfo, const std::string& xlfoName, int index);
    };

    class StepParameterSetList final : public ParameterSetList<StepParameterSet> {
    public:
        static constexpr int maxSteps = 16;

        StepParameterSetList(GenericParameterOwner* xlfo, const std::string& xlfoName);
    };

    XLFOParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix, int index);

    void initialize() override;

    StepParameterSetList steps;
};

class EGParameterSet final : public RowParameterSet<EGParameter> {
public:
    EGParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix, int index);
};

class EFParameterSet final : public RowParameterSet<EFParameter> {
public:
    EFParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix, int index);
};

class MidiSourceParameterSet final : public RowParameterSet<MidiSourceParameter> {
public:
    MidiSourceParameterSet(GenericParameterOwner* owner, int index);

    /// For the button of the source: its input, or the number of its controller, and its own
    /// number: "Velocity (MS 2)".
    std::string sourceLabel() const;

private:
    const std::string shortName;
};

class XYParameterSetList final : public SourceParameterSetList<XYParameterSet> {
public:
    XYParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix);
};
class XLFOParameterSetList final : public SourceParameterSetList<XLFOParameterSet> {
public:
    XLFOParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix);
};
class EGParameterSetList final : public SourceParameterSetList<EGParameterSet> {
public:
    EGParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix);
};
class EFParameterSetList final : public SourceParameterSetList<EFParameterSet> {
public:
    EFParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix);
};
class MidiSourceParameterSetList final : public SourceParameterSetList<MidiSourceParameterSet> {
public:
    MidiSourceParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix);
};

}  // namespace cinder
