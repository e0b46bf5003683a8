#pragma once

#include "cinder/render/Automation.h"
#include "cinder/render/MidiFile.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cinder {

class DirectPluginAdapter;

/// What a host sends an instance besides audio, each thing at its frame: values of parameters and
/// MIDI.
/// State   how far it has been sent
class HostEvents {
public:
    HostEvents(const Automation& automation, const std::vector<MidiFileEvent>& midi,
               int sampleRate);

    /// Every parameter that moves as it is at the start.
    void begin(DirectPluginAdapter& instance);
    /// Sends what a call of `process` for the frames from `frame` on gets, at most `mostFrames`,
    /// and answers for how many: fewer where a parameter moves before their end. A value takes
    /// effect at the start of a call alone, and so it is right to the frame.
    int send(DirectPluginAdapter& instance, std::int64_t frame, int mostFrames);

private:
    struct TimedMidi {
        std::int64_t frame;
        MidiEvent event;
    };

    void sendMidi(DirectPluginAdapter& instance, std::int64_t frame, int& count);

    std::vector<AutomationCursor> cursors;
    std::vector<TimedMidi> midi;
    std::size_t nextMidi = 0;
};

}  // namespace cinder
