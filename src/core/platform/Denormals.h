#pragma once

#include <cstdint>

#include "core/Realtime.h"

namespace cinder::platform {

/// Makes the floating-point unit of this thread treat denormals as 0, in operands and results: a
/// decaying filter would otherwise slow down many times as it fades out. Rounding is to nearest and
/// no operation traps. What the host had set is lost; FlushDenormalsScope gives it back.
/// State   the control word of the calling thread; on x86 MXCSR = 0x9FC0
void flushDenormals() noexcept CINDER_REALTIME;  ///< [any]

/// flushDenormals() while it lives, then the control word as it was before.
class FlushDenormalsScope {
public:
    FlushDenormalsScope() noexcept CINDER_REALTIME;
    ~FlushDenormalsScope();
    FlushDenormalsScope(const FlushDenormalsScope&) = delete;
    FlushDenormalsScope& operator=(const FlushDenormalsScope&) = delete;

private:
    std::uint64_t before;
};

/// The control word of this thread, without the record of past exceptions: MXCSR, FPCR, or 0 where
/// there is none. [any]
std::uint64_t floatingPointControl() noexcept CINDER_REALTIME;

}  // namespace cinder::platform
