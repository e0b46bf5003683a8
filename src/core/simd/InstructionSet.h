#pragma once

#include <span>

#include "core/Realtime.h"

namespace cinder::simd {

/// The sets that kernels are compiled for, each a superset of the one before. Their names are the
/// namespaces of cmake/CinderKernels.cmake.
enum class InstructionSet {
    baseline,  // x86-64 as of 2003: SSE2, 4 floats; on other processors what all of them have
    x86v3,     // AVX2 and FMA, 8 floats
    x86v4,     // AVX-512 F, BW, CD, DQ and VL, 16 floats
};

#if defined(__x86_64__)
inline constexpr int numInstructionSets = 3;
#else
inline constexpr int numInstructionSets = 1;
#endif

const char* nameOf(InstructionSet set) noexcept;  ///< [any]

/// The sets this processor and its system can run, ascending; never empty. [any]
std::span<const InstructionSet> supportedSets() noexcept;

/// The set that kernels are called in: the highest one supported, chosen when the program starts.
/// Before that, in the initialisers of other files, it is the baseline. [any]
InstructionSet activeSet() noexcept CINDER_REALTIME;

/// Calls kernels in another set while it lives; for tests and benchmarks. A set that is not
/// supported leaves the active one. [any, while no audio runs]
class ScopedInstructionSet {
public:
    explicit ScopedInstructionSet(InstructionSet set) noexcept;
    ~ScopedInstructionSet();
    ScopedInstructionSet(const ScopedInstructionSet&) = delete;
    ScopedInstructionSet& operator=(const ScopedInstructionSet&) = delete;

private:
    InstructionSet before;
};

}  // namespace cinder::simd
