#pragma once

#include <string>
#include <utility>

#include "modulation/matrix/ModulationTargetParameter.h"
#include "params/IndexedPluginParameter.h"
#include "params/PluginParameterSet.h"

namespace cinder {

class ModulationMatrixParameterSet;

/// One slot: which source goes to which target, and how. In the half with a matrix, what takes
/// effect sets the slot of the matrix; in the other half it is a value like any other.
class ModulationSlotParameterSet final : public PluginParameterSet {
public:
    template <typename T>
    class Parameter : public IndexedPluginParameter<T> {
    public:
        Parameter(GenericParameterOwner* owner, std::string name,
                  ModulationMatrixOwner* matrixOwner, int slot)
            : IndexedPluginParameter<T>(owner, std::move(name)),
              matrixOwner(matrixOwner),
              slot(slot) {}

    protected:
        ModulationMatrixOwner* const matrixOwner;
        const int slot;
    };

    /// Sources count from 1; 0 is none.
    class SourceParameter final : public Parameter<int> {
    public:
        using Parameter<int>::Parameter;
        void applyValue(float value) noexcept CINDER_REALTIME override;
    };
    /// Targets count from 1; 0 is none.
    class TargetParameter final : public Parameter<int> {
    public:
        using Parameter<int>::Parameter;
        void applyValue(float value) noexcept CINDER_REALTIME override;
    };
    class BypassParameter final : public Parameter<bool> {
    public:
        using Parameter<bool>::Parameter;
        void applyValue(float value) noexcept CINDER_REALTIME override;
    };
    class InvertParameter final : public Parameter<bool> {
    public:
        using Parameter<bool>::Parameter;
        void applyValue(float value) noexcept CINDER_REALTIME override;
    };

    /// Slots count from 0, and from 1 in names.
    ModulationSlotParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrixOwner,
                               const ModulationMatrixParameterSet* all, int slot);

    void initialize() override;

private:
    const ModulationMatrixParameterSet* const all;

public:
    // In the order of their ids, which is part of every saved sound.
    SourceParameter source;
    ModulationTargetParameter level;
    BypassParameter bypassed;
    InvertParameter inverted;
    TargetParameter target;
};

}  // namespace cinder
