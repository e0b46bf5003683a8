#include "params/tree/BandParameterSets.h"

#include "modulation/vocabulary/ModulationTargets.h"

namespace cinder {

namespace {

constexpr int firstTargetOf(int index) {
    return targetNumber(TargetGroupId::Band, index, 0);
}
constexpr SetSpan bandTargetSpan = {firstTargetOf(0), firstTargetOf(1) - firstTargetOf(0)};

std::string nameOf(int index) {
    return "Band " + std::to_string(index + 1);
}

}  // namespace

BandParameterSet::BandParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix,
                                   int index)
    : RowParameterSet(owner, nameOf(index), nameOf(index), band_rows::bandRows,
                      {matrix, firstTargetOf(index)}),
      isLast(index == BandParameterSetList::maxBands - 1) {}

void BandParameterSet::initialize() {
    RowParameterSet::initialize();
    // Six bands have five crossovers.
    if (isLast) (*this)[BandParameter::CrossoverFrequency].automatable = false;
}

BandParameterSetExtension::BandParameterSetExtension(GenericParameterOwner* owner, int index)
    : RowParameterSet(owner, nameOf(index), nameOf(index), band_rows::bandExtensionRows) {}

BandParameterSetList::BandParameterSetList(GenericParameterOwner* owner,
                                           ModulationMatrixOwner* matrix)
    : TargetParameterSetList(owner, "Bands", {1, maxBands, 1}, matrix, bandTargetSpan, [=](int i) {
          return std::make_unique<BandParameterSet>(owner, matrix, i);
      }) {}

BandParameterSetListExtension::BandParameterSetListExtension(GenericParameterOwner* owner)
    : ParameterSetArray(BandParameterSetList::maxBands, [=](int i) {
          return std::make_unique<BandParameterSetExtension>(owner, i);
      }) {}

}  // namespace cinder
