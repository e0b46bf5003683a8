#include "dsp/filters/BiquadKernels.h"

#include <cstddef>

#include "core/simd/Lanes.h"

// A channel is a lane of doubles. Two sections run together, so that the one works while the other
// waits for its last output; a third would find no register. Four samples are handled at a time:
// coefficients change at multiples of four, and within a group no state has to move. Where a
// register has four doubles, two channels with two sections each are one: the second section is a
// sample behind the first.

namespace cinder::CINDER_SIMD_SET {

namespace {

using simd::CINDER_SIMD_SET::DoubleLanes;
using simd::CINDER_SIMD_SET::Lanes;
using simd::CINDER_SIMD_SET::shuffle;

/// a * b + c, fused where lanes fuse it.
CINDER_LANES double mulAdd(double a, double b, double c) {
#if defined(__FMA__) || defined(__aarch64__)
    return __builtin_fma(a, b, c);
#else
    return a * b + c;
#endif
}

template <class V>
struct FourOf {
    V at[4];
};

/// How the samples of the lanes lie in vectors: V has one sample of each lane, a Group the next
/// four.
template <int numLanes>
struct Samples;

template <>
struct Samples<1> {
    using V = double;
    using Group = FourOf<V>;

    template <class Of>
    static CINDER_LANES V gather(Of of) {
        return of(0);
    }
    static CINDER_LANES double laneOf(V v, int) { return v; }

    static CINDER_LANES V load(const BiquadLane* lanes, std::ptrdiff_t at) {
        return static_cast<double>(lanes[0].input[at]);
    }
    static CINDER_LANES void store(V v, const BiquadLane* lanes, std::ptrdiff_t at) {
        lanes[0].output[at] = static_cast<float>(v);
    }
    static CINDER_LANES V rounded(V v) { return static_cast<double>(static_cast<float>(v)); }

    static CINDER_LANES Group loadGroup(const BiquadLane* lanes, std::ptrdiff_t at) {
        return {load(lanes, at), load(lanes, at + 1), load(lanes, at + 2), load(lanes, at + 3)};
    }
    static CINDER_LANES void storeGroup(const Group& g, const BiquadLane* lanes,
                                        std::ptrdiff_t at) {
        for (int i = 0; i < 4; ++i)
            store(g.at[i], lanes, at + i);
    }
};

template <>
struct Samples<2> {
    using V = DoubleLanes<2>;
    using Group = FourOf<V>;

    template <class Of>
    static CINDER_LANES V gather(Of of) {
        return V(V::Raw{of(0), of(1)});
    }
    static CINDER_LANES double laneOf(V v, int lane) { return v[lane]; }

    static CINDER_LANES V load(const BiquadLane* lanes, std::ptrdiff_t at) {
        return V(V::Raw{static_cast<double>(lanes[0].input[at]),
                        static_cast<double>(lanes[1].input[at])});
    }
    static CINDER_LANES void store(V v, const BiquadLane* lanes, std::ptrdiff_t at) {
        lanes[0].output[at] = static_cast<float>(v[0]);
        lanes[1].output[at] = static_cast<float>(v[1]);
    }
    static CINDER_LANES V rounded(V v) { return toDouble(narrowed(v)); }

    // The floats of two channels are exchanged, then four converted together.
    static CINDER_LANES Group loadGroup(const BiquadLane* lanes, std::ptrdiff_t at) {
        const auto a = Lanes<4>::load(lanes[0].input + at);
        const auto b = Lanes<4>::load(lanes[1].input + at);
        const auto early = toDouble(shuffle<0, 4, 1, 5>(a, b));
        const auto late = toDouble(shuffle<2, 6, 3, 7>(a, b));
        return {shuffle<0, 1>(early, early), shuffle<2, 3>(early, early), shuffle<0, 1>(late, late),
                shuffle<2, 3>(late, late)};
    }
    static CINDER_LANES void storeGroup(const Group& g, const BiquadLane* lanes,
                                        std::ptrdiff_t at) {
        const Lanes<4> early = joined(g.at[0], g.at[1]), late = joined(g.at[2], g.at[3]);
        shuffle<0, 2, 4, 6>(early, late).store(lanes[0].output + at);
        shuffle<1, 3, 5, 7>(early, late).store(lanes[1].output + at);
    }

private:
    static CINDER_LANES Lanes<4> joined(V a, V b) {
        return {__builtin_convertvector((shuffle<0, 1, 2, 3>(a, b).raw), Lanes<4>::Raw)};
    }
    static CINDER_LANES Lanes<2> narrowed(V v) {
        return {__builtin_convertvector(v.raw, Lanes<2>::Raw)};
    }
};

/// One section of all lanes. The products are taken in such an order that an output waits for one
/// product and sum behind the last output.
template <int numLanes>
struct Section {
    using S = Samples<numLanes>;
    using V = typename S::V;

    /// The states of the lanes.
    CINDER_LANES void loadState(const BiquadState* const* states) {
        const auto from = [&](double BiquadState::*value) __attribute__((always_inline)) {
            return S::gather([&](int lane)
                                 __attribute__((always_inline)) { return states[lane]->*value; });
        };
        x1 = from(&BiquadState::x1);
        x2 = from(&BiquadState::x2);
        y1 = from(&BiquadState::y1);
        y2 = from(&BiquadState::y2);
    }
    CINDER_LANES void storeState(BiquadState* const* states) const {
        for (int lane = 0; lane < numLanes; ++lane)
            *states[lane] = {S::laneOf(x1, lane), S::laneOf(x2, lane), S::laneOf(y1, lane),
                             S::laneOf(y2, lane)};
    }
    template <class OfLane>
    CINDER_LANES void loadCoefficients(OfLane ofLane) {
        const auto from = [&](double BiquadCoefficients::*value) __attribute__((always_inline)) {
            return S::gather([&](int lane)
                                 __attribute__((always_inline)) { return ofLane(lane).*value; });
        };
        b0 = from(&BiquadCoefficients::b0);
        b1 = from(&BiquadCoefficients::b1);
        b2 = from(&BiquadCoefficients::b2);
        minusA1 = -from(&BiquadCoefficients::a1);
        minusA2 = -from(&BiquadCoefficients::a2);
    }
    CINDER_LANES V advance(V x) {
        const V forward = mulAdd(b0, x, mulAdd(b1, x1, b2 * x2));
        const V y = mulAdd(minusA1, y1, mulAdd(minusA2, y2, forward));
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return y;
    }

    V b0, b1, b2, minusA1, minusA2;
    V x1, x2, y1, y2;
};

/// The states of section `index`.
template <int numLanes>
struct States {
    CINDER_LANES States(const BiquadLane* lanes, int index) {
        for (int lane = 0; lane < numLanes; ++lane)
            ofLane[lane] = lanes[lane].states + index;
    }
    BiquadState* ofLane[numLanes];
};

/// `count` sections over the samples from `at` to `end`, in one pass.
template <int numLanes, int count>
CINDER_LANES void advanceAll(Section<numLanes>* sections, const BiquadLane* lanes,
                             std::ptrdiff_t at, std::ptrdiff_t end) {
    using S = Samples<numLanes>;
    for (; at + 4 <= end; at += 4) {
        auto group = S::loadGroup(lanes, at);
        for (int s = 0; s < count; ++s) {
            const auto next = [&](int i) __attribute__((always_inline)) {
                return sections[s].advance(s > 0 ? S::rounded(group.at[i]) : group.at[i]);
            };
            group = {next(0), next(1), next(2), next(3)};
        }
        S::storeGroup(group, lanes, at);
    }
    for (; at < end; ++at) {
        auto v = S::load(lanes, at);
        for (int s = 0; s < count; ++s)
            v = sections[s].advance(s > 0 ? S::rounded(v) : v);
        S::store(v, lanes, at);
    }
}

/// Two sections of two channels as the lanes (first section: channel 0, 1, second: channel 0, 1).
/// What enters the second section has left the first a sample before.
struct Skewed {
    using V2 = DoubleLanes<2>;
    using V = DoubleLanes<4>;
    using Floats = Lanes<4>;

    static CINDER_LANES V join(V2 first, V2 second) { return shuffle<0, 1, 2, 3>(first, second); }

    CINDER_LANES Skewed(const Section<2>& first, const Section<2>& second)
        : x1(join(first.x1, second.x1)),
          x2(join(first.x2, second.x2)),
          y1(join(first.y1, second.y1)),
          y2(join(first.y2, second.y2)) {
        takeCoefficients(first, second);
    }
    CINDER_LANES void takeCoefficients(const Section<2>& first, const Section<2>& second) {
        b0 = join(first.b0, second.b0);
        b1 = join(first.b1, second.b1);
        b2 = join(first.b2, second.b2);
        minusA1 = join(first.minusA1, second.minusA1);
        minusA2 = join(first.minusA2, second.minusA2);
    }
    CINDER_LANES void storeTo(Section<2>& first, Section<2>& second) const {
        const auto split = [&](V Skewed::*value, V2 Section<2>::*part)
            __attribute__((always_inline)) {
            const V lanes = this->*value;
            first.*part = shuffle<0, 1>(lanes, lanes);
            second.*part = shuffle<2, 3>(lanes, lanes);
        };
        split(&Skewed::x1, &Section<2>::x1);
        split(&Skewed::x2, &Section<2>::x2);
        split(&Skewed::y1, &Section<2>::y1);
        split(&Skewed::y2, &Section<2>::y2);
    }
    /// As Section::advance. In and out are rounded to float.
    CINDER_LANES Floats advance(Floats in) {
        const V x = toDouble(in);
        const V forward = mulAdd(b0, x, mulAdd(b1, x1, b2 * x2));
        const V y = mulAdd(minusA1, y1, mulAdd(minusA2, y2, forward));
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return {__builtin_convertvector(y.raw, Floats::Raw)};
    }

    V b0, b1, b2, minusA1, minusA2;
    V x1, x2, y1, y2;
};

/// The samples of two channels that two sections run over.
struct SkewedSamples {
    using Floats = Skewed::Floats;

    explicit CINDER_LANES SkewedSamples(const BiquadLane* lanes)
        : in{lanes[0].input + 1, lanes[1].input + 1}, out{lanes[0].output, lanes[1].output} {}

    /// Four samples; `beforeLast` is called ahead of the last of them.
    template <class Action>
    CINDER_LANES Floats advanceGroup(Skewed& both, Floats f, std::ptrdiff_t at,
                                     Action beforeLast) const {
        const Floats a = Floats::load(in[0] + at), b = Floats::load(in[1] + at);
        const Floats early = shuffle<0, 4, 1, 5>(a, b), late = shuffle<2, 6, 3, 7>(a, b);
        const Floats f0 = both.advance(shuffle<0, 1, 4, 5>(early, f));
        const Floats f1 = both.advance(shuffle<2, 3, 4, 5>(early, f0));
        const Floats f2 = both.advance(shuffle<0, 1, 4, 5>(late, f1));
        beforeLast();
        f = both.advance(shuffle<2, 3, 4, 5>(late, f2));
        const Floats left = shuffle<2, 3, 6, 7>(f0, f1), right = shuffle<2, 3, 6, 7>(f2, f);
        shuffle<0, 2, 4, 6>(left, right).store(out[0] + at);
        shuffle<1, 3, 5, 7>(left, right).store(out[1] + at);
        return f;
    }
    CINDER_LANES Floats advanceOne(Skewed& both, Floats f, std::ptrdiff_t at) const {
        f = both.advance(Floats(Floats::Raw{in[0][at], in[1][at], f[0], f[1]}));
        out[0][at] = f[2];
        out[1][at] = f[3];
        return f;
    }

    const float* const in[2];
    float* const out[2];
};

/// Two sections over `numSamples` of two channels from `at` on, at least one. At the end of each
/// run of `runLength` samples, a multiple of four, `loadNext(which)` puts new coefficients into the
/// sections; the first one is a sample ahead, and has them for that sample already.
template <class Load>
CINDER_LANES void runSkewed(Section<2>* sections, const BiquadLane* lanes, std::ptrdiff_t at,
                            std::ptrdiff_t numSamples, std::ptrdiff_t runLength, Load loadNext) {
    using S = Samples<2>;
    using Floats = Skewed::Floats;
    const std::ptrdiff_t last = at + numSamples - 1;
    const SkewedSamples samples(lanes);
    const auto first = S::rounded(sections[0].advance(S::load(lanes, at)));
    // Behind the first lane pair, what the first section hands on.
    Floats f(Floats::Raw{static_cast<float>(first[0]), static_cast<float>(first[1]), 0.0f, 0.0f});
    Skewed both(sections[0], sections[1]);
    const auto nothing = []() __attribute__((always_inline)){};
    for (std::ptrdiff_t end = at + runLength; end <= last; end += runLength) {
        for (; at + 4 < end; at += 4)
            f = samples.advanceGroup(both, f, at, nothing);
        const auto changeFirst = [&]() __attribute__((always_inline)) {
            loadNext(0);
            both.takeCoefficients(sections[0], sections[1]);
        };
        f = samples.advanceGroup(both, f, at, changeFirst);
        at += 4;
        loadNext(1);
        both.takeCoefficients(sections[0], sections[1]);
    }
    for (; at + 4 <= last; at += 4)
        f = samples.advanceGroup(both, f, at, nothing);
    for (; at < last; ++at)
        f = samples.advanceOne(both, f, at);
    both.storeTo(sections[0], sections[1]);
    using V2 = Skewed::V2;
    const V2 end(V2::Raw{static_cast<double>(f[0]), static_cast<double>(f[1])});
    S::store(sections[1].advance(end), lanes, at);
}

/// One register of four doubles for two channels and two sections.
inline constexpr bool canSkew = simd::CINDER_SIMD_SET::registerBytes >= 32;

/// Whether runs are long enough to gain by it: each begins and ends with a single section.
CINDER_LANES bool paysToSkew(const BiquadRun* runs, int numRuns) {
    constexpr int longEnough = 16;
    int numSamples = 0;
    for (const BiquadRun* run = runs; run != runs + numRuns; ++run)
        numSamples += run->numSamples;
    return numSamples >= numRuns * longEnough;
}

/// `count` sections, the first of them number `first`, in one pass over all runs.
template <int numLanes, int count, bool skewed>
CINDER_LANES void cascade(const BiquadLane* lanes, const BiquadRun* runs, int numRuns, int first) {
    Section<numLanes> sections[count];
    for (int s = 0; s < count; ++s)
        sections[s].loadState(States<numLanes>(lanes, first + s).ofLane);
    std::ptrdiff_t at = 0;
    for (const BiquadRun* run = runs; run != runs + numRuns; ++run) {
        for (int s = 0; s < count; ++s)
            sections[s].loadCoefficients([&](int lane) __attribute__((always_inline)) {
                return run->coefficients[lane][first + s];
            });
        if constexpr (skewed) {
            if (run->numSamples > 0)
                runSkewed(sections, lanes, at, run->numSamples, run->numSamples, [](int) {});
        } else {
            advanceAll<numLanes, count>(sections, lanes, at, at + run->numSamples);
        }
        at += run->numSamples;
    }
    for (int s = 0; s < count; ++s)
        sections[s].storeState(States<numLanes>(lanes, first + s).ofLane);
}

template <int numLanes>
void run(const BiquadLane* lanes, const BiquadRun* runs, int numRuns, int firstSection,
         int numSections) noexcept {
    BiquadLane own[numLanes];  // a copy, which overlaps nothing that is written
    for (int lane = 0; lane < numLanes; ++lane)
        own[lane] = lanes[lane];
    constexpr bool skewable = canSkew && numLanes == 2;
    const bool skews = skewable && paysToSkew(runs, numRuns);
    const int end = firstSection + numSections;
    for (int s = firstSection; s < end; s += 2) {
        if (s + 1 == end)
            cascade<numLanes, 1, false>(own, runs, numRuns, s);
        else if (skews)
            cascade<numLanes, 2, skewable>(own, runs, numRuns, s);
        else
            cascade<numLanes, 2, false>(own, runs, numRuns, s);
        for (BiquadLane& lane : own)
            lane.input = lane.output;
    }
}

template <int count>
CINDER_LANES void runStepsTogether(const BiquadLane* lanes, const BiquadStep* steps,
                                   std::ptrdiff_t runLength, std::ptrdiff_t numSamples) {
    Section<2> sections[count];
    const BiquadCoefficients* next[count];
    const auto loadNext = [&](int s) __attribute__((always_inline)) {
        sections[s].loadCoefficients([&](int) __attribute__((always_inline)) { return *next[s]; });
        next[s] += steps[s].stride;
    };
    for (int s = 0; s < count; ++s) {
        sections[s].loadState(steps[s].states);
        next[s] = steps[s].coefficients;
    }
    if constexpr (canSkew && count == 2) {
        loadNext(0);
        loadNext(1);
        runSkewed(sections, lanes, 0, numSamples, runLength, loadNext);
    } else {
        for (std::ptrdiff_t at = 0; at < numSamples; at += runLength) {
            for (int s = 0; s < count; ++s)
                loadNext(s);
            const std::ptrdiff_t end = at + runLength;
            advanceAll<2, count>(sections, lanes, at, end < numSamples ? end : numSamples);
        }
    }
    for (int s = 0; s < count; ++s)
        sections[s].storeState(steps[s].states);
}

void runSteps(const BiquadLane* lanes, const BiquadStep* steps, int numSteps, int runLength,
              int numSamples) noexcept {
    if (numSamples <= 0) return;
    BiquadLane own[] = {lanes[0], lanes[1]};
    for (const BiquadStep* const end = steps + numSteps; steps < end; steps += 2) {
        if (steps + 1 < end)
            runStepsTogether<2>(own, steps, runLength, numSamples);
        else
            runStepsTogether<1>(own, steps, runLength, numSamples);
        for (BiquadLane& lane : own)
            lane.input = lane.output;
    }
}

/// The obvious form, which the others must agree with.
void runPlain(const BiquadLane* lanes, const BiquadRun* runs, int numRuns, int firstSection,
              int numSections) noexcept {
    const float* in = lanes->input;
    float* const out = lanes->output;
    for (int s = firstSection; s < firstSection + numSections; ++s, in = out) {
        BiquadState state = lanes->states[s];
        std::ptrdiff_t i = 0;
        for (const BiquadRun* run = runs; run != runs + numRuns; ++run) {
            const BiquadCoefficients c = run->coefficients[0][s];
            for (const std::ptrdiff_t end = i + run->numSamples; i < end; ++i) {
                const double x = static_cast<double>(in[i]);
                double y = mulAdd(c.b0, x, mulAdd(c.b1, state.x1, c.b2 * state.x2));
                y = mulAdd(-c.a1, state.y1, mulAdd(-c.a2, state.y2, y));
                state = {x, state.x1, y, state.y1};
                out[i] = static_cast<float>(y);
            }
        }
        lanes->states[s] = state;
    }
}

}  // namespace

constinit const BiquadKernels biquadKernels = {runPlain, run<1>, run<2>, runSteps};

}  // namespace cinder::CINDER_SIMD_SET
