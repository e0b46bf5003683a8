#include "core/simd/InstructionSet.h"

#include <atomic>

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace cinder::simd {

namespace {

constexpr InstructionSet allSets[] = {
    InstructionSet::baseline,
    InstructionSet::x86v3,
    InstructionSet::x86v4,
};

#if defined(__x86_64__)
// The compilers' own check includes the system's promise to save the wide registers. It does not
// know the smaller members of x86-64-v3 everywhere, so these are asked for by their bits.
bool hasX86v3() {
    constexpr unsigned movbe = 1u << 22, f16c = 1u << 29;  // of leaf 1, ecx
    constexpr unsigned lzcnt = 1u << 5;                    // of leaf 0x80000001, ecx
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & movbe) == 0 || (c & f16c) == 0) return false;
    if (__get_cpuid(0x80000001, &a, &b, &c, &d) == 0 || (c & lzcnt) == 0) return false;
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
           __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
}

bool hasX86v4() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512vl");
}

int countSupported() {
    __builtin_cpu_init();
    if (!hasX86v3()) return 1;
    return hasX86v4() ? 3 : 2;
}
#else
int countSupported() {
    return 1;
}
#endif

// Constant until the line below it has run, so that no order of initialisation can read garbage.
std::atomic<InstructionSet> active{InstructionSet::baseline};
[[maybe_unused]] const bool chosen = (active = supportedSets().back(), true);

}  // namespace

const char* nameOf(InstructionSet set) noexcept {
    switch (set) {
        case InstructionSet::x86v3:
            return "x86-64-v3";
        case InstructionSet::x86v4:
            return "x86-64-v4";
        case InstructionSet::baseline:
            break;
    }
    return "baseline";
}

std::span<const InstructionSet> supportedSets() noexcept {
    static const int count = countSupported();
    return {allSets, static_cast<std::size_t>(count)};
}

InstructionSet activeSet() noexcept CINDER_REALTIME {
    return active.load(std::memory_order_relaxed);
}

ScopedInstructionSet::ScopedInstructionSet(InstructionSet set) noexcept : before(activeSet()) {
    if (set <= supportedSets().back()) active = set;
}

ScopedInstructionSet::~ScopedInstructionSet() {
    active = before;
}

}  // namespace cinder::simd
