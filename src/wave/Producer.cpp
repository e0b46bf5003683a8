#include "wave/Producer.h"

namespace cinder::wave {

Producer::Producer(Environment* environment, bool noOwnBlock)
    : Component(environment),
      ownBlock(noOwnBlock ? nullptr : std::make_unique<BasicBlock<float>>(environment)),
      output(environment->getZeroBlock()) {
    environment->registerProducer();
}

Producer::~Producer() {
    if (environment->isDestroying()) return;
    if (isResettable) environment->removeResettable(this);
    if (isSink) environment->removeSink(this);
}

void Producer::setRenderPriority(unsigned priority) noexcept CINDER_REALTIME {
    if (active) {
        if (isSink) environment->removeSink(this);
        environment->addSink(this, priority);
    }
    renderPriority = priority;
    isSink = true;
}

void Producer::setActive(bool nowActive) noexcept CINDER_REALTIME {
    if (nowActive == active) return;
    if (!nowActive && isSink) environment->removeSink(this);
    active = nowActive;
    if (!nowActive) return;
    if (isSink) environment->addSink(this, renderPriority);
    if (isResettable) reset();
}

void Producer::visitAsSink(int numSamples) noexcept CINDER_REALTIME {
    const std::uint32_t blockId = environment->getBlockId();
    if (renderPriority > 0 && lastBlockId == blockId) return;
    output = ownBlock.get();
    render(ownBlock.get(), numSamples,
           renderPriority > 0 ? Environment::sinkVisit : Environment::writeVisit);
    lastBlockId = blockId;
}

void Producer::makeResettable() {
    if (isResettable) return;
    environment->addResettable(this);
    isResettable = true;
}

}  // namespace cinder::wave
