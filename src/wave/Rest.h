#pragma once

#include <cstdint>

#include "core/Realtime.h"

namespace cinder::wave {

/// Values that stand still need not be looked at: whoever has found all of them at rest may go on
/// with what it knows of them, block after block, until one is set. Most values stand still most of
/// the time, and where blocks are short to look is a large part of the work.
/// State   whether the rest lasts, and the position that it has lasted up to
class Rest {
public:
    /// All values stand still and have been followed up to `position`. [audio]
    void begin(std::uint64_t position) noexcept CINDER_REALTIME {
        isOn = true;
        until = position;
    }
    /// Whether the rest goes on through a block. It does not where a block was left out. [audio]
    bool goesOn(std::uint64_t position, int numSamples) noexcept CINDER_REALTIME {
        if (!isOn) return false;
        if (until != position) {
            end();
            return false;
        }
        until += static_cast<std::uint64_t>(numSamples);
        return true;
    }
    /// From whatever is about to change what the owner knows. [audio]
    void end() noexcept CINDER_REALTIME {
        if (!isOn) return;
        isOn = false;
        ended(until);
    }

    bool isResting() const { return isOn; }

protected:
    ~Rest() = default;
    /// Brings up to date what nobody has followed since the rest began.
    virtual void ended(std::uint64_t position) noexcept CINDER_REALTIME = 0;

private:
    bool isOn = false;
    std::uint64_t until = 0;
};

}  // namespace cinder::wave
