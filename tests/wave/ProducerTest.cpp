#include "wave/Producer.h"

#include <doctest/doctest.h>

#include <memory>
#include <vector>

#include "wave/Cycle.h"
#include "wave/Forwarders.h"
#include "wave/Input.h"
#include "wave/MultiProducer.h"

namespace cinder::wave {
namespace {

using test::ClockSource;
using test::runCycle;
using Visits = std::vector<ClockSource::Visit>;

TEST_CASE("Producer: renders once a cycle however often it is pulled, and lags where it is not") {
    Environment environment;
    ClockSource source(&environment);
    CHECK(source.getOutput() == environment.getZeroBlock());
    environment.beginBlock();
    BasicBlock<float>* const block = source.pull(10);
    CHECK(source.pull(10) == block);
    CHECK(source.visits == Visits{{10, 0}});
    environment.render(10, 0);
    for (int cycle = 0; cycle < 5; ++cycle)
        runCycle(environment, 100);
    environment.beginBlock();
    CHECK(source.pull(3)->data()[2] == 513.0f);
    CHECK(source.visits == Visits{{10, 0}, {3, 0}});
}

TEST_CASE("Producer: every consumer of a pass-through gets the block that was passed on") {
    Environment environment;
    ClockSource source(&environment);
    source.setStatus(3);
    Forwarder forwarder(&environment);
    forwarder.setInput(&source);
    InputForwarder inputForwarder(&environment, &forwarder);
    environment.beginBlock();
    BasicBlock<float>* const passed = inputForwarder.pull(8);
    CHECK(passed->data()[7] == 8.0f);
    CHECK(forwarder.pull(8) == passed);
    CHECK(forwarder.pull(8) == passed);
    CHECK(source.pull(8) == passed);
    CHECK(source.visits.size() == 1);
    CHECK(inputForwarder.getStatus() == 3);
    CHECK(forwarder.getStatus() == 0);
}

TEST_CASE("Producer: one that becomes active starts clean, and repeating a state does nothing") {
    Environment environment;
    ClockSource source(&environment);
    source.setActive(true);
    CHECK(source.resets == 0);
    source.setActive(false);
    source.setActive(false);
    CHECK(source.resets == 0);
    source.setActive(true);
    CHECK(source.resets == 1);
}

/// Output 0: its own samples. Output 1: the input's block, handed through.
struct Splitter final : MultiProducer {
    explicit Splitter(Environment* environment, Producer* through)
        : MultiProducer(environment), through(through) {
        createOutputs(2);
        makeResettable();
    }
    void render(BasicBlock<float>** blocks, int numSamples, unsigned) noexcept override {
        ++renders;
        blocks[1] = through->pull(numSamples);
        for (int i = 0; i < numSamples; ++i)
            blocks[0]->data()[i] = -blocks[1]->data()[i];
        setOutputConstant(1, true);
    }
    void reset() noexcept override { ++resets; }
    Producer* through;
    int renders = 0, resets = 0;
};

TEST_CASE("MultiProducer: the first pull of any output renders all of them, once") {
    for (int first : {0, 1}) {
        INFO("first " << first);
        Environment environment;
        ClockSource source(&environment);
        Splitter splitter(&environment, &source);
        for (int cycle = 1; cycle <= 3; ++cycle) {
            environment.beginBlock();
            splitter.getOutput(first)->pull(4);
            splitter.getOutput(1 - first)->pull(4);
            CHECK(splitter.renders == cycle);
            CHECK(splitter.getOutput(1)->getOutput() == source.getOutput());
            CHECK(splitter.getOutput(0)->getOutput()->data()[3] == -source.getOutput()->data()[3]);
            CHECK(splitter.getOutput(1)->isConstant());
            CHECK_FALSE(splitter.getOutput(0)->isConstant());
            environment.render(4, 0);
        }
        environment.reset(Environment::ResetMode::All);
        CHECK(splitter.resets == 1);
    }
}

TEST_CASE("Input: sub-blocks of any size read the host's buffer in order, then silence") {
    std::vector<float> buffer(300);
    for (std::size_t i = 0; i < buffer.size(); ++i)
        buffer[i] = static_cast<float>(i + 1);
    for (int cut : {1, 7, 64, 256}) {
        INFO("cut " << cut);
        Environment environment;
        Input input(&environment);
        std::vector<float> read;
        input.setBuffer(buffer.data(), static_cast<int>(buffer.size()));
        for (int at = 0; at < 600; at += cut) {
            environment.beginBlock();
            const float* block = input.pull(cut)->data();
            read.insert(read.end(), block, block + cut);
            environment.render(cut, 0);
        }
        std::vector<float> expected = buffer;
        expected.resize(read.size());
        CHECK(read == expected);
    }
}

TEST_CASE("Input: silent without a buffer") {
    Environment environment;
    Input input(&environment);
    for (int count : {0, 100, -1}) {
        environment.beginBlock();
        input.setBuffer(nullptr, count);
        CHECK(input.pull(16)->data()[15] == 0.0f);
    }
}

}  // namespace
}  // namespace cinder::wave
