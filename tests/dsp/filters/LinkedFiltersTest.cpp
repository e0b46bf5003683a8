#include <doctest/doctest.h>

#include <algorithm>

#include "dsp/filters/EQFilter.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::Rng;
using test::SignalSource;
using LinkMode = BiquadFilter::LinkMode;

/// Two channels of noise through two filters that are linked, and through two that are not.
struct PairRig {
    PairRig(Rng& rng, LinkMode mode, const std::vector<float>& log2Hz)
        : inputs{SignalSource(&environment, rng.noise(20000)),
                 SignalSource(&environment, rng.noise(20000))},
          control(&environment, log2Hz) {
        for (int c = 0; c < 4; ++c) {
            EQFilter& filter = c < 2 ? linked[c] : plain[c - 2];
            filter.setInput(&inputs[c % 2]);
            filter.frequency.setSource(&control);
            filter.gain.getParameter().setValue(9.0f, 0.0f);
        }
        linked[0].setPartner(&linked[1]);
        linked[1].link(mode);
    }
    /// Runs a block; the pair's filter number `first` is pulled first. Whether all bits agree.
    bool agree(int numSamples, int first) {
        test::RealtimeGuard guard;
        environment.beginBlock();
        bool same = true;
        for (const int c : {first, 1 - first}) {
            const float* const a = linked[c].pull(numSamples)->data();
            const float* const b = plain[c].pull(numSamples)->data();
            same = same && std::equal(a, a + numSamples, b);
        }
        environment.render(numSamples, 0);
        return same;
    }

    wave::Environment environment;
    SignalSource inputs[2];
    SignalSource control;
    EQFilter linked[2] = {EQFilter(&environment), EQFilter(&environment)};
    EQFilter plain[2] = {EQFilter(&environment), EQFilter(&environment)};
};

std::vector<float> wobble(float perSample) {
    std::vector<float> log2Hz;
    for (int i = 0; i < 1024; ++i)
        log2Hz.push_back(8.0f + perSample * static_cast<float>(std::abs(i - 512)));
    return log2Hz;
}

TEST_CASE("Linked filters: the bits of two plain ones, whichever is pulled first") {
    Rng rng = Rng::fromEnvironment();
    for (const simd::InstructionSet set : simd::supportedSets())
        for (const LinkMode mode : {LinkMode::Shared, LinkMode::Separate})
            for (const FilterShape shape : {FilterShape::Bell, FilterShape::HighPass})
                for (const float perSample : {0.0f, 0.002f, 0.012f}) {
                    INFO(simd::nameOf(set) << ", mode " << static_cast<int>(mode) << ", shape "
                                           << static_cast<int>(shape) << ", " << perSample
                                           << " octaves a sample, seed " << rng.seed());
                    simd::ScopedInstructionSet scope(set);
                    PairRig rig(rng, mode, wobble(perSample));
                    for (EQFilter* filter :
                         {rig.linked, rig.linked + 1, rig.plain, rig.plain + 1}) {
                        filter->shape = shape;
                        filter->slope = FilterSlope::Poles6;
                    }
                    bool same = true;
                    for (const int n : rng.pieces(8000, 256))
                        same = same && rig.agree(n, rng.integer(0, 1));
                    CHECK(same);
                }
}

TEST_CASE("Linked filters: one pull does the work of both") {
    Rng rng(1);
    PairRig rig(rng, LinkMode::Shared, {9.0f});
    rig.environment.beginBlock();
    rig.linked[1].pull(64);
    CHECK(rig.inputs[0].renders == 1);
    CHECK(rig.linked[0].getLastBlockId() == rig.environment.getBlockId());
    const wave::BasicBlock<float>* const ready = rig.linked[0].getOutput();
    CHECK(rig.linked[0].pull(64) == ready);

    rig.linked[0].unlink();
    CHECK(rig.linked[1].getLinkMode() == LinkMode::None);
    rig.environment.render(64, 0);
    rig.environment.beginBlock();
    rig.linked[1].pull(64);
    CHECK(rig.inputs[0].renders == 1);
}

TEST_CASE("Linked filters: come apart while one is off, and find together, to the bit") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    PairRig rig(rng, LinkMode::Shared, wobble(0.002f));
    const auto run = [&](int numSamples) {
        bool same = true;
        for (const int n : rng.pieces(numSamples, 200))
            same = same && rig.agree(n, rng.integer(0, 1));
        return same;
    };
    const auto setEnabled = [&](int channel, bool isEnabled) {
        rig.linked[channel].enabled = isEnabled;
        rig.plain[channel].enabled = isEnabled;
    };
    const auto isLinked = [&] { return rig.linked[0].getLinkMode() == LinkMode::Shared; };
    CHECK(run(500));
    CHECK(isLinked());

    setEnabled(1, false);
    CHECK(run(2000));
    CHECK(!isLinked());
    setEnabled(1, true);
    CHECK(run(600));  // still fading
    CHECK(!isLinked());
    CHECK(run(600));
    CHECK(isLinked());

    setEnabled(0, false);  // both at once: together all along
    setEnabled(1, false);
    CHECK(run(500));
    CHECK(isLinked());
    CHECK(run(2000));
    CHECK(rig.linked[1].getOutput() == rig.inputs[1].getOutput());
    setEnabled(0, true);
    setEnabled(1, true);
    CHECK(run(2000));
    CHECK(isLinked());

    for (int i = 0; i < 40; ++i) {
        setEnabled(rng.integer(0, 1), rng.integer(0, 1) == 1);
        if (rng.integer(0, 4) == 0) {
            const int channel = rng.integer(0, 1);
            rig.linked[channel].reset();
            rig.plain[channel].reset();
        }
        CHECK(run(rng.integer(1, 1500)));
    }
}

TEST_CASE("Linked filters: one that nobody pulls while both are off starts anew afterwards") {
    Rng rng(4);
    PairRig rig(rng, LinkMode::Shared, {9.0f});
    const auto setEnabled = [&](bool isEnabled) {
        for (int c = 0; c < 2; ++c) {
            rig.linked[c].enabled = isEnabled;
            rig.plain[c].enabled = isEnabled;
        }
    };
    CHECK(rig.agree(64, 0));
    setEnabled(false);
    for (int i = 0; i < 14; ++i)  // until the fade has ended, in a block that both run
        CHECK(rig.agree(64, 0));
    for (int i = 0; i < 5; ++i) {
        rig.environment.beginBlock();
        rig.linked[0].pull(64);
        rig.plain[0].pull(64);
        rig.environment.render(64, 0);
    }
    setEnabled(true);
    for (int i = 0; i < 20; ++i)
        CHECK(rig.agree(64, 0));
}

TEST_CASE("Linked filters: a link made in the middle of a cycle waits for the next") {
    Rng rng(6);
    PairRig rig(rng, LinkMode::None, {9.0f});
    for (int block = 0; block < 3; ++block) {
        rig.environment.beginBlock();
        for (EQFilter* filters : {rig.linked, rig.plain}) {
            const float* const first = filters[1].pull(64)->data();
            const std::vector<float> before(first, first + 64);
            if (filters == rig.linked) filters[0].link(LinkMode::Shared);
            filters[0].pull(64);
            CHECK(std::equal(before.begin(), before.end(), first));
        }
        const float* const out = rig.linked[0].getOutput()->data();
        CHECK(std::equal(out, out + 64, rig.plain[0].getOutput()->data()));
        rig.environment.render(64, 0);
        rig.linked[0].unlink();
    }
}

TEST_CASE("Linked filters: a link that was cleared does not come back, nor one to what is gone") {
    Rng rng(2);
    PairRig rig(rng, LinkMode::Shared, {9.0f});
    rig.linked[0].enabled = false;
    rig.agree(64, 0);
    rig.linked[0].link(LinkMode::None);
    rig.linked[0].enabled = true;
    for (int i = 0; i < 40; ++i)
        rig.agree(64, 0);
    CHECK(rig.linked[0].getLinkMode() == LinkMode::None);
    {
        EQFilter third(&rig.environment);
        third.setPartner(&rig.linked[0]);
        CHECK(rig.linked[1].getPartner() == nullptr);
        third.link(LinkMode::Shared);
        CHECK(rig.linked[0].getLinkMode() == LinkMode::Shared);
    }
    CHECK(rig.linked[0].getPartner() == nullptr);
    CHECK(rig.linked[0].getLinkMode() == LinkMode::None);
}

TEST_CASE("Linked filters: with coefficients of their own, one that is off stays exactly dry") {
    Rng rng(3);
    PairRig rig(rng, LinkMode::Separate, {9.0f});
    rig.linked[1].slope = FilterSlope::Poles4;  // and no two sections that could run side by side
    rig.plain[1].slope = FilterSlope::Poles4;
    CHECK(rig.agree(100, 0));
    rig.linked[0].enabled = false;
    rig.plain[0].enabled = false;
    for (int i = 0; i < 20; ++i)
        CHECK(rig.agree(100, i % 2));
    CHECK(rig.linked[0].getLinkMode() == LinkMode::Separate);
}

}  // namespace
}  // namespace cinder
