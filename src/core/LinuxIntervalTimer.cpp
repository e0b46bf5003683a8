#include <time.h>

#include "core/IntervalTimer.h"

namespace cinder {
namespace {

std::int64_t monotonicNs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

class LinuxIntervalTimer final : public IntervalTimer {
public:
    void reset() override { startNs = monotonicNs(); }
    std::uint32_t elapsed() const override { return millisecondsBetween(startNs, monotonicNs()); }

private:
    std::int64_t startNs = monotonicNs();
};

}  // namespace

std::unique_ptr<IntervalTimer> IntervalTimer::create() {
    return std::make_unique<LinuxIntervalTimer>();
}

}  // namespace cinder
