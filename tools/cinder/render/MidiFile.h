#pragma once

#include "midi/MidiMessageReceiver.h"

#include <filesystem>
#include <vector>

namespace cinder {

struct MidiFileEvent {
    double seconds;
    MidiEvent event;
};

/// The channel messages of a standard MIDI file, all tracks together, in the order of their times,
/// which the file's tempo map gives: 120 beats a minute until it says otherwise.
/// Range   formats 0 and 1, in ticks of a beat or of a frame
/// Errors  UserError: what cannot be read, is no MIDI file, ends early or is damaged, and format 2,
///         whose tracks are pieces of their own
std::vector<MidiFileEvent> readMidiFile(const std::filesystem::path& file);

}  // namespace cinder
