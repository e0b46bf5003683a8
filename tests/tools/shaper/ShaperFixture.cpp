#include "tools/shaper/ShaperFixture.h"

namespace cinder::test {

ShaperFixture::ShaperFixture(int numChannels, float sampleRate)
    : processor(numChannels == 1 ? monoLayout : stereoLayout) {
    processor.getEnvironment()->setSampleRate(sampleRate);
}

void ShaperFixture::set(ShaperParameterId id, float value) {
    processor.getParameter(id)->setValue(value, AbstractPluginParameter::hostKnows);
}

void ShaperFixture::setTransparent(int log2Factor) {
    set(curveId, noCurve);
    set(driveId, 0.0f);
    set(levelId, 0.0f);
    set(oversamplingId, static_cast<float>(log2Factor));
}

}  // namespace cinder::test
