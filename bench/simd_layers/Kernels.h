#pragma once

// The two kernels that the layers are compared on, declared once per layer and instruction set.
//   arcTan   out[i] = 2 / pi * atan(pi / 2 * in[i]) in the polynomial of Cephes
//   allpass  six first-order allpass sections in series on frames of {A left, B left, A right,
//            B right}; coefficients: 6 frames; state: 7 frames, the input and the six outputs
#define LAYER_KERNELS(layer, set)                                                                 \
    namespace layer::set {                                                                        \
    void arcTan(const float* in, float* out, int n) noexcept;                                     \
    void allpass(float* frames, int numFrames, const float* coefficients, float* state) noexcept; \
    }
#define LAYER(layer)               \
    LAYER_KERNELS(layer, baseline) \
    LAYER_KERNELS(layer, x86v3)    \
    LAYER_KERNELS(layer, x86v4)

LAYER(vectortypes)
LAYER(highway)
LAYER(xsimdbatch)

inline constexpr int numSections = 6;
