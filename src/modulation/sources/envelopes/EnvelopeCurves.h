#pragma once

#include <array>

#include "distortion/curves/FunctionTable.h"

namespace cinder {

/// The curves of the four sections of an envelope as tables over 0..1. Each begins and ends exactly
/// at 0 or 1, so an envelope that rests is exactly at rest.
/// State   none after construction: all generators of a process share one object
/// Errors  allocation failure throws
class EnvelopeCurves final {
public:
    enum Section { Attack, FallingDecay, RisingDecay, Release, numSections };

    /// The curves of the product, from `envelopeSplines`. [any]
    EnvelopeCurves();
    /// Plain curves: attack and rising decay follow `up`, the others `down`. [any]
    EnvelopeCurves(const FunctionTableFunction& up, const FunctionTableFunction& down);

    const FunctionTable& operator[](Section section) const noexcept CINDER_REALTIME {
        return tables[section];
    }

private:
    std::array<FunctionTable, numSections> tables;
};

}  // namespace cinder
