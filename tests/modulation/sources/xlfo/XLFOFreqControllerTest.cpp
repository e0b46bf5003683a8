#include "modulation/sources/xlfo/XLFOFreqController.h"

#include <doctest/doctest.h>

#include <cmath>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "support/Rng.h"
#include "support/StageRig.h"

using namespace cinder;
using namespace cinder::test;

namespace {

constexpr double rate = 48000.0;

/// A host that plays a song: tells where it is, then renders.
struct SongRig {
    SongRig() { environment.setSampleRate(static_cast<float>(rate)); }

    /// Plays a host block, in the pieces that notes cut it to.
    void play(const std::vector<int>& pieces) {
        controller.setTempo(static_cast<float>(tempo), static_cast<float>(position));
        out = playPieces(environment, xlfo, pieces);
        position += static_cast<double>(out.size()) * tempo / 60.0 / rate;
    }
    void inStep(SyncMode mode) { controller.syncMode = mode; }

    double tempo = 120.0, position = 0.0;
    std::vector<float> out;
    wave::Environment environment;
    SignalSource modulated{&environment, 3.0f};
    XLFO xlfo{&environment};
    XLFOFreqController controller{&xlfo, &modulated};
};

double distance(double a, double b) {
    return std::abs(std::remainder(a - b, 1.0));
}

}  // namespace

TEST_CASE("XLFOFreqController: follows the target when free, the tempo in step") {
    SongRig rig;
    rig.play({64});
    CHECK(rig.controller.getOutput() == rig.modulated.getOutput());
    CHECK(rig.controller.isConstant());

    const float bars[] = {0.0f, 16.0f, 8.0f,   4.0f,    2.0f,     1.0f,
                          0.5f, 0.25f, 0.125f, 0.0625f, 0.03125f, 0.015625f};
    for (int mode = 1; mode < static_cast<int>(std::size(bars)); ++mode) {
        SongRig song;
        song.inStep(static_cast<SyncMode>(mode));
        song.play({64});
        CHECK((*song.controller.getOutput())[63] == doctest::Approx(0.5f / bars[mode]));
        CHECK(song.controller.isConstant());
        CHECK(song.modulated.renders == 0);
        song.tempo = 0.0;  // a host without a tempo
        for (int i = 0; i < 300; ++i)
            song.play({64});
        CHECK((*song.controller.getOutput())[0] == doctest::Approx(0.5f / bars[mode]));
    }
    rig.inStep(SyncMode::Bar);
    rig.controller.setTempo(std::numeric_limits<float>::quiet_NaN(), 1.0f);
    rig.controller.setTempo(120.0f, std::numeric_limits<float>::infinity());
    rig.play({64});
    CHECK((*rig.controller.getOutput())[0] == 0.5f);
}

TEST_CASE("XLFOFreqController: the song's position is the place in the cycle") {
    SongRig rig;
    rig.inStep(SyncMode::Bar);
    for (const double position : {4.0, 5.0, 4.0, 131.0, -1.0}) {
        rig.position = position;
        rig.play({64});
        CHECK(distance(rig.xlfo.getBasePhase(), position / 4.0 + 64 * 0.5 / rate) < 1e-6);
    }
    turn(rig.controller.offset, 2.0f);
    rig.position = 5.0;
    rig.play({64});
    CHECK(distance(rig.xlfo.getBasePhase(), 0.5 + 64 * 1.0 / rate) < 1e-6);

    // A mode that is chosen after the host has told its position is in force with its first sample.
    rig.controller.setTempo(120.0f, 5.0f);
    playPieces(rig.environment, rig.xlfo, {240});
    for (const SyncMode mode : {SyncMode::Free, SyncMode::Bar4th, SyncMode::Bars2}) {
        rig.inStep(mode);
        playPieces(rig.environment, rig.xlfo, {1});
    }
    const double song = 5.0 + 242 * 2.0 / rate;
    CHECK(distance(rig.xlfo.getBasePhase(), song / 8.0 * 2.0 + 0.5 / rate) < 1e-6);
    CHECK((*rig.controller.getOutput())[0] == 0.5f);
    rig.inStep(SyncMode::Bar);

    // While the offset moves, the phase does not race after it.
    rig.controller.offset.assign(1.0f);
    for (int i = 0; i < 5; ++i) {
        const double before = rig.xlfo.getBasePhase();
        rig.position += 0.7;
        rig.play({64});
        CHECK(!rig.controller.isConstant());
        CHECK(distance(rig.xlfo.getBasePhase(), before) < 64 * 1.01 / rate);
    }
}

TEST_CASE("XLFO: a note starts the cycle at its sample, and it stays there in step with the song") {
    SongRig rig;
    rig.inStep(SyncMode::Bar4th);
    for (int i = 0; i < 40; ++i)
        rig.play({256, 256});
    // A note in the middle of a host's block: the host has told the position of its start.
    for (const bool jumps : {false, true}) {
        if (jumps) rig.position = 2.2;  // with the block that has the note as its first sample
        rig.controller.setTempo(static_cast<float>(rig.tempo), static_cast<float>(rig.position));
        if (!jumps) playPieces(rig.environment, rig.xlfo, {100});
        rig.xlfo.trigger(true);
        playPieces(rig.environment, rig.xlfo, {256, jumps ? 256 : 156});
        rig.position += 512 * rig.tempo / 60.0 / rate;
        double sinceNote = jumps ? 512 : 412;
        for (int i = 0; i < 500; ++i) {
            CHECK(distance(rig.xlfo.getBasePhase(), sinceNote * 2.0 / rate) < 1e-5);
            rig.play({256, 256});
            sinceNote += 512;
        }
    }
    // One that is not for this XLFO gives the song its bars back.
    rig.xlfo.trigger(false);
    rig.play({256});
    CHECK(distance(rig.xlfo.getBasePhase(), rig.position) < 1e-5);
}

TEST_CASE("XLFO: the rounding of a song's position never plays the end of a step again") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    SongRig rig;
    rig.inStep(SyncMode::Bar32nd);
    rig.position = 3000.0;  // two positions that a float can tell lie 6 samples apart
    // Where the steps begin at round places, no rounding crosses a border.
    rig.xlfo.numSteps = 5;
    for (int i = 0; i < 5; ++i)
        rig.xlfo.steps[static_cast<std::size_t>(i)].value.assign(static_cast<float>(i) * 0.2f);
    float before = 0.0f;
    for (int block = 0; block < 20000; ++block) {
        rig.play({rng.integer(1, 64)});
        for (const float y : rig.out) {
            // Up by one step, or from the last to the first; never down by one.
            if (y < before - 0.001f) CHECK(y < 0.15f);
            before = y;
        }
    }
}
