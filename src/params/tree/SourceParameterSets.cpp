#include "params/tree/SourceParameterSets.h"

#include "modulation/vocabulary/ModulationTargets.h"
#include "params/PropPluginParameter.h"

namespace cinder {

namespace {

std::string numbered(const char* name, int index) {
    return std::string(name) + ' ' + std::to_string(index + 1);
}

constexpr const SourceRow& rowOf(SourceKind kind) {
    return sourceRows[static_cast<std::size_t>(kind)];
}

TargetPlace placeOf(ModulationMatrixOwner* matrix, SourceKind kind, int index) {
    return {matrix, rowOf(kind).firstOwnTarget + index * rowOf(kind).numOwnTargets};
}

constexpr SetSpan targetsOf(SourceKind kind) {
    return {rowOf(kind).firstOwnTarget, rowOf(kind).numOwnTargets};
}
constexpr SetSpan sourcesOf(SourceKind kind, int setCount) {
    return {rowOf(kind).first, rowOf(kind).count / setCount};
}

constexpr int numXYControllers = 4, numXLFOs = 6, numEGs = 6, numEFs = 4, numMidiSources = 10;

}  // namespace

XYParameterSet::XYParameterSet(GenericParameterOwner* owner, int index)
    : RowParameterSet(owner, numbered("XY Controller", index), numbered("XY Controller", index),
                      xy_rows::xyRows) {}

XLFOParameterSet::XLFOParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix,
                                   int index)
    : RowParameterSet(owner, numbered("XLFO", index), numbered("XLFO", index), xlfo_rows::xlfoRows,
                      placeOf(matrix, SourceKind::XLFO, index)),
      steps(this, numbered("XLFO", index)) {}

void XLFOParameterSet::initialize() {
    RowParameterSet::initialize();
    for (int i = 0; i < steps.setCount(); ++i)
        steps.set(i)->initialize();
}

XLFOParameterSet::StepParameterSet::StepParameterSet(GenericParameterOwner* xlfo,
                                                     const std::string& xlfoName, int index)
    : RowParameterSet(xlfo, numbered((xlfoName + " Step").c_str(), index),
                      numbered((xlfoName + " Step").c_str(), index), xlfo_rows::xlfoStepRows) {}

XLFOParameterSet::StepParameterSetList::StepParameterSetList(GenericParameterOwner* xlfo,
                                                             const std::string& xlfoName)
    : ParameterSetList(xlfo, xlfoName + " Steps", {1, maxSteps, 2}, [&](int i) {
          return std::make_unique<StepParameterSet>(xlfo, xlfoName, i);
      }) {}

EGParameterSet::EGParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix,
                               int index)
    : RowParameterSet(owner, numbered("EG", index), numbered("EG", index), eg_rows::egRows,
                      placeOf(matrix, SourceKind::EnvelopeGenerator, index)) {}

EFParameterSet::EFParameterSet(GenericParameterOwner* owner, ModulationMatrixOwner* matrix,
                               int index)
    : RowParameterSet(owner, numbered("EF", index), numbered("EF", index), ef_rows::efRows,
                      placeOf(matrix, SourceKind::EnvelopeFollower, index)) {}

MidiSourceParameterSet::MidiSourceParameterSet(GenericParameterOwner* owner, int index)
    : RowParameterSet(owner, numbered("MS", index), numbered("MIDI Source", index),
                      midi_source_rows::midiSourceRows),
      shortName(numbered("MS", index)) {}

std::string MidiSourceParameterSet::sourceLabel() const {
    using Input = PropPluginParameter<MidiInput>;
    const auto& input = as<Input>(MidiSourceParameter::Input);
    const AbstractPluginParameter& number = (*this)[MidiSourceParameter::ControllerNumber];
    return (input.typedValue() == MidiInput::Controller ? number.text(number.value())
                                                        : input.text(input.value())) +
           " (" + shortName + ')';
}

XYParameterSetList::XYParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix)
    : SourceParameterSetList(owner, "XY Controllers", {0, numXYControllers, 0}, matrix,
                             targetsOf(SourceKind::XY), sourcesOf(SourceKind::XY, numXYControllers),
                             [=](int i) { return std::make_unique<XYParameterSet>(owner, i); }) {}

XLFOParameterSetList::XLFOParameterSetList(GenericParameterOwner* owner,
                                           ModulationMatrixOwner* matrix)
    : SourceParameterSetList(owner, "XLFOs", {0, numXLFOs, 0}, matrix, targetsOf(SourceKind::XLFO),
                             sourcesOf(SourceKind::XLFO, numXLFOs), [=](int i) {
                                 return std::make_unique<XLFOParameterSet>(owner, matrix, i);
                             }) {}

EGParameterSetList::EGParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix)
    : SourceParameterSetList(
          owner, "EGs", {0, numEGs, 0}, matrix, targetsOf(SourceKind::EnvelopeGenerator),
          sourcesOf(SourceKind::EnvelopeGenerator, numEGs),
          [=](int i) { return std::make_unique<EGParameterSet>(owner, matrix, i); }) {}

EFParameterSetList::EFParameterSetList(GenericParameterOwner* owner, ModulationMatrixOwner* matrix)
    : SourceParameterSetList(
          owner, "EFs", {0, numEFs, 0}, matrix, targetsOf(SourceKind::EnvelopeFollower),
          sourcesOf(SourceKind::EnvelopeFollower, numEFs),
          [=](int i) { return std::make_unique<EFParameterSet>(owner, matrix, i); }) {}

MidiSourceParameterSetList::MidiSourceParameterSetList(GenericParameterOwner* owner,
                                                       ModulationMatrixOwner* matrix)
    : SourceParameterSetList(
          owner, "MIDI Sources", {0, numMidiSources, 0}, matrix, targetsOf(SourceKind::Midi),
          sourcesOf(SourceKind::Midi, numMidiSources),
          [=](int i) { return std::make_unique<MidiSourceParameterSet>(owner, i); }) {}

}  // namespace cinder
