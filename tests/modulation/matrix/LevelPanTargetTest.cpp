#include "modulation/matrix/LevelPanTarget.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "modulation/matrix/MatrixRig.h"

namespace cinder {
namespace {

using test::MatrixRig;

constexpr int inputGain = 0, inputPan = 1, xy1 = 0, xy2 = 1;

struct PanRig : MatrixRig {
    PanRig() { matrix.setTargetValue(inputGain, 1.0f); }

    void cycle(int n) {
        const test::RealtimeGuard guard;
        environment.beginBlock();
        for (const int channel : {0, 1})
            gains.getOutput(channel)->pull(n);
        matrix.getTargetController(inputGain)->pull(n);
        matrix.getTargetController(inputPan)->pull(n);
        environment.render(n, 0);
    }
    const float* gain(int channel) { return gains.getOutput(channel)->getOutput()->data(); }
    const wave::BasicBlock<float>* block(int target) {
        return matrix.getTargetController(target)->getOutput();
    }
    bool isConstant(int channel) { return gains.getOutput(channel)->isConstant(); }

    LevelPanTarget target{&matrix, inputGain, inputPan};
    LevelPanTarget::VoiceController gains{&target};
};

TEST_CASE("LevelPanTarget: in the middle both gains are the level's own block") {
    PanRig rig;
    for (const bool isModulated : {false, true}) {
        if (isModulated) rig.connect(0, xy2, inputGain);
        rig.cycle(64);
        for (const int channel : {0, 1}) {
            CHECK(rig.gains.getOutput(channel)->getOutput() == rig.block(inputGain));
            CHECK(rig.isConstant(channel) == !isModulated);
        }
    }
}

TEST_CASE("LevelPanTarget: pan turns one side down to silence and moves without a step") {
    PanRig rig;
    rig.cycle(16);
    float last[2] = {1.0f, 1.0f};
    float largestStep = 0.0f;
    for (const float pan : {1.0f, 0.0f, -1.0f, 0.25f, 0.0f}) {
        rig.matrix.setTargetValue(inputPan, pan);
        for (int cycle = 0; cycle < 150; ++cycle) {
            rig.cycle(50);
            for (const int channel : {0, 1})
                for (int i = 0; i < 50; ++i) {
                    const float x = rig.gain(channel)[i];
                    largestStep = std::max(largestStep, std::abs(x - last[channel]));
                    last[channel] = x;
                }
        }
        CAPTURE(pan);
        CHECK(last[0] == 1.0f - std::max(pan, 0.0f));
        CHECK(last[1] == 1.0f + std::min(pan, 0.0f));
    }
    CHECK(largestStep < 1.0f / 800);  // the shortest ramp has 882 samples
}

TEST_CASE("LevelPanTarget: while the level moves in the middle, both gains move with it") {
    PanRig rig;
    rig.cycle(64);
    rig.matrix.setTargetValue(inputGain, 3.0f);
    for (int cycle = 0; cycle < 40; ++cycle) {
        rig.cycle(200);
        for (const int channel : {0, 1})
            CHECK(std::equal(rig.gain(channel), rig.gain(channel) + 200,
                             rig.block(inputGain)->data()));
    }
}

TEST_CASE("LevelPanTarget: modulated gains follow the formula at each sample") {
    for (const int source : {0, 1}) {  // a constant and one that moves
        CAPTURE(source);
        PanRig rig;
        rig.matrix.setTargetValue(inputPan, 0.1f);
        rig.connect(0, source, inputPan, 0.4f);
        rig.connect(1, xy1, inputGain, 0.001f);
        for (const int n : {64, 3, 256}) {
            rig.cycle(n);
            for (int i = 0; i < n; ++i) {
                const float level = (*rig.block(inputGain))[i], pan = (*rig.block(inputPan))[i];
                CHECK(rig.gain(0)[i] ==
                      doctest::Approx(static_cast<double>(level - std::max(pan, 0.0f) * level)));
                CHECK(rig.gain(1)[i] ==
                      doctest::Approx(static_cast<double>(level + std::min(pan, 0.0f) * level)));
            }
            CHECK(rig.isConstant(0) == (source == 0));
        }
    }
}

}  // namespace
}  // namespace cinder
