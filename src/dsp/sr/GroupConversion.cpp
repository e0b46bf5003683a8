#include "dsp/sr/GroupConversion.h"

#include <algorithm>

namespace cinder::sr {

namespace {

int shapeOf(std::span<const HalfBandStage> stages) noexcept {
    const auto isLong = [](const HalfBandStage& stage) { return stage.getNumPairs() == 3; };
    return cascadeShape(static_cast<int>(stages.size()),
                        static_cast<int>(std::ranges::count_if(stages, isLong)));
}

/// Takes the smallest group with a place for every channel that is left, or the largest there is.
/// Places that are left over do the last channel's work once more, at no cost.
void convert(const GroupKernels& kernels, std::span<const HalfBandStage> stages,
             std::span<const Channel> channels, int numBaseSamples) noexcept {
    if (numBaseSamples <= 0) return;
    const int shape = shapeOf(stages);
    while (!channels.empty()) {
        int row = 0;
        std::size_t places = 2;
        while (places < channels.size() && row + 1 < numGroupSizes && kernels[row + 1][shape]) {
            ++row;
            places *= 2;
        }
        const std::size_t taken = std::min(places, channels.size());
        Channel group[maxGroup];
        std::copy_n(channels.data(), taken, group);
        std::fill(group + taken, group + places, channels[taken - 1]);
        kernels[row][shape](stages.data(), group, numBaseSamples);
        channels = channels.subspan(taken);
    }
}

}  // namespace

void interpolateChannels(std::span<const HalfBandStage> stages, std::span<const Channel> channels,
                         int numBaseSamples) noexcept CINDER_REALTIME {
    convert(cascadeKernels->interpolate, stages, channels, numBaseSamples);
}

void decimateChannels(std::span<const HalfBandStage> stages, std::span<const Channel> channels,
                      int numBaseSamples) noexcept CINDER_REALTIME {
    convert(cascadeKernels->decimate, stages, channels, numBaseSamples);
}

}  // namespace cinder::sr
