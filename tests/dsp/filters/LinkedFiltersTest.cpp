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
            test::turn(filter.gain, 9.0f);
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

    /// Runs blocks of any lengths, pulled in any order.
    bool run(Rng& rng, int numSamples) {
        bool same = true;
        for (const int n : rng.pieces(numSamples, 256))
            same = same && agree(n, rng.integer(0, 1));
        return same;
    }
    template <typename Change>
    void both(int channel, Change change) {
        change(linked[channel]);
        change(plain[channel]);
    }
    void enable(int channel, bool isEnabled) {
        both(channel, [=](EQFilter& filter) { filter.enabled = isEnabled; });
    }
    bool isShared() const { return linked[0].getLinkMode() == LinkMode::Shared; }

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

TEST_CASE("Linked filters: the bits of two plain ones, whichever is pulled, off, on or reset") {
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
                    const bool isSeparate = mode == LinkMode::Separate;
                    for (int c = 0; c < 2; ++c)
                        rig.both(c, [&](EQFilter& filter) {
                            filter.shape = shape;
                            // Apart, no two sections need have a partner to run beside.
                            filter.slope =
                                isSeparate && c == 1 ? FilterSlope::Poles4 : FilterSlope::Poles6;
                        });
                    CHECK(rig.run(rng, 4000));
                    // Apart, one that is off runs on beside the other: it stays dry, but comes back
                    // with another state than one that rested.
                    if (isSeparate) {
                        rig.enable(0, false);
                        CHECK(rig.run(rng, 3000));
                        CHECK(rig.linked[0].getLinkMode() == mode);
                    }
                    for (int i = 0; i < 30 && !isSeparate; ++i) {
                        const bool isOn = rng.integer(0, 1) == 1, isReset = rng.integer(0, 4) == 0;
                        rig.both(rng.integer(0, 1), [&](EQFilter& filter) {
                            filter.enabled = isOn;
                            if (isReset) filter.reset();
                        });
                        CHECK(rig.run(rng, rng.integer(1, 1500)));
                    }
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

TEST_CASE("Linked filters: come apart while one is off, and find together") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    PairRig rig(rng, LinkMode::Shared, wobble(0.002f));
    rig.enable(1, false);
    CHECK(rig.run(rng, 2000));
    CHECK(!rig.isShared());
    rig.enable(1, true);
    CHECK(rig.run(rng, 600));  // still fading
    CHECK(!rig.isShared());
    CHECK(rig.run(rng, 600));
    CHECK(rig.isShared());

    rig.enable(0, false);  // both at once: together all along
    rig.enable(1, false);
    CHECK(rig.run(rng, 500));
    CHECK(rig.isShared());
    CHECK(rig.run(rng, 2000));
    CHECK(rig.linked[1].getOutput() == rig.inputs[1].getOutput());
    rig.enable(0, true);
    rig.enable(1, true);
    CHECK(rig.run(rng, 2000));
    CHECK(rig.isShared());
}

TEST_CASE("Linked filters: one that nobody pulls while both are off starts anew afterwards") {
    Rng rng(4);
    PairRig rig(rng, LinkMode::Shared, {9.0f});
    const auto runBlocks = [&](bool isEnabled, int numBlocks) {
        for (const int c : {0, 1})
            rig.enable(c, isEnabled);
        for (int i = 0; i < numBlocks; ++i)
            CHECK(rig.agree(64, 0));
    };
    runBlocks(true, 1);
    runBlocks(false, 14);  // until the fade has ended, in a block that both run
    for (int i = 0; i < 5; ++i) {
        rig.environment.beginBlock();
        rig.both(0, [](EQFilter& filter) { filter.pull(64); });
        rig.environment.render(64, 0);
    }
    runBlocks(true, 20);
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

}  // namespace
}  // namespace cinder
