#include "modulation/sources/envelopes/Trigger.h"

#include <algorithm>

#include "core/Constants.h"
#include "modulation/sources/envelopes/EnvelopeKernels.h"

namespace cinder {

namespace {
constexpr std::size_t mostEvents = 1024;
}

Trigger::Trigger(wave::Environment* environment, wave::Producer* input)
    : Component(environment), input(input) {
    events.reserve(mostEvents);
}

void Trigger::reset() noexcept CINDER_REALTIME {
    open = false;
    quietCount = 0;
}

void Trigger::propertyChanged(AbstractProperty* property) {
    if (property == &enabled) reset();
}

const std::vector<Trigger::Event>& Trigger::analyse(int numSamples) noexcept CINDER_REALTIME {
    const std::uint32_t blockId = environment->getBlockId();
    if (lastBlockId == blockId) return events;
    lastBlockId = blockId;
    events.clear();
    if (!enabled) return events;
    const float* const in = input->pull(numSamples)->data();
    const float peak = envelopeKernels->peak(in, input->isConstant() ? 1 : numSamples);
    findEvents(in, numSamples, peak);
    return events;
}

/// Worked out block by block, so that it follows the sample rate. A NaN ends at one sample.
int Trigger::quietLimit() const noexcept CINDER_REALTIME {
    constexpr double longest = 1 << 30;
    const auto rate = static_cast<double>(environment->getSampleRate());
    const double samples = rate * 0.001 * static_cast<double>(releaseMs.get());
    return samples > 1.0 ? static_cast<int>(std::min(samples, longest)) : 1;
}

/// Looks at samples one by one only where something can happen; otherwise the peak tells enough.
void Trigger::findEvents(const float* in, int numSamples, float peak) noexcept CINDER_REALTIME {
    const float opensAbove = threshold + sameValue;
    const float loudFrom = threshold * 0.5f + sameValue;
    const int limit = quietLimit();
    if (!open && !(peak > opensAbove)) return;
    if (open && !(peak >= loudFrom) && numSamples <= limit - quietCount) {
        quietCount += numSamples;
        return;
    }
    for (int i = 0; i < numSamples;) {
        if (open) {
            i = passQuiet(in, i, numSamples, loudFrom, limit);
            continue;
        }
        while (i < numSamples && !(in[i] > opensAbove))
            ++i;
        if (i == numSamples) return;
        open = true;
        quietCount = 0;
        add(Event::Kind::Open, i++);
    }
}

/// From sample i on to the one behind the next that is loud, or behind the one that closes. Answers
/// with the number of the sample to go on with.
int Trigger::passQuiet(const float* in, int i, int numSamples, float loudFrom,
                       int limit) noexcept CINDER_REALTIME {
    int loud = i;
    while (loud < numSamples && !(in[loud] >= loudFrom))
        ++loud;
    const int numQuiet = loud - i;
    if (numQuiet > 0 && numQuiet > limit - quietCount) {
        const int closing = i + std::max(limit - quietCount, 0);
        reset();
        add(Event::Kind::Close, closing);
        return closing + 1;
    }
    if (loud == numSamples) {
        quietCount += numQuiet;
        return numSamples;
    }
    quietCount = 0;
    if (numSamples - loud - 1 > limit) return loud + 1;
    // What is left cannot close it, so only the last loud sample matters.
    int last = numSamples - 1;
    while (!(in[last] >= loudFrom))
        --last;
    quietCount = numSamples - 1 - last;
    return numSamples;
}

/// More events than fit are dropped; a block has fewer samples.
void Trigger::add(Event::Kind kind, int sample) noexcept CINDER_REALTIME {
    if (events.size() < events.capacity()) events.push_back({kind, sample});
}

}  // namespace cinder
