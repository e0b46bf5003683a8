#include "processor/ProcessorRig.h"

#include <doctest/doctest.h>

#include <atomic>
#include <limits>
#include <sstream>
#include <thread>

#include "state/BinaryData.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using namespace test;

/// Anything may happen to any parameter, at any time, in blocks of any length.
struct RandomPlayer {
    RandomPlayer(float rate, std::uint64_t seed) : rig(rate), rng(seed) {}

    void moveSomething() {
        AbstractPluginParameter& parameter = *rig.processor->parameter(rng.integer(0, 898));
        parameter.setValue(parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0))), 0);
    }
    Channels playBlock(int numSamples) {
        for (int n = rng.integer(0, 6); n > 0; --n)
            moveSomething();
        if (rng.integer(0, 9) == 0)
            rig.processor->enqueueMidiEvent({static_cast<std::uint8_t>(rng.integer(128, 255)),
                                             static_cast<std::uint8_t>(rng.integer(0, 127)),
                                             static_cast<std::uint8_t>(rng.integer(0, 127)), 0},
                                            rng.integer(0, numSamples));
        rig.processor->setTransport(static_cast<float>(rng.real(20.0, 300.0)), position += 0.01f);
        Channels in;
        for (int c = 0; c < 4; ++c)
            in.push_back(rng.noise(numSamples, 0.9f));
        return rig.playPieces(in, {numSamples});
    }

    ProcessorRig rig;
    Rng rng;
    float position = 0.0f;
};

}  // namespace

TEST_CASE("CinderProcessor: random automation of everything stays finite, bounded and the same") {
    const std::uint64_t seed = Rng::fromEnvironment().seed();
    for (const float rate : {44100.0f, 48000.0f, 96000.0f, 192000.0f}) {
        INFO("rate " << rate << ", seed " << seed);
        RandomPlayer player(rate, seed), again(rate, seed);
        float peak = 0.0f;
        bool isFinite = true;
        for (int block = 0; block < 250; ++block) {
            const Channels out = player.playBlock(player.rng.integer(1, 600));
            REQUIRE(again.playBlock(again.rng.integer(1, 600)) == out);
            for (const auto& channel : out)
                for (const float sample : channel) {
                    isFinite = isFinite && std::isfinite(sample);
                    peak = std::max(peak, std::abs(sample));
                }
        }
        CHECK(isFinite);
        CHECK(peak < 4.0f);
    }
}

TEST_CASE("CinderProcessor: what the host brings cannot harm it") {
    ProcessorRig rig;
    rig.set("Num Active Bands", "3");
    rig.set("High Quality", "On");
    rig.set("Band 1 Feedback Amount", "90");
    Channels in = silence(4096, 2);
    const float hostile[] = {std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity(), 1e30f, 1e-42f, -1e30f};
    for (std::size_t i = 0; i < in[0].size(); ++i)
        in[0][i] = hostile[i % std::size(hostile)];
    rig.play(in, 100);
    const Channels after = rig.play(sines(96000, 0.1f, 0.01));
    for (const auto& channel : after)
        for (const float sample : channel)
            REQUIRE(std::isfinite(sample));
    CHECK(peakOf(after[1], 90000) < 1.5f);
    for (const float rate : {8000.0f, 384000.0f, 11.0f, 44100.0f}) {
        rig.processor->getEnvironment()->setSampleRate(rate);
        const Channels out = rig.play(sines(4096, 0.5f, 0.01));
        for (const float sample : out[0])
            REQUIRE(std::isfinite(sample));
    }
    rig.processor->process(nullptr, 0, nullptr, 0, 512);
    rig.processor->setTransport(std::nanf(""), 1e30f);
    rig.play(sines(1024, 0.5f, 0.01), 1);
}

TEST_CASE("CinderProcessor: two instances on two threads, and a reader of what they show") {
    std::atomic<bool> done{false};
    const auto run = [&](std::uint64_t seed) {
        RandomPlayer player(48000.0f, seed);
        for (int block = 0; block < 60; ++block)
            player.playBlock(300);
    };
    ProcessorRig watched;
    for (const char* list : {"Num Active XLFOs", "Num Active EGs", "Num Active EFs"})
        watched.set(list, "4");
    std::thread first(run, 1), second(run, 2);
    std::thread host([&] {
        Rng rng(3);
        while (!done) {
            AbstractPluginParameter& parameter = *watched.processor->parameter(rng.integer(0, 898));
            parameter.setValue(parameter.denormalize(static_cast<float>(rng.real(0.0, 1.0))), 0);
            std::this_thread::yield();
        }
    });
    std::thread reader([&] {
        while (!done) {
            std::stringstream stream;
            BinaryDataWriter writer(stream);
            watched.processor->writeRealtimeData(writer);
            std::this_thread::yield();
        }
    });
    for (int block = 0; block < 60; ++block) {
        watched.processor->enqueueMidiEvent({0x90, 60, static_cast<std::uint8_t>(block), 0}, block);
        watched.play(sines(256, 0.5f, 0.01));
    }
    done = true;
    host.join();
    reader.join();
    first.join();
    second.join();
}

}  // namespace cinder
