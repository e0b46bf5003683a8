#include "cinder/render/HostEvents.h"

#include "host/DirectPluginAdapter.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

/// In one call: well below what the processor's queue takes.
constexpr int mostMidi = 512;

}  // namespace

HostEvents::HostEvents(const Automation& automation, const std::vector<MidiFileEvent>& midiEvents,
                       int sampleRate) {
    for (const AutomationLane& lane : automation)
        cursors.emplace_back(lane, sampleRate);
    for (const auto& [seconds, event] : midiEvents)
        midi.push_back({std::llround(seconds * sampleRate), event});
}

void HostEvents::begin(DirectPluginAdapter& instance) {
    for (AutomationCursor& cursor : cursors)
        instance.setParameter(cursor.parameter(), cursor.valueAt(0));
}

int HostEvents::send(DirectPluginAdapter& instance, std::int64_t frame, int mostFrames) {
    int count = mostFrames;
    for (AutomationCursor& cursor : cursors) {
        instance.setParameter(cursor.parameter(), cursor.valueAt(frame));
        count = static_cast<int>(std::min<std::int64_t>(count, cursor.nextChange() - frame));
    }
    sendMidi(instance, frame, count);
    return count;
}

/// A call ends before it gets more than the queue holds; the rest of a thousand notes at one frame
/// comes a frame later each time.
void HostEvents::sendMidi(DirectPluginAdapter& instance, std::int64_t frame, int& count) {
    for (int sent = 0; nextMidi < midi.size() && midi[nextMidi].frame < frame + count; ++nextMidi) {
        const std::int64_t offset = std::max<std::int64_t>(midi[nextMidi].frame - frame, 0);
        if (sent++ == mostMidi) {
            count = static_cast<int>(std::max<std::int64_t>(offset, 1));
            return;
        }
        instance.getProcessor().enqueueMidiEvent(midi[nextMidi].event,
                                                 static_cast<std::int32_t>(offset));
    }
}

}  // namespace cinder
