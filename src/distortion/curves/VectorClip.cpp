#include "distortion/curves/VectorClip.h"

#include "distortion/curves/CurveKernels.h"

namespace cinder {

void vectorClipArcTanFast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->arcTan(in, out, n);
}

void vectorClipDivAbsFast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->divAbs(in, out, n);
}

void vectorClipSineFast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->sine(in, out, n);
}

void vectorClipPolynomeOrder2Fast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->polynomeOrder2(in, out, n);
}

void vectorClipPolynomeOrder3Fast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->polynomeOrder3(in, out, n);
}

void vectorClipTubeFast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->tube(in, out, n);
}

void vectorClipRectifyFast(const float* in, float* out, int n) noexcept CINDER_REALTIME {
    curveKernels->rectify(in, out, n);
}

void vectorClipArcTanPBFast(const float* in, float* out, int n, float power,
                            float negativeScale) noexcept CINDER_REALTIME {
    curveKernels->arcTanPower(in, out, n, power, negativeScale);
}

void vectorClipDivAbsPBFast(const float* in, float* out, int n, float power,
                            float negativeScale) noexcept CINDER_REALTIME {
    curveKernels->divAbsPower(in, out, n, power, negativeScale);
}

}  // namespace cinder
