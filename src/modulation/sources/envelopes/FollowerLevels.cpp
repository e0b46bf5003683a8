#include "modulation/sources/envelopes/FollowerLevels.h"

#include <algorithm>

#include "modulation/sources/envelopes/EnvelopeKernels.h"

namespace cinder {

namespace {
// A little below -60 dB, so that the rounding of a logarithm makes nothing of what lies below.
constexpr float silence = 0.000999f;
}  // namespace

FollowerLevels::FollowerLevels(wave::Environment* environment)
    : environment(environment), entries{Entry(environment), Entry(environment)} {}

FollowerLevels::Levels FollowerLevels::of(const wave::Producer& signal,
                                          int numSamples) noexcept CINDER_REALTIME {
    const float* const samples = signal.getOutput()->data();
    const std::uint32_t blockId = environment->getBlockId();
    const auto holdsThese = [=](const Entry& entry) {
        return entry.signal == samples && entry.blockId == blockId &&
               entry.numSamples == numSamples;
    };
    auto found = std::find_if(entries.begin(), entries.end(), holdsThese);
    if (found == entries.end()) {
        found = entries.begin() + static_cast<std::ptrdiff_t>(oldest);
        oldest = 1 - oldest;
        found->signal = samples;
        found->blockId = blockId;
        found->numSamples = numSamples;
        fill(*found, signal);
    }
    wave::BasicBlock<float>& block = found->isSilent ? *environment->getZeroBlock() : found->block;
    return {block.data(), found->isSilent};
}

void FollowerLevels::fill(Entry& entry, const wave::Producer& signal) noexcept CINDER_REALTIME {
    const int numDifferent = signal.isConstant() ? 1 : entry.numSamples;
    entry.isSilent = envelopeKernels->peak(entry.signal, numDifferent) < silence;
    if (entry.isSilent) return;
    float* const levels = entry.block.data();
    envelopeKernels->levelsAboveFloor(entry.signal, levels, numDifferent);
    std::fill_n(levels + numDifferent, entry.numSamples - numDifferent, levels[0]);
}

}  // namespace cinder
