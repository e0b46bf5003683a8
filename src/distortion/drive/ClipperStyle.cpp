#include "distortion/drive/ClipperStyle.h"

#include <algorithm>
#include <cmath>

#include "core/Constants.h"
#include "distortion/curves/Clip.h"

namespace cinder {

namespace {

constexpr int tableSize = 256;

double gainOf(double decibels) {
    return std::exp(decibels * logPerDecibel);
}

}  // namespace

double ClipperStyle::PreScaleFunction::evaluate(double drive) const {
    const auto from = static_cast<double>(style.driveMinDb);
    const auto to = static_cast<double>(style.driveMaxDb);
    return static_cast<double>(static_cast<float>(gainOf((to - from) * drive + from)));
}

double ClipperStyle::PostScaleFunction::evaluate(double drive) const {
    const WaveShaper& shaper = *style.shaper;
    const auto curveAt = [&shaper](double x) {
        return static_cast<double>(
            clip(static_cast<float>(x), shaper.curve, shaper.power, shaper.negativeScale));
    };
    const double reference = gainOf(static_cast<double>(style.referenceLevelDb));
    const double driven = PreScaleFunction(style).evaluate(drive) * reference;
    const double high = curveAt(driven);
    const double low = std::min(curveAt(-driven), 0.0);
    return 2.0 / (high - low) * reference * gainOf(static_cast<double>(style.outputDb));
}

void makeStyle(ClipperStyle& style, int curve, float power, float negativeScale, float driveMinDb,
               float driveMaxDb, float referenceLevelDb, float outputDb) {
    style.driveMinDb = driveMinDb;
    style.driveMaxDb = driveMaxDb;
    style.referenceLevelDb = referenceLevelDb;
    style.outputDb = outputDb;
    style.shaper = makeWaveShaper(curve, power, negativeScale);
    style.preTable.build(tableSize, ClipperStyle::PreScaleFunction(style), 0.0, 1.0);
    style.postTable.build(tableSize, ClipperStyle::PostScaleFunction(style), 0.0, 1.0);
}

}  // namespace cinder
