#include "distortion/drive/NoiseKernels.h"

#include "core/simd/Lanes.h"

namespace cinder::CINDER_SIMD_SET {

namespace {

using namespace simd::CINDER_SIMD_SET;
using Seeds = BasicLanes<std::uint32_t, wideLanes>;

/// Steps of the generator, any number of which are one of the same form.
struct Steps {
    std::uint32_t multiplier, increment;

    constexpr std::uint32_t operator()(std::uint32_t seed) const {
        return seed * multiplier + increment;
    }
    CINDER_LANES Seeds operator()(Seeds seeds) const {
        return seeds * Seeds(multiplier) + Seeds(increment);
    }
    constexpr Steps then(Steps next) const {
        return {multiplier * next.multiplier, next(increment)};
    }
    constexpr Steps times(int count) const {
        Steps all = {1, 0};
        for (int i = 0; i < count; ++i)
            all = all.then(*this);
        return all;
    }
};

constexpr Steps one = {1103515245u, 12345u};
constexpr Steps perSample = one.times(2);
constexpr Steps perRegister = perSample.times(wideLanes);

/// The lower 31 bits as a number from -0.5 to 0.5.
CINDER_LANES Wide toNoise(Seeds seeds) {
    const Seeds bits = seeds & Seeds(0x7fffffffu);
    const IntLanes<wideLanes> whole = {(typename IntLanes<wideLanes>::Raw)bits.raw};
    return toFloat(whole) * 4.656613e-10f - 0.5f;
}

/// `seeds` holds for every lane the seed before its sample.
CINDER_LANES Wide withNoise(Wide signal, Wide level, Wide gain, Wide lowestGain, Seeds seeds) {
    const Seeds first = one(seeds);
    const Wide noise = toNoise(first) + toNoise(one(first));
    const auto isSilent = (signal == 0.0f) & (gain <= lowestGain);
    return noise * keepWhere(~isSilent, level * gain) + signal;
}

/// Every lane goes its own way through the numbers, so that none waits for the one beside it.
std::uint32_t addNoise(const NoiseInputs& in, float* out, int n, std::uint32_t seed) noexcept {
    std::uint32_t ofLanes[wideLanes];
    for (std::uint32_t next = seed; std::uint32_t & ofLane : ofLanes) {
        ofLane = next;
        next = perSample(next);
    }
    Seeds seeds = Seeds::load(ofLanes);
    const Wide lowest = in.lowestGain;
    int i = 0;
    for (; i + wideLanes <= n; i += wideLanes) {
        withNoise(Wide::load(in.signal + i), Wide::load(in.level + i), Wide::load(in.gain + i),
                  lowest, seeds)
            .store(out + i);
        seeds = perRegister(seeds);
    }
    const int rest = n - i;
    if (rest == 0) return seeds[0];

    float few[3][wideLanes] = {};
    for (int k = 0; k < rest; ++k) {
        few[0][k] = in.signal[i + k];
        few[1][k] = in.level[i + k];
        few[2][k] = in.gain[i + k];
    }
    withNoise(Wide::load(few[0]), Wide::load(few[1]), Wide::load(few[2]), lowest, seeds)
        .store(few[0]);
    for (int k = 0; k < rest; ++k)
        out[i + k] = few[0][k];
    return seeds[rest];
}

/// By squaring: the numbers of samples have few bits.
std::uint32_t skip(std::uint32_t seed, int n) noexcept {
    Steps step = perSample;
    for (; n > 0; n >>= 1) {
        if (n & 1) seed = step(seed);
        step = step.then(step);
    }
    return seed;
}

}  // namespace

constinit const NoiseKernels noiseKernels = {addNoise, skip};

}  // namespace cinder::CINDER_SIMD_SET
