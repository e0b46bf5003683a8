#include "core/IntervalTimer.h"

#include <doctest/doctest.h>

using cinder::IntervalTimer;
using cinder::millisecondsBetween;

TEST_CASE("IntervalTimer: whole milliseconds that wrap at 32 bits") {
    constexpr std::int64_t ms = 1'000'000;
    constexpr std::int64_t boot = 123'456'789;
    CHECK(millisecondsBetween(boot, boot + ms - 1) == 0);
    CHECK(millisecondsBetween(boot, boot + ms) == 1);
    CHECK(millisecondsBetween(boot, boot + 4294967301 * ms) == 5);
}

TEST_CASE("IntervalTimer: runs, and starts again at a reset") {
    const auto running = IntervalTimer::create();
    const auto timer = IntervalTimer::create();
    while (timer->elapsed() < 3)
        continue;
    timer->reset();
    // Read in this order, a timer that was reset later can't be ahead.
    const std::uint32_t sinceReset = timer->elapsed();
    CHECK(sinceReset + 3 <= running->elapsed());
}
