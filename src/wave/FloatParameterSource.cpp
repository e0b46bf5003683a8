#include "wave/FloatParameterSource.h"

namespace cinder::wave {

void FloatParameterSource::render(BasicBlock<float>*, int numSamples,
                                  unsigned) noexcept CINDER_REALTIME {
    bool isConstant = false;
    passOn(parameter.follow(numSamples, &isConstant));
    status = isConstant ? constantBlock : 0;
}

void FloatParameterForwarder::render(BasicBlock<float>*, int numSamples,
                                     unsigned) noexcept CINDER_REALTIME {
    bool isConstant = false;
    passOn(parameter->follow(numSamples, &isConstant));
    status = isConstant ? constantBlock : 0;
}

}  // namespace cinder::wave
