#include "processor/FeedbackLimit.h"

#include <doctest/doctest.h>

#include "distortion/strip/FreqToDelayConverter.h"
#include "processor/BandTargets.h"
#include "processor/ProcessorRig.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using namespace test;

struct LimitRig : ProcessorRig {
    explicit LimitRig(float sampleRate = 48000.0f) : ProcessorRig(sampleRate) {
        set("Band 1 Feedback Amount", "50");
    }
    int limit(int latency, int numBands = 1) {
        jump();
        play(silence(16));
        return longestSubBlock(*processor->getMatrix(), numBands, latency);
    }
};

}  // namespace

TEST_CASE("Feedback limit: a sub-block is as long as the shortest loop that may sound") {
    struct Case {
        float rate;
        int latency;
        std::vector<std::pair<std::string, std::string>> settings;
        int numBands, limit;
    };
    const std::pair<std::string, std::string> fast = {"Band 1 Feedback Frequency", "1000"};
    const Case cases[] = {
        {48000.0f, 0, {fast}, 1, 48},
        {48000.0f, 4, {fast}, 1, 44},
        {44100.0f, 0, {fast}, 1, 44},
        {44100.0f, 4, {fast}, 1, 40},
        {2000.0f, 0, {fast}, 1, 4},  // a loop of 2 samples
        {48000.0f, 0, {{"Band 1 Feedback Frequency", "50"}}, 1, 256},
        {48000.0f, 0, {fast, {"Band 1 Feedback Amount", "0"}}, 1, 256},
        {48000.0f,
         0,
         {{"Band 2 Feedback Amount", "1"}, {"Band 2 Feedback Frequency", "1000"}},
         1,
         192},
        {48000.0f,
         0,
         {{"Band 2 Feedback Amount", "1"}, {"Band 2 Feedback Frequency", "1000"}},
         2,
         48},
        // What a slot moves may get anywhere.
        {48000.0f,
         4,
         {{"Slot 1 Source", "XY 1 Hor"}, {"Slot 1 Target", "Band 1 Feedback Frequency"}},
         1,
         44},
        {48000.0f,
         0,
         {fast,
          {"Band 1 Feedback Amount", "0"},
          {"Slot 1 Source", "XY 1 Hor"},
          {"Slot 1 Target", "Band 1 Feedback Amount"}},
         1,
         48},
    };
    for (const Case& row : cases) {
        LimitRig rig(row.rate);
        INFO("rate " << row.rate << ", latency " << row.latency << ", limit " << row.limit);
        for (const auto& [name, text] : row.settings)
            rig.set(name, text);
        CHECK(rig.limit(row.latency, row.numBands) == row.limit);
    }
}

TEST_CASE("Feedback limit: rounding never makes a sub-block longer than the loop") {
    Rng rng = Rng::fromEnvironment();
    LimitRig rig;
    AbstractPluginParameter& frequency = rig.parameter("Band 1 Feedback Frequency");
    // At this one 158 samples less a hair round up to an even 64 in single precision.
    float log2Hz = 0x1.319fb8p+3f;
    for (int i = 0; i < 300; ++i, log2Hz = static_cast<float>(rng.real(6.0, 9.96))) {
        INFO("log2 of Hz " << log2Hz << ", seed " << rng.seed());
        frequency.setValue(log2Hz, 0);
        for (const int latency : {0, 4}) {
            const float ms = FreqToDelayConverter::delayMs(
                log2Hz, FreqToDelayConverter::msOf(latency, 48000.0f));
            const auto loop = static_cast<int>(static_cast<double>(ms) * 48.0);
            const int limit = rig.limit(latency);
            REQUIRE(limit <= std::max(loop, 4));
            REQUIRE(limit > std::min(loop, 256) - 4);
        }
    }
}

TEST_CASE("Feedback limit: holds as soon as a controller turns a loop up, mid-block too") {
    constexpr int numSamples = 4000, offset = 64;
    constexpr std::uint8_t controller = 20;
    Rng rng = Rng::fromEnvironment();
    const Channels in = {rng.noise(numSamples, 0.2f), rng.noise(numSamples, 0.2f)};
    const auto play = [&](const std::vector<int>& pieces, int eventOffset, std::uint8_t value) {
        const ProcessorRig rig;
        rig.set("Band 1 Style", "Smudge");  // no noise of its own
        rig.set("Band 1 Feedback Frequency", "1000");
        rig.jump();
        rig.processor->getControllerMapping().assign(
            controller, rig.parameter("Band 1 Feedback Amount").getId());
        rig.play(in, 500);
        rig.processor->enqueueMidiEvent({0xb0, controller, value, 0}, eventOffset);
        return rig.playPieces(in, pieces)[0];
    };
    std::vector<int> pieces = ProcessorRig::evenPieces(numSamples - offset, 40);
    pieces.insert(pieces.begin(), offset);
    const std::vector<float> whole = play({numSamples}, offset, 127);
    CHECK(differenceAt(0, play(pieces, offset, 127), whole, 0) < 1e-5f);
    CHECK(differenceAt(0, play({numSamples}, offset, 0), whole, 0) > 0.01f);  // it is heard
}

}  // namespace cinder
