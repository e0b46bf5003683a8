#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include "distortion/curves/Clip.h"
#include "distortion/drive/FunctionTableClipper.h"
#include "distortion/drive/SoftClipper.h"
#include "modulation/sources/dynamics/SignalRig.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::evenPieces;
using test::pullPieces;
using test::Rng;
using test::Signal;
using test::turn;

struct StyleRow {
    const char* name;
    int curve;
    float power, negativeScale, driveMinDb, driveMaxDb, referenceLevelDb, outputDb;
    double worstDb;  // that the tables may cost
};
constexpr StyleRow symmetricRows[] = {
    {"tape", sineCurve, 1.0f, 1.0f, -6.0f, 24.0f, -18.0f, 0.0f, 0.001},
    {"amp", arcTangentCurve, 0.8f, 1.0f, 24.0f, 60.0f, -40.0f, 17.0f, 0.001},
    {"heavy", divisionByMagnitudeCurve, 1.0f, 1.0f, -2.0f, 72.0f, -32.0f, 3.0f, 0.0025},
    {"none", noCurve, 1.0f, 1.0f, -40.0f, 70.0f, 0.0f, -40.0f, 0.006},
};

ClipperStyle made(const StyleRow& row) {
    ClipperStyle style;
    makeStyle(style, row.curve, row.power, row.negativeScale, row.driveMinDb, row.driveMaxDb,
              row.referenceLevelDb, row.outputDb);
    return style;
}

double decibels(double gain) {
    return 20.0 * std::log10(gain);
}

/// Whole turns with a sample on either peak.
std::vector<float> sine(double peakDb, int numSamples = 64) {
    std::vector<float> samples;
    for (int i = 0; i < numSamples; ++i)
        samples.push_back(static_cast<float>(std::pow(10.0, peakDb / 20.0) *
                                             std::sin(2.0 * std::numbers::pi * i / 32.0)));
    return samples;
}

struct ClipperRig {
    explicit ClipperRig(const ClipperStyle& style, std::vector<float> samples, int factor = 1)
        : input(&environment, std::move(samples)) {
        converterStyle.setFactor(factor);
        clipper.setInput(&input);
        clipper.setStyle(&style);
    }
    wave::Environment environment;
    sr::IIRConverterStyle converterStyle{&environment};
    Signal input;
    FunctionTableClipper clipper{&converterStyle};
};

TEST_CASE("Clipper: the reference level stays where it is, at every drive") {
    for (const StyleRow& row : symmetricRows) {
        const ClipperStyle style = made(row);
        const auto level = static_cast<double>(row.referenceLevelDb);
        double worst = 0.0;
        for (int step = 0; step <= 1000; ++step) {
            ClipperRig rig(style, sine(level));
            turn(rig.clipper.drive, static_cast<float>(step) / 1000.0f);
            const auto out = pullPieces(rig.environment, rig.clipper, {64});
            for (const float peak : {std::ranges::max(out), -std::ranges::min(out)})
                worst = std::max(worst, std::abs(decibels(static_cast<double>(peak)) - level -
                                                 static_cast<double>(row.outputDb)));
        }
        INFO(std::string(row.name) << ", off by " << worst << " dB");
        CHECK(worst < row.worstDb);
    }
}

TEST_CASE("Clipper: a curve that rectifies spans from 0 to twice the level") {
    ClipperStyle style;
    makeStyle(style, rectifyCurve, 1.0f, 1.0f, 0.0f, 75.0f, -32.0f, -1.5f);
    ClipperRig rig(style, sine(-32.0));
    turn(rig.clipper.drive, 0.4f);
    const auto out = pullPieces(rig.environment, rig.clipper, {64});
    CHECK(decibels(static_cast<double>(std::ranges::max(out) / 2.0f)) ==
          doctest::Approx(-33.5).epsilon(1e-4));
    CHECK(std::ranges::min(out) == 0.0f);
}

TEST_CASE("Clipper: a drive in motion has the gains of every place it passes") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const ClipperStyle style = made(symmetricRows[2]);
    const float beyond[] = {-1.0f, 7.5f, std::numeric_limits<float>::quiet_NaN()};
    std::vector<float> drives = rng.noise(512);
    for (float& drive : drives)
        drive = 0.5f + 0.5f * drive;
    std::ranges::copy(beyond, drives.begin());
    const std::vector<float> samples = rng.noise(512);

    ClipperRig moving(style, samples);
    Signal control(&moving.environment, drives);
    moving.clipper.drive.setSource(&control);
    const auto out = pullPieces(moving.environment, moving.clipper, rng.pieces(512, 256));
    ClipperRig standing(style, samples);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const float limited = i == 1 ? 1.0f : i < 3 ? 0.0f : drives[i];
        turn(standing.clipper.drive, limited);
        REQUIRE(pullPieces(standing.environment, standing.clipper, {1})[0] == out[i]);
    }
}

/// Two channels through two stages that are linked, and through two that are not.
template <class Stage>
struct PairRig {
    PairRig(Rng& rng, const ClipperStyle& clipperStyle)
        : inputs{Signal(&environment, rng.noise(6000)), Signal(&environment, rng.noise(6000))},
          drives{Signal(&environment, rng.noise(6000)),
                 Signal(&environment, std::vector<float>{0.7f}, true)} {
        for (int c = 0; c < 4; ++c) {
            stages.push_back(makeStage());
            Stage& stage = *stages.back();
            stage.setInput(&inputs[c % 2]);
            if constexpr (std::is_same_v<Stage, FunctionTableClipper>) {
                stage.setStyle(&clipperStyle);
                stage.drive.setSource(&drives[c % 2]);
            }
        }
        stages[0]->setPartner(stages[1].get());
        stages[1]->link();
    }
    std::unique_ptr<Stage> makeStage() {
        if constexpr (std::is_same_v<Stage, FunctionTableClipper>)
            return std::make_unique<Stage>(&converterStyle);
        else
            return std::make_unique<Stage>(&environment, &converterStyle);
    }
    /// Runs a block; number `first` of the pair is pulled first. Whether all bits agree.
    bool agree(int numSamples, int first) {
        test::RealtimeGuard guard;
        environment.beginBlock();
        bool same = true;
        for (const int c : {first, 1 - first}) {
            const float* const a = stages[static_cast<std::size_t>(c)]->pull(numSamples)->data();
            const float* const b =
                stages[static_cast<std::size_t>(c) + 2]->pull(numSamples)->data();
            same = same && std::equal(a, a + numSamples, b);
        }
        environment.render(numSamples, 0);
        return same;
    }

    wave::Environment environment;
    sr::IIRConverterStyle converterStyle{&environment};
    Signal inputs[2];
    Signal drives[2];
    std::vector<std::unique_ptr<Stage>> stages;
};

TEST_CASE_TEMPLATE("Linked stages: the bits of two plain ones, through whatever happens", Stage,
                   FunctionTableClipper, SoftClipper) {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const ClipperStyle style = made(symmetricRows[1]);
    for (const simd::InstructionSet set : simd::supportedSets()) {
        simd::ScopedInstructionSet scope(set);
        PairRig<Stage> rig(rng, style);
        bool same = true;
        for (const int n : rng.pieces(6000, 256)) {
            if (rng.integer(0, 3) == 0) rig.converterStyle.setFactor(1 << rng.integer(0, 3));
            if (rng.integer(0, 5) == 0) rig.stages[0]->unlink();
            if (rng.integer(0, 2) == 0) rig.stages[1]->link();
            if (const int c = rng.integer(0, 19); c < 2) {
                rig.stages[static_cast<std::size_t>(c)]->reset();
                rig.stages[static_cast<std::size_t>(c) + 2]->reset();
            }
            same = same && rig.agree(n, rng.integer(0, 1));
        }
        CHECK_MESSAGE(same, simd::nameOf(set));
    }
}

TEST_CASE("Linked stages: one pull does the work of both, and partners come apart cleanly") {
    Rng rng(1);
    const ClipperStyle style = made(symmetricRows[0]);
    PairRig<FunctionTableClipper> rig(rng, style);
    rig.converterStyle.setFactor(8);
    const auto isReady = [&] {
        rig.environment.render(64, 0);
        rig.environment.beginBlock();
        rig.stages[1]->pull(64);
        return rig.stages[0]->getLastBlockId() == rig.environment.getBlockId();
    };
    CHECK(isReady());
    rig.stages[0]->unlink();
    CHECK(!isReady());
    rig.stages[2]->setPartner(rig.stages[1].get());
    rig.stages[2]->link();
    CHECK(rig.stages[0]->getPartner() == nullptr);
    CHECK(rig.stages[1]->isLinked());
    rig.stages[2].reset();
    CHECK(rig.stages[1]->getPartner() == nullptr);
    CHECK(!rig.stages[1]->isLinked());
    CHECK(!isReady());
}

TEST_CASE("Clipper: the same bits for any cut of the block") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const ClipperStyle style = made(symmetricRows[0]);
    const std::vector<float> samples = rng.noise(2000);
    ClipperRig whole(style, samples, 8);
    ClipperRig cut(style, samples, 8);
    for (ClipperRig* rig : {&whole, &cut})
        rig->clipper.drive.assign(0.9f);  // on its way while the blocks run
    CHECK(pullPieces(whole.environment, whole.clipper, evenPieces(2000, 256)) ==
          pullPieces(cut.environment, cut.clipper, rng.pieces(2000, 100)));
}

TEST_CASE("Clipper: a drive that jumps lifts nothing that was made for another one") {
    const ClipperStyle style = made(symmetricRows[0]);
    for (const int factor : {1, 2, 8})
        for (int phase = 0; phase < 32; ++phase) {
            ClipperRig rig(style, sine(-6.0), factor);
            turn(rig.clipper.drive, 1.0f);
            pullPieces(rig.environment, rig.clipper, {256, 256, 32 + phase});
            rig.environment.reset(wave::Environment::ResetMode::MarkOnly);
            turn(rig.clipper.drive, 0.0f);
            const auto out = pullPieces(rig.environment, rig.clipper, {64, 256});
            INFO("factor " << factor << ", phase " << phase);
            const auto loud = [](float a, float b) { return std::abs(a) < std::abs(b); };
            const float first = *std::max_element(out.begin(), out.begin() + 64, loud);
            const float settled = *std::max_element(out.end() - 64, out.end(), loud);
            CHECK(std::abs(first) < 1.1f * std::abs(settled));
        }
}

TEST_CASE("SoftClipper: small signals gain 1.125, and nothing leaves the range") {
    for (const int factor : {0, 1, 8}) {  // 0: without a converter style
        wave::Environment environment;
        sr::IIRConverterStyle converterStyle(&environment);
        converterStyle.setFactor(factor);
        SoftClipper clipper(&environment, factor > 0 ? &converterStyle : nullptr);
        for (const float level : {2.0f, -1.5f, 0.001f}) {
            INFO("factor " << factor << ", level " << level);
            Signal input(&environment, {level});
            clipper.setInput(&input);
            const auto out = pullPieces(environment, clipper, evenPieces(1024, 256));
            const float expected = std::abs(level) > 1.0f ? std::copysign(1.0f, level) : 0.001125f;
            CHECK(out.back() == doctest::Approx(expected).epsilon(1e-6));
        }
    }
}

}  // namespace
}  // namespace cinder
