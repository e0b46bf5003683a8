#include "wave/Producer.h"

#include <doctest/doctest.h>

#include <limits>
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
    ClockSource stateless(&environment, false);
    stateless.setActive(false);
    stateless.setActive(true);
    CHECK(stateless.resets == 0);
}

/// Hands silence on in every other cycle.
struct Stutter final : Source {
    using Source::Source;
    void render(BasicBlock<float>*, int, unsigned) noexcept override {
        if (environment->getBlockId() % 2 == 0) passOn(environment->getZeroBlock());
    }
};

TEST_CASE(
    "Producer: a block that was passed on is forgotten in the next cycle, pulled or visited") {
    for (bool isSink : {false, true}) {
        Environment environment;
        Stutter stutter(&environment);
        if (isSink) stutter.setRenderPriority(1);
        for (int cycle = 1; cycle <= 4; ++cycle) {
            if (isSink)
                runCycle(environment, 4);
            else
                runCycle(environment, 4, {&stutter});
            const bool isSilence = stutter.getOutput() == environment.getZeroBlock();
            CHECK(isSilence == (cycle % 2 == 0));
        }
    }
}

/// Output 0: its own samples. Output 1: the input's block, handed through unless told otherwise.
struct Splitter final : MultiProducer {
    explicit Splitter(Environment* environment, Producer* through)
        : MultiProducer(environment), through(through) {
        createOutputs(2);
        makeResettable();
    }
    void render(BasicBlock<float>** blocks, int numSamples, unsigned) noexcept override {
        ++renders;
        BasicBlock<float>* const in = through->pull(numSamples);
        for (int i = 0; i < numSamples; ++i)
            blocks[0]->data()[i] = -in->data()[i];
        if (handsThrough) blocks[1] = in;
        setOutputConstant(1, true);
    }
    void reset() noexcept override { ++resets; }
    Producer* through;
    bool handsThrough = true;
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
        splitter.handsThrough = false;
        runCycle(environment, 4, {splitter.getOutput(first)});
        CHECK(splitter.getOutput(1)->getOutput() != source.getOutput());
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

TEST_CASE("Input: what nobody pulled is passed over, and a new buffer starts at its own start") {
    std::vector<float> buffer(300);
    for (std::size_t i = 0; i < buffer.size(); ++i)
        buffer[i] = static_cast<float>(i + 1);
    Environment environment;
    Input input(&environment);
    for (int missed : {0, 1, 100, 256, 5000}) {
        INFO("missed " << missed);
        runCycle(environment, missed, {}, Environment::skipCycle);
        input.setBuffer(buffer.data(), 300);
        runCycle(environment, 20, {&input});
        CHECK(input.getOutput()->data()[19] == 20.0f);
        runCycle(environment, missed, {}, Environment::skipCycle);
        runCycle(environment, 30, {&input});
        const int last = 20 + missed + 30;
        CHECK(input.getOutput()->data()[29] == (last <= 300 ? static_cast<float>(last) : 0.0f));
    }
}

TEST_CASE("Input: nothing that is not a number, and nothing absurd, enters") {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> buffer{
        0.5f, std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 1e30f, -1e30f, -0.5f};
    Environment environment;
    Input input(&environment);
    input.setBuffer(buffer.data(), static_cast<int>(buffer.size()));
    runCycle(environment, 7, {&input});
    const float* const out = input.getOutput()->data();
    CHECK(std::vector(out, out + 7) ==
          std::vector{0.5f, 0.0f, 0.0f, 0.0f, 1000.0f, -1000.0f, -0.5f});
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
