#pragma once

#include "modulation/slots/TargetParameterSetList.h"
#include "params/ParameterSetArray.h"
#include "params/tree/BandRows.h"
#include "params/tree/RowParameterSet.h"

namespace cinder {

class BandParameterSet final : public RowParameterSet<BandParameter> {
public:
    BandParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix, int index);

    void initialize() override;

private:
    const bool isLast;
};

/// What came to a band later, and so stands behind everything else.
class BandParameterSetExtension final : public RowParameterSet<BandExtensionParameter> {
public:
    BandParameterSetExtension(GenericParameterOwner* owner, int index);
};

class BandParameterSetList final : public TargetParameterSetList<BandParameterSet> {
public:
    static constexpr int maxBands = 6;

    BandParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix);
};

class BandParameterSetListExtension final : public ParameterSetArray<BandParameterSetExtension> {
public:
    explicit BandParameterSetListExtension(GenericParameterOwner* owner);
};

}  // namespace cinder
