#include "core/platform/Denormals.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace cinder::platform {

namespace {

#if defined(__x86_64__)
// Bit 15 flushes results to zero, bit 6 reads denormal operands as zero, bits 7 to 12 mask the six
// exceptions, and 0 in bits 13 and 14 rounds to nearest.
constexpr std::uint64_t flushing = 0x9FC0;
constexpr std::uint64_t statusBits = 0x3F;  // what exceptions have occurred, no part of the control

std::uint64_t read() noexcept {
    return _mm_getcsr();
}
void write(std::uint64_t word) noexcept {
    _mm_setcsr(static_cast<unsigned>(word));
}
#elif defined(__aarch64__)
// Bit 24 flushes operands and results; no trap bit set; 0 in bits 22 and 23 rounds to nearest.
constexpr std::uint64_t flushing = std::uint64_t{1} << 24;
constexpr std::uint64_t statusBits = 0;  // they have a register of their own

std::uint64_t read() noexcept {
    std::uint64_t word;
    asm volatile("mrs %0, fpcr" : "=r"(word));
    return word;
}
void write(std::uint64_t word) noexcept {
    asm volatile("msr fpcr, %0" : : "r"(word));
}
#else
constexpr std::uint64_t flushing = 0;
constexpr std::uint64_t statusBits = 0;

std::uint64_t read() noexcept {
    return 0;
}
void write(std::uint64_t) noexcept {}
#endif

}  // namespace

void flushDenormals() noexcept CINDER_REALTIME {
    write(flushing);
}

std::uint64_t floatingPointControl() noexcept CINDER_REALTIME {
    return read() & ~statusBits;
}

FlushDenormalsScope::FlushDenormalsScope() noexcept CINDER_REALTIME : before(read()) {
    flushDenormals();
}

FlushDenormalsScope::~FlushDenormalsScope() {
    write(before);
}

}  // namespace cinder::platform
