#include "cinder/bands/ChannelGraph.h"

namespace cinder {

ChannelGraph::Band::Band(BandsShared& shared, wave::Producer* input, std::uint32_t noiseSeed)
    : distortion(&shared.converterStyle, &shared.capacitorStyle, noiseSeed),
      cabinet(shared.converterStyle.getEnvironment()) {
    distortion.setInput(input);
    cabinet.setInput(&distortion);
}

ChannelGraph::ChannelGraph(BandsShared& shared, wave::Producer* input, std::uint32_t noiseSeed)
    : split(shared.converterStyle.getEnvironment(), &shared.model),
      sum(shared.converterStyle.getEnvironment(), maxBands) {
    split.setInput(input);
    for (int i = 0; auto& band : bands) {
        band = std::make_unique<Band>(shared, split.getOutput(i), noiseSeed++);
        sum.connect(i++, &band->cabinet);
    }
}

void ChannelGraph::link(ChannelGraph& other) {
    split.link(other.split);
    for (std::size_t i = 0; i < bands.size(); ++i) {
        bands[i]->distortion.link(other.bands[i]->distortion);
        bands[i]->cabinet.link(other.bands[i]->cabinet);
    }
}

}  // namespace cinder
