#include "distortion/strip/CinderCompander.h"

namespace cinder {

namespace {

constexpr float thresholdDb = -6.0f, kneeDb = 12.0f, rangeDb = 36.0f, ratio = 2.0f;
constexpr float attackSeconds = 0.5f, releaseSeconds = 0.0002f;

}  // namespace

CinderCompander::CinderCompander(wave::Environment* environment,
                                 const Capacitor::Style* capacitorStyle)
    : FilterBase(environment, true),
      dynamics(environment, 0.0f, -1.0f, 1.0f),
      dynamicsForwarder(environment, &dynamics),
      capacitor(environment, capacitorStyle),
      toDecibels(environment),
      toGain(environment),
      detector(environment),
      inputForwarder(environment, this),
      scaler(environment, -1.0f, 1.0f) {
    toDecibels.setInput(&inputForwarder);

    detector.setInput(&toDecibels);
    detector.gainChangeDomain.assign(Detector::GainChangeDomain::Decibel);
    detector.purpose.assign(Detector::Purpose::Expand);
    detector.ratio.assign(ratio);
    detector.threshold.assign(thresholdDb);
    detector.kneeWidth.assign(kneeDb);
    detector.range.assign(rangeDb);

    capacitor.setInput(&detector);
    capacitor.attack.assign(attackSeconds);
    capacitor.release.assign(releaseSeconds);

    scaler.setInput(&capacitor);
    scaler.level.setSource(&dynamicsForwarder);

    toGain.setInput(&scaler);
    toGain.conversion.assign(DBConverter::Conversion::ToGain);
}

void CinderCompander::hearWith(CinderCompander& other) {
    capacitor.setInput(&other.detector);
    capacitor.shareWork(other.capacitor);
}

void CinderCompander::render(wave::BasicBlock<float>*, int numSamples,
                             unsigned) noexcept CINDER_REALTIME {
    passOn(toGain.pull(numSamples));
    status = toGain.getStatus();
}

}  // namespace cinder
