#pragma once

#include <cstdint>
#include <memory>

namespace cinder {

/// A stop watch: elapsed = floor(now - start) in milliseconds, modulo 2^32 (49.7 days).
/// State   the start, set by construction and `reset`; belongs to one thread
class IntervalTimer {
public:
    static std::unique_ptr<IntervalTimer> create();

    virtual ~IntervalTimer() = default;
    virtual void reset() = 0;
    /// Whole milliseconds since `reset`, from a clock that no one can set.
    virtual std::uint32_t elapsed() const = 0;
};

/// Whole milliseconds between two readings of a clock in nanoseconds, modulo 2^32.
constexpr std::uint32_t millisecondsBetween(std::int64_t startNs, std::int64_t nowNs) {
    return static_cast<std::uint32_t>((nowNs - startNs) / 1'000'000);
}

}  // namespace cinder
