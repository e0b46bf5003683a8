#include "tools/HostBlocks.h"

#include "support/RealtimeGuard.h"

#include <doctest/doctest.h>

#include <algorithm>

namespace cinder::test {

Channels playThrough(GenericPluginProcessor& processor, const Channels& input,
                     const std::vector<int>& blocks) {
    const auto numChannels = static_cast<int>(input.size());
    const auto total = static_cast<int>(input[0].size());
    Channels output(input.size(), std::vector<float>(input[0].size()));
    std::vector<const float*> in(input.size());
    std::vector<float*> out(input.size());
    int count = 0;
    for (int done = 0, turn = 0; done < total; done += count, ++turn) {
        count = std::min(blocks[static_cast<std::size_t>(turn) % blocks.size()], total - done);
        for (std::size_t channel = 0; channel < input.size(); ++channel) {
            in[channel] = input[channel].data() + done;
            out[channel] = output[channel].data() + done;
        }
        const RealtimeReport report = guarded(
            [&] { processor.process(in.data(), numChannels, out.data(), numChannels, count); });
        REQUIRE_MESSAGE(report.isClean(), report);
    }
    return output;
}

}  // namespace cinder::test
