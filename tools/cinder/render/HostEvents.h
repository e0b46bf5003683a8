#pragma once

#include "cinder/render/Automation.h"
#include "cinder/render/MidiFile.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace cinder {

class GenericPluginProcessor;
class RenderSettings;

/// What a host sends a processor besides audio, each thing at its frame: values of parameters and
/// MIDI.
/// State   how far it has been sent
class HostEvents {
public:
    HostEvents(const RenderSettings& settings, const Automation& automation,
               const std::vector<MidiFileEvent>& midi, int sampleRate);

    /// Every parameter as it is at the start.
    void begin(GenericPluginProcessor& processor);
    /// Sends what a call of `process` for the frames from `frame` on gets, at most `mostFrames`,
    /// and answers for how many: fewer where a parameter moves before their end. A value takes
    /// effect at the start of a call alone, and so it is right to the frame.
    int send(GenericPluginProcessor& processor, std::int64_t frame, int mostFrames);

private:
    struct TimedMidi {
        std::int64_t frame;
        MidiEvent event;
    };

    void sendMidi(GenericPluginProcessor& processor, std::int64_t frame, int& count);

    const RenderSettings& settings;
    std::vector<AutomationCursor> cursors;
    std::vector<TimedMidi> midi;
    std::size_t nextMidi = 0;
};

}  // namespace cinder
