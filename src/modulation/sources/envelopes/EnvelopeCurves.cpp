#include "modulation/sources/envelopes/EnvelopeCurves.h"

#include <iterator>

#include "distortion/curves/Spline.h"

namespace cinder {

static_assert(std::size(envelopeSplines) == EnvelopeCurves::numSections);

namespace {

/// A spline finds its parameter only so far, which would leave a sustain or a rest 2e-5 off.
void pinEnds(FunctionTable& table, double first, double last) {
    const auto size = static_cast<std::size_t>(table.size);
    table.values[0] = static_cast<float>(first);
    table.values[size - 1] = table.values[size] = static_cast<float>(last);
}

}  // namespace

EnvelopeCurves::EnvelopeCurves() {
    for (std::size_t i = 0; i < numSections; ++i) {
        const SplinePoints& points = envelopeSplines[i];
        tables[i].build(envelopeTableSize, Spline(points), 0.0, 1.0);
        pinEnds(tables[i], points.y0, points.y3);
    }
}

EnvelopeCurves::EnvelopeCurves(const FunctionTableFunction& up, const FunctionTableFunction& down) {
    for (const Section section : {Attack, FallingDecay, RisingDecay, Release}) {
        const bool rises = section == Attack || section == RisingDecay;
        tables[section].build(envelopeTableSize, rises ? up : down, 0.0, 1.0);
    }
}

}  // namespace cinder
