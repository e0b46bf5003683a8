#include "wave/Producer.h"

#include <doctest/doctest.h>

#include <limits>
#include <numeric>
#include <vector>

#include "support/Rng.h"
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
    source.setStatus(3);
    Forwarder forwarder(&environment);
    forwarder.setInput(&source);
    InputForwarder inputForwarder(&environment, &forwarder);
    CHECK(source.getOutput() == environment.getZeroBlock());
    runCycle(environment, 10, {&inputForwarder, &source, &source, &forwarder});
    // Every consumer of a pass-through gets the block that was passed on.
    CHECK(source.getOutput()->data()[9] == 10.0f);
    CHECK(forwarder.getOutput() == source.getOutput());
    CHECK(inputForwarder.getOutput() == source.getOutput());
    CHECK(inputForwarder.getStatus() == 3);
    CHECK(forwarder.getStatus() == 0);
    runCycle(environment, 100);
    runCycle(environment, 3, {&source});
    CHECK(source.getOutput()->data()[2] == 113.0f);
    CHECK(source.visits == Visits{{10, 0}, {3, 0}});
}

TEST_CASE("Producer: one that becomes active starts clean, and repeating a state does nothing") {
    Environment environment;
    ClockSource source(&environment), stateless(&environment, false);
    for (bool active : {true, false, false, true})
        for (ClockSource* each : {&source, &stateless}) {
            CHECK(each->resets == 0);
            each->setActive(active);
        }
    CHECK(source.resets == 1);
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
    Environment environment;
    Stutter pulled(&environment), visited(&environment);
    visited.setRenderPriority(1);
    for (int cycle = 1; cycle <= 4; ++cycle) {
        runCycle(environment, 4, {&pulled});
        for (const Stutter* each : {&pulled, &visited})
            CHECK((each->getOutput() == environment.getZeroBlock()) == (cycle % 2 == 0));
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
        Producer &own = *splitter.getOutput(0), &through = *splitter.getOutput(1);
        for (int cycle = 1; cycle <= 3; ++cycle) {
            splitter.handsThrough = cycle < 3;
            runCycle(environment, 4, {splitter.getOutput(first), splitter.getOutput(1 - first)});
            CHECK(splitter.renders == cycle);
            CHECK((through.getOutput() == source.getOutput()) == splitter.handsThrough);
            CHECK(own.getOutput()->data()[3] == -source.getOutput()->data()[3]);
            CHECK(through.isConstant());
            CHECK_FALSE(own.isConstant());
        }
        environment.reset(Environment::ResetMode::All);
        CHECK(splitter.resets == 1);
    }
}

TEST_CASE(
    "Input: reads the host's buffer in order, passing over what nobody pulled, then silence") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    std::vector<float> buffer(300);
    std::iota(buffer.begin(), buffer.end(), 1.0f);
    Environment environment;
    Input input(&environment);
    for (int longest : {1, 7, 64, 256}) {
        runCycle(environment, rng.integer(0, 5000), {}, Environment::skipCycle);
        input.setBuffer(buffer.data(), static_cast<int>(buffer.size()));
        int at = 0, wrong = 0;
        for (int n : rng.pieces(700, longest)) {
            const bool isMissed = rng.integer(0, 3) == 0;
            if (isMissed)
                runCycle(environment, n, {}, Environment::skipCycle);
            else
                runCycle(environment, n, {&input});
            for (int i = 0; i < n; ++i, ++at)
                wrong += !isMissed && input.getOutput()->data()[i] !=
                                          (at < 300 ? static_cast<float>(at + 1) : 0.0f);
        }
        INFO("longest block " << longest);
        CHECK(wrong == 0);
    }
}

TEST_CASE("Input: nothing that is not a number, and nothing absurd, enters; silent without") {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> buffer{
        0.5f, std::numeric_limits<float>::quiet_NaN(), -infinity, 1e30f, -1e30f, -0.5f};
    Environment environment;
    Input input(&environment);
    input.setBuffer(buffer.data(), 6);
    runCycle(environment, 6, {&input});
    const float* const out = input.getOutput()->data();
    CHECK(std::vector(out, out + 6) == std::vector{0.5f, 0.0f, 0.0f, 1000.0f, -1000.0f, -0.5f});
    for (int count : {0, 100, -1}) {
        input.setBuffer(nullptr, count);
        runCycle(environment, 6, {&input});
        CHECK(input.getOutput()->data()[0] == 0.0f);
    }
}

}  // namespace
}  // namespace cinder::wave
