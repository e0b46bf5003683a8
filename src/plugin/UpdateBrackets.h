#pragma once

#include <atomic>
#include <cstdint>

#include "core/Realtime.h"

namespace cinder {

/// The update brackets of a plug-in and what waits for the end of the outermost one, in one word:
/// so nothing that one thread adds can get lost while another one closes its bracket.
/// State   any thread; brackets of several threads nest in each other like those of one
class UpdateBrackets {
public:
    /// What waits.
    enum Waiting : std::uint32_t {
        nothing = 0,
        forHost = 1u << 31,      ///< a change that the host must hear of
        forListener = 1u << 30,  ///< any change
        asNewState = 1u << 29,   ///< and together they are a new state
    };

    void begin() noexcept CINDER_REALTIME { word.fetch_add(1); }

    /// False: no bracket is open, and nothing was added.
    bool add(std::uint32_t waiting) noexcept CINDER_REALTIME {
        std::uint32_t seen = word;
        while ((seen & depth) != 0)
            if (word.compare_exchange_weak(seen, seen | waiting)) return true;
        return false;
    }
    /// Also without an open bracket, for the next one then.
    void addAlways(std::uint32_t waiting) noexcept CINDER_REALTIME { word.fetch_or(waiting); }

    /// What has waited, if this was the outermost bracket.
    std::uint32_t end() noexcept CINDER_REALTIME {
        std::uint32_t seen = word;
        for (;;) {
            const bool isOutermost = (seen & depth) == 1;
            if (word.compare_exchange_weak(seen, isOutermost ? 0 : seen - 1))
                return isOutermost ? seen & ~depth : 0;
        }
    }

private:
    static constexpr std::uint32_t depth = (1u << 29) - 1;

    std::atomic<std::uint32_t> word{0};
};

}  // namespace cinder
