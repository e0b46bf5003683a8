#include "modulation/sources/midi/ResponseCurves.h"

#include <cmath>
#include <iterator>

namespace cinder {

namespace {

constexpr float pi = 3.14159265f;

float linear(float x) noexcept CINDER_REALTIME {
    return x;
}

/// 36 dB from 0.1 to 1, straight below.
float exponential(float x) noexcept CINDER_REALTIME {
    constexpr float nepersAcross = 36.0f * 0.1151292546497023f;
    return x <= 0.1f ? x * 0.23988324f : std::exp((x - 1.0f) * nepersAcross);
}

float logarithmic(float x) noexcept CINDER_REALTIME {
    return std::log(10.0f * x + 1.0f) * 0.4170323914242463f;  // 1 / ln 11
}

float squared(float x) noexcept CINDER_REALTIME {
    return x * x;
}

float squareRoot(float x) noexcept CINDER_REALTIME {
    return std::sqrt(x);
}

float sine(float x) noexcept CINDER_REALTIME {
    return (std::sin((x - 0.5f) * pi) + 1.0f) * 0.5f;
}

template <ResponseFunction positive>
float odd(float x) noexcept CINDER_REALTIME {
    return x < 0.0f ? -positive(-x) : positive(x);
}

constexpr ResponseFunction functions[] = {
    odd<linear>,       // Linear
    odd<exponential>,  // Exp
    odd<logarithmic>,  // Log
    odd<squared>,      // Sqr
    odd<squareRoot>,   // Sqrt
    odd<sine>,         // Sine
};
static_assert(std::ssize(functions) == numNames(responseCurveNames));

}  // namespace

ResponseFunction responseFunctionOf(ResponseCurve curve) noexcept CINDER_REALTIME {
    const auto place = static_cast<std::size_t>(curve);
    return place < std::size(functions) ? functions[place] : functions[0];
}

}  // namespace cinder
