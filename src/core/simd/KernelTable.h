#pragma once

// A room with kernels has three parts, as SanitiseKernels.h, SanitiseKernels.cpp and Sanitise.cpp
// show: a plain structure of function pointers, declared with CINDER_KERNELS(Structure, name); a
// kernel source that defines `name` in the namespace of its set; and ordinary code that calls
// name->kernel(...) and so reaches the set in force.

#if defined(CINDER_SIMD_SET)

#define CINDER_KERNELS(Table, name) \
    namespace CINDER_SIMD_SET {     \
    extern const Table name;        \
    }

#else

#include "core/Realtime.h"
#include "core/simd/InstructionSet.h"

namespace cinder::simd {

/// The kernel tables of one room, one per instruction set, and the choice among them.
template <class Table>
class KernelTables {
public:
    template <class... Tables>
    explicit constexpr KernelTables(const Tables&... perSet) : tables{&perSet...} {
        static_assert(sizeof...(Tables) == numInstructionSets, "a set without its table");
    }

    const Table* operator->() const noexcept CINDER_REALTIME {
        return tables[static_cast<int>(activeSet())];
    }

private:
    const Table* tables[numInstructionSets];
};

}  // namespace cinder::simd

#if defined(__x86_64__)
#define CINDER_KERNELS(Table, name)                                                      \
    namespace baseline {                                                                 \
    extern const Table name;                                                             \
    }                                                                                    \
    namespace x86v3 {                                                                    \
    extern const Table name;                                                             \
    }                                                                                    \
    namespace x86v4 {                                                                    \
    extern const Table name;                                                             \
    }                                                                                    \
    inline constexpr cinder::simd::KernelTables<Table> name{baseline::name, x86v3::name, \
                                                            x86v4::name};
#else
#define CINDER_KERNELS(Table, name) \
    namespace baseline {            \
    extern const Table name;        \
    }                               \
    inline constexpr cinder::simd::KernelTables<Table> name{baseline::name};
#endif

#endif
