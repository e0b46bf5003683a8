#pragma once

#include <memory>

#include "distortion/curves/FunctionTable.h"
#include "distortion/curves/WaveShaper.h"

namespace cinder {

/// What FunctionTableClipper plays: a curve, and the gains before and behind it for every drive.
/// Shape   tables of 256 points over a drive of 0..1
/// Range   linear interpolation between the points costs level: up to 0.0006 dB at a drive range of
///         36 dB, 0.0024 dB at 74 dB and 0.0054 dB at 110 dB, growing with its square; with the
///         kinks of the tube curve up to 0.009 dB
/// State   immutable once made: any thread and any instance may read it
struct ClipperStyle {
    class PreScaleFunction;
    class PostScaleFunction;

    float driveMinDb = 0.0f;
    float driveMaxDb = 0.0f;
    float referenceLevelDb = 0.0f;
    float outputDb = 0.0f;
    FunctionTable postTable;
    FunctionTable preTable;
    std::unique_ptr<WaveShaper> shaper;
};

/// The gain into the curve at a drive: driveMinDb to driveMaxDb.
class ClipperStyle::PreScaleFunction final : public FunctionTableFunction {
public:
    explicit PreScaleFunction(const ClipperStyle& style) : style(style) {}
    double evaluate(double drive) const override;

private:
    const ClipperStyle& style;
};

/// The gain behind the curve at a drive: 2 a outputGain / (c(g) - min(c(-g), 0)), with a the
/// reference level and g that level at the curve. The span from the lowest to the highest point of
/// a sine at the reference level becomes 2 a outputGain again; a curve that rectifies has nothing
/// below 0.
class ClipperStyle::PostScaleFunction final : public FunctionTableFunction {
public:
    explicit PostScaleFunction(const ClipperStyle& style) : style(style) {}
    double evaluate(double drive) const override;

private:
    const ClipperStyle& style;
};

/// Sets everything. `power` above 0, `negativeScale` from 0. [any, allocates]
void makeStyle(ClipperStyle& style, int curve, float power, float negativeScale, float driveMinDb,
               float driveMaxDb, float referenceLevelDb, float outputDb);

}  // namespace cinder
