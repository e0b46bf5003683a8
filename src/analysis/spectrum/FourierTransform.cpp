#include "analysis/spectrum/FourierTransform.h"

#include <algorithm>

namespace cinder {
namespace {

/// Values that a butterfly reads and writes, and those of the smallest piece of a pass.
constexpr int butterflyValues = 4;
constexpr int pieceValues = 8;

/// Passes 1 and 2 in one: the spectra of 4 inputs each.
void transformFours(const float* in, const std::int32_t* reversed, float* out, int first,
                    int last) {
    for (int i = first; i < last; i += 4) {
        const float a = in[reversed[i]], b = in[reversed[i + 1]];
        const float c = in[reversed[i + 2]], d = in[reversed[i + 3]];
        out[i] = (a + b) + (c + d);
        out[i + 1] = a - b;
        out[i + 2] = (a + b) - (c + d);
        out[i + 3] = d - c;
    }
}

/// Butterflies first..last - 1 of one group: with E and O the spectra of the two halves of `in`
/// and t = exp(-2 pi i k / L) O[k],
///     X[k] = E[k] + t,   X[L / 2 - k] = conj(E[k] - t).
void combineGroup(const float* __restrict in, float* __restrict out, int length,
                  const float* __restrict cosines, const float* __restrict sines, int first,
                  int last) {
    const int quarter = length / 4, half = length / 2;
    if (first == 0) {
        // Lines 0 and L / 4 of both halves are real.
        out[0] = in[0] + in[half];
        out[half] = in[0] - in[half];
        out[quarter] = in[quarter];
        out[half + quarter] = -in[half + quarter];
        first = 1;
    }
    const float* const evenIm = in + quarter;
    const float* const oddRe = in + half;
    const float* const oddIm = oddRe + quarter;
    // The four quarters don't overlap.
    float* __restrict const lowRe = out;
    float* __restrict const highRe = out + half;
    float* __restrict const lowIm = out + half;
    float* __restrict const highIm = out + length;
    for (int k = first; k < last; ++k) {
        const float re = cosines[k] * oddRe[k] + sines[k] * oddIm[k];
        const float im = cosines[k] * oddIm[k] - sines[k] * oddRe[k];
        lowRe[k] = in[k] + re;
        highRe[-k] = in[k] - re;
        lowIm[k] = evenIm[k] + im;
        highIm[-k] = im - evenIm[k];
    }
}

}  // namespace

void FourierTransform::setPlan(const FourierPlan* newPlan) {
    plan = newPlan;
    for (auto& buffer : buffers) {
        buffer.resize(plan->getSize());
        std::fill_n(buffer.data(), buffer.size(), 0.0f);
    }
    current = 0;
    pass = plan->getPassCount();
    position = 0;
}

float* FourierTransform::begin() {
    pass = 0;
    position = 0;
    return buffers[current].data();
}

bool FourierTransform::run(int units) {
    while (units > 0 && !isFinished()) {
        const int cost = plan->getPass(pass).unitsPerValue;
        const int left = plan->getSize() - position;
        const int pieces = (units - 1) / (pieceValues * cost) + 1;
        const int numValues = pieces > left / pieceValues ? left : pieces * pieceValues;
        runPass(position, numValues);
        units -= numValues * cost;
        position += numValues;
        if (position < plan->getSize()) continue;
        position = 0;
        current ^= 1;
        ++pass;
    }
    return isFinished();
}

void FourierTransform::runPass(int firstValue, int numValues) {
    const float* const in = buffers[current].data();
    float* const out = buffers[current ^ 1].data();
    if (pass == 0) {
        transformFours(in, plan->getReversedIndices(), out, firstValue, firstValue + numValues);
        return;
    }
    const int length = plan->getPass(pass).length;
    const float* const cosines = plan->getCosines(length);
    const float* const sines = plan->getSines(length);
    const int perGroup = length / butterflyValues;
    int group = firstValue / length * length;
    int first = (firstValue - group) / butterflyValues;
    for (int left = numValues / butterflyValues; left > 0;) {
        const int last = std::min(first + left, perGroup);
        combineGroup(in + group, out + group, length, cosines, sines, first, last);
        left -= last - first;
        first = 0;
        group += length;
    }
}

}  // namespace cinder
