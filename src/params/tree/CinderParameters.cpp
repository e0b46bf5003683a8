#include "params/tree/CinderParameters.h"

namespace cinder {

namespace {

struct LatencyRow {
    double highestRate;
    int samples;
};
constexpr LatencyRow highQualityLatency[] = {
    // up to Hz, samples
    {48001.0, 8},
    {96001.0, 6},
    {192001.0, 4},
};

/// Before anything asks for it.
ModulationMatrixOwner* withShape(ModulationMatrixOwner* matrix) {
    matrix->getShape() = ModulationMatrixShape::ofVocabulary();
    return matrix;
}

}  // namespace

CinderParameters::CinderParameters(GenericPluginBase* owner, ModulationMatrixOwner* matrix)
    : globalTargets(owner, "", global_rows::globalTargetRows, {withShape(matrix), 0}),
      bands(owner, matrix),
      xyControllers(owner, matrix),
      xlfos(owner, matrix),
      egs(owner, matrix),
      efs(owner, matrix),
      midiSources(owner, matrix),
      globalChoices(owner, "", global_rows::globalChoiceRows),
      slots(owner, matrix, matrix->getShape()),
      bandExtensions(owner) {
    owner->setMidiStateParameter(&(*this)[GlobalChoiceParameter::ReceiveMidi]);
}

void CinderParameters::initialize() {
    const auto initializeSets = [](const AbstractParameterSetArray& sets) {
        for (int i = 0; i < sets.setCount(); ++i)
            sets.set(i)->initialize();
    };
    globalTargets.initialize();
    initializeSets(bands);
    initializeSets(xyControllers);
    initializeSets(xlfos);
    initializeSets(egs);
    initializeSets(efs);
    initializeSets(midiSources);
    globalChoices.initialize();
    initializeSets(slots);
    initializeSets(bandExtensions);
    bands.addExtension(&bandExtensions);
}

int CinderParameters::latency(double sampleRate) const noexcept CINDER_REALTIME {
    if ((*this)[GlobalChoiceParameter::HighQuality].value() == 0.0f) return 0;
    for (const LatencyRow& row : highQualityLatency)
        if (sampleRate <= row.highestRate) return row.samples;
    return 0;
}

}  // namespace cinder
