#include "distortion/tone/EQStage.h"

namespace cinder {

EQStage::EQStage(wave::Environment* environment)
    : Filter(environment, true),
      inputForwarder(environment, this),
      filters(environment, &inputForwarder, maxFilters) {}

void EQStage::process(wave::BasicBlock<float>*, wave::BasicBlock<float>*, int numSamples,
                      unsigned) noexcept CINDER_REALTIME {
    passOn(filters.pull(numSamples));
    setConstant(filters.isConstant());
}

}  // namespace cinder
