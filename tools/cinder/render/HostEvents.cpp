#include "cinder/render/HostEvents.h"

#include "cinder/render/RenderSettings.h"
#include "params/AbstractPluginParameter.h"
#include "processor/frame/GenericPluginProcessor.h"

#include <algorithm>
#include <cmath>

namespace cinder {

namespace {

/// In one call: well below what the processor's queue takes.
constexpr int mostMidi = 512;

void setParameter(GenericPluginProcessor& processor, int id, float value) {
    processor.getParameter(id)->setValue(value, AbstractPluginParameter::hostKnows);
}

}  // namespace

HostEvents::HostEvents(const RenderSettings& settings, const Automation& automation,
                       const std::vector<MidiFileEvent>& midiEvents, int sampleRate)
    : settings(settings) {
    for (const AutomationLane& lane : automation)
        cursors.emplace_back(lane, sampleRate);
    for (const auto& [seconds, event] : midiEvents)
        midi.push_back({std::llround(seconds * sampleRate), event});
}

void HostEvents::begin(GenericPluginProcessor& processor) {
    const StandaloneParameters& tree = settings.getTree();
    for (int id = 0; id < tree.parameterCount(); ++id)
        setParameter(processor, id, tree.parameter(id)->value());
    for (AutomationCursor& cursor : cursors)
        setParameter(processor, cursor.parameter(), cursor.valueAt(0));
}

int HostEvents::send(GenericPluginProcessor& processor, std::int64_t frame, int mostFrames) {
    int count = mostFrames;
    for (AutomationCursor& cursor : cursors) {
        setParameter(processor, cursor.parameter(), cursor.valueAt(frame));
        count = static_cast<int>(std::min<std::int64_t>(count, cursor.nextChange() - frame));
    }
    sendMidi(processor, frame, count);
    return count;
}

/// A call ends before it gets more than the queue holds; the rest of a thousand notes at one frame
/// comes a frame later each time.
void HostEvents::sendMidi(GenericPluginProcessor& processor, std::int64_t frame, int& count) {
    for (int sent = 0; nextMidi < midi.size() && midi[nextMidi].frame < frame + count; ++nextMidi) {
        const std::int64_t offset = std::max<std::int64_t>(midi[nextMidi].frame - frame, 0);
        if (sent++ == mostMidi) {
            count = static_cast<int>(std::max<std::int64_t>(offset, 1));
            return;
        }
        processor.enqueueMidiEvent(midi[nextMidi].event, static_cast<std::int32_t>(offset));
    }
}

}  // namespace cinder
