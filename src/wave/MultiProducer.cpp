#include "wave/MultiProducer.h"

namespace cinder::wave {

void MultiProducer::Output::render(BasicBlock<float>*, int numSamples,
                                   unsigned flags) noexcept CINDER_REALTIME {
    owner->renderOutputs(numSamples, flags);
}

void MultiProducer::createOutputs(int numOutputs) {
    for (int i = 0; i < numOutputs; ++i) {
        blocks.push_back(std::make_unique<BasicBlock<float>>(environment));
        outputs.push_back(std::make_unique<Output>(this));
    }
    workBlocks.resize(blocks.size());
}

void MultiProducer::renderOutputs(int numSamples, unsigned flags) noexcept CINDER_REALTIME {
    for (std::size_t i = 0; i < blocks.size(); ++i)
        workBlocks[i] = blocks[i].get();
    render(workBlocks.data(), numSamples, flags);
    for (std::size_t i = 0; i < outputs.size(); ++i)
        outputs[i]->passOn(workBlocks[i]);
}

}  // namespace cinder::wave
