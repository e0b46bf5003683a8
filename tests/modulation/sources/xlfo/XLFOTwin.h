#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace cinder::test {

/// The oscillator sample by sample, as one would write it down: phases are added up, every step is
/// searched for from the first, nothing is known in advance.
class XLFOTwin {
public:
    struct Step {
        float glide = 0.0f, value = 0.0f;
        int curve = 0;
        bool random = false, snap = false;
        float resolvedValue = 0.0f, nextRandom = 0.0f;
        bool resolved = false;
        double start = 0.0, end = 0.0;
        bool isMiddle = false;
    };

    int n = 16;
    double balance = 0.5;
    std::array<Step, 16> steps;
    std::uint32_t randomState = 1;
    double phase = 0.0, basePhase = 0.0;
    float lastPhaseOffset = 0.0f;

    void layOut() {
        const double first = 2.0 * balance / n, second = 2.0 * (1.0 - balance) / n;
        for (int i = 0; i < n; ++i) {
            Step& s = steps[static_cast<std::size_t>(i)];
            s.isMiddle = 2 * i + 1 == n;
            s.start = i == 0 ? 0.0 : steps[static_cast<std::size_t>(i - 1)].end;
            s.end = 2 * (i + 1) < n ? (i + 1) * first : (i + 1 - n / 2.0) * second + balance;
            if (i + 1 >= n) s.end = 1.0;
        }
    }

    void setBalance(double b) {
        const double a = balance, offset = phase - basePhase;
        balance = b;
        if (phase < a)
            phase = wrap(b * phase / a);
        else
            phase = wrap(
                static_cast<double>(static_cast<float>((phase - a) / (1.0 - a))) * (1.0 - b) + b);
        basePhase = wrap(phase - offset);
        layOut();
    }

    void trigger() {
        const double offset = wrap(phase - basePhase);
        basePhase = 0.0;
        phase = offset;
    }

    void render(const float* f, const float* glide, const float* offset, double rate, float* out,
                int numSamples) {
        for (int i = 0; i < numSamples;)
            i = renderStep(stepAt(phase), i, f, glide, offset, rate, out, numSamples);
    }

private:
    static double wrap(double x) {
        x -= std::trunc(x);
        if (x < 0.0) x += 1.0;
        return x < 1.0 ? x : 0.0;
    }

    int stepAt(double p) const {
        for (int i = 0; i < n; ++i)
            if (steps[static_cast<std::size_t>(i)].start <= p &&
                p < steps[static_cast<std::size_t>(i)].end)
                return i;
        return 0;
    }

    float nextRandom(float r) {
        randomState *= 2;
        if ((randomState >> 24 & 1) != 0) randomState ^= 0x11D872B;
        const auto centred =
            static_cast<float>(static_cast<int>(randomState) - static_cast<int>(0x800000));
        const float v = 2.0f * (centred * 5.9604645e-8f + 0.5f) - 1.0f;
        if (std::abs(v - r) >= 0.2f) return v;
        return r >= 0.5f ? r - 0.2f : r + 0.2f;
    }

    static float snapped(float v) {
        const int k = std::clamp(static_cast<int>((v + 1.0f) * 12.0f + 0.5f), 0, 24);
        return 2.0f * static_cast<float>(k) * 0.041666668f - 1.0f;
    }

    float resolve(int i) {
        Step& s = steps[static_cast<std::size_t>(i)];
        if (s.resolved) return s.resolvedValue;
        float v = s.value;
        if (s.random && n != 1) {
            v = nextRandom(steps[static_cast<std::size_t>((i - 1 + n) % n)].resolvedValue);
        } else if (s.random) {
            v = s.nextRandom;
            s.nextRandom = nextRandom(v);
        }
        s.resolvedValue = s.snap ? snapped(v) : v;
        s.resolved = true;
        return s.resolvedValue;
    }

    float next(int i, float v) {
        const Step& s = steps[static_cast<std::size_t>(i)];
        if (n > 1) return resolve((i + 1) % n);
        if (!s.random) return v;
        return s.snap ? snapped(s.nextRandom) : s.nextRandom;
    }

    static float bent(int curve, float u) {
        switch (curve) {
            case 0:
                return u;
            case 1:
                return u * u;
            case 2:
                return std::sqrt(u);
            default:
                return static_cast<float>(
                    (std::sin((static_cast<double>(u) - 0.5) * 3.14159265358979323846) + 1.0) *
                    0.5);
        }
    }

    int renderStep(int index, int i, const float* f, const float* glide, const float* offset,
                   double rate, float* out, int numSamples) {
        Step& step = steps[static_cast<std::size_t>(index)];
        const float v = resolve(index), w = next(index, v);
        double s = step.start, e = step.end, origin = step.start, scale = 1.0;
        if (step.isMiddle) {
            scale = 0.5;
            if (phase < balance) {
                e = balance;
            } else {
                s = balance;
                origin = balance - (step.end - balance);
            }
        }
        while (phase >= s && phase < e && i < numSamples) {
            const float root = 0.0002f * f[i];
            float g = step.glide + glide[i];
            g = g < root * root ? root * root : std::min(g, 1.0f);
            const auto t = static_cast<float>((phase - origin) * scale / (e - s));
            out[i] = v;
            if (t > 1.0f - g)
                out[i] = bent(step.curve, std::min((t - (1.0f - g)) / g, 1.0f)) * (w - v) + v;
            const double inc = static_cast<double>(f[i]) / rate;
            basePhase += inc;
            phase += static_cast<double>(offset[i]) - static_cast<double>(lastPhaseOffset) + inc;
            lastPhaseOffset = offset[i];
            ++i;
        }
        if (phase < step.start || phase >= step.end) step.resolved = !step.random;
        // Not where only the block is over: its cuts shall leave no trace.
        if (phase < s || phase >= e) {
            basePhase = wrap(basePhase);
            phase = wrap(static_cast<double>(lastPhaseOffset) + basePhase);
        }
        return i;
    }
};

}  // namespace cinder::test
