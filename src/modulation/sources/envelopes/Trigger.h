#pragma once

#include <cstdint>
#include <vector>

#include "core/Property.h"
#include "wave/Producer.h"

namespace cinder {

/// Finds where a level comes and goes: it opens where x > threshold, and closes once x has stayed
/// below threshold / 2 for longer than `releaseMs`. A level in between keeps it as it is.
///
/// Shape   the blocks of one producer, each analysed once, whoever asks first
/// Range   threshold 0..1; releaseMs from one sample up; the input is a peak level, so samples
///         count as they are; a NaN is quiet
/// State   whether it is open and for how long it has been quiet; the same events for any cut of
///         the block. Switching it on or off forgets them: what a level did meanwhile is unknown
/// Errors  none
class Trigger final : public wave::Component, public PropertyOwner {
public:
    struct Event {
        enum class Kind : std::int32_t { Close = 0, Open = 1 };
        Kind kind;
        std::int32_t sample;  // in the block
    };

    Trigger(wave::Environment* environment, wave::Producer* input);

    /// The events of the present block, in order. [audio]
    const std::vector<Event>& analyse(int numSamples) noexcept CINDER_REALTIME;
    void reset() noexcept CINDER_REALTIME;  ///< [audio]
    bool isOpen() const { return open; }

    void propertyChanged(AbstractProperty* property) override;

    Property<float> releaseMs{15.0f};
    Property<bool> enabled{true, this};
    LimitedProperty<float> threshold{0.9f, 0.0f, 1.0f};  // linear level

private:
    int quietLimit() const noexcept CINDER_REALTIME;
    void findEvents(const float* in, int numSamples, float peak) noexcept CINDER_REALTIME;
    int passQuiet(const float* in, int i, int numSamples, float loudFrom,
                  int limit) noexcept CINDER_REALTIME;
    void add(Event::Kind kind, int sample) noexcept CINDER_REALTIME;

    wave::Producer* const input;  // not owned
    std::int32_t quietCount = 0;
    std::uint32_t lastBlockId = 0;
    std::vector<Event> events;
    bool open = false;
};

}  // namespace cinder
