#include "wave/FloatParameter.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/Rng.h"
#include "wave/Cycle.h"
#include "wave/FloatParameterBus.h"

namespace cinder::wave {
namespace {

using test::runCycle;

doctest::Approx about(float value) {
    return doctest::Approx(static_cast<double>(value)).epsilon(1e-5);
}

constexpr float automatic = FloatParameter::automaticRamp;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

/// A knob that is followed every cycle, and what has come out of it.
struct Knob {
    explicit Knob(float initial = 0.0f, float minimum = 0.0f, float maximum = 1.0f)
        : source(&environment, initial, minimum, maximum) {
        run(1);  // from here on it is followed, so values ramp
    }
    /// Runs cycles of `cut` samples; the statuses tell a ramp from a constant block.
    std::vector<float> run(int numSamples, int cut = 256) {
        std::vector<float> out;
        statuses.clear();
        while (numSamples > 0) {
            const int n = std::min(numSamples, cut);
            runCycle(environment, n, {&source});
            const float* const block = source.getOutput()->data();
            out.insert(out.end(), block, block + n);
            statuses += source.isConstant() ? 'c' : 'r';
            numSamples -= n;
        }
        return out;
    }
    int rampLength() {
        int length = 0;
        while (run(1), statuses == "r")
            ++length;
        return length;
    }
    FloatParameter* operator->() { return &source.parameter; }
    void set(float value, float rampMs) {
        const test::RealtimeGuard guard;
        source.parameter.setValue(value, rampMs);
    }

    Environment environment;
    FloatParameterSource source;
    std::string statuses;
};

TEST_CASE("FloatParameter: the automatic ramp follows its law") {
    struct Case {
        double rate, lower, upper, minMs, maxMs;
    };
    for (const Case& c : {Case{44100.0, 0.0, 1.0, 20.0, 150.0},
                          {192000.0, 3.3, 14.3, 20.0, 150.0},
                          {96000.0, -1.0, 1.0, 0.0, 40.0},
                          {44100.0, 0.0, 1.0, 30.0, 10.0}})
        for (double part : {1e-5, 0.05, -0.2, 0.29, 0.301, -1.0}) {
            INFO("rate " << c.rate << ", range " << c.lower << " to " << c.upper << ", step "
                         << part << ", ramp " << c.minMs << " to " << c.maxMs << " ms");
            const double start = part > 0.0 ? c.lower : c.upper;
            Knob knob(static_cast<float>(start), static_cast<float>(c.lower),
                      static_cast<float>(c.upper));
            knob.environment.setSampleRate(static_cast<float>(c.rate));
            knob->minRampTime = static_cast<float>(c.minMs);
            knob->maxRampTime = static_cast<float>(c.maxMs);
            knob.run(1);
            knob->assign(static_cast<float>(start + part * (c.upper - c.lower)));
            const double w = std::max(1.0 - std::abs(part) / 0.3, 0.0);
            const double ms = c.minMs + (c.maxMs - c.minMs) * w * w;
            const double length = ms * c.rate * 0.001;
            // A step between two floats is off by half an ulp of its ends, and a length may be
            // truncated on either side of a whole number.
            const double slack = 1.01 + length * 1e-4 + 2e-7 / std::abs(part) * length;
            CHECK(std::abs(knob.rampLength() - length) <= slack);
        }
}

TEST_CASE("FloatParameter: a ramp is a straight line from its start; the target follows exactly") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int round = 0; round < 100; ++round) {
        const double lower = rng.real(-100.0, 0.0), upper = rng.real(1.0, 100.0);
        const auto start = static_cast<float>(rng.real(lower, upper));
        const auto target = static_cast<float>(rng.real(lower, upper));
        const int length = rng.integer(0, 5000), cut = rng.integer(1, 256);
        const double ms = (length + 0.5) / 44.1;
        INFO("round " << round << ", seed " << rng.seed() << ": " << start << " to " << target
                      << " in " << ms << " ms");
        Knob knob(start, static_cast<float>(lower), static_cast<float>(upper));
        knob.set(target, static_cast<float>(ms));
        const std::vector<float> out = knob.run(length + 300, cut);
        const auto from = static_cast<double>(start), to = static_cast<double>(target);
        double worst = 0.0;
        for (int i = 0; i < length; ++i) {
            const auto sample = static_cast<double>(out[static_cast<std::size_t>(i)]);
            worst = std::max(worst, std::abs(sample - (from + i * (to - from) / length)));
        }
        // Five roundings by 2^-24: of way, step, product (of the way, which is at most 2 scales),
        // sum and sample (of one scale).
        CHECK(worst <= std::max(std::abs(from), std::abs(to)) * 8 * 0x1p-24);
        CHECK(std::all_of(out.begin() + length, out.end(), [=](float x) { return x == target; }));
        if (length > 0) CHECK(out[0] == start);
        CHECK(std::count(knob.statuses.begin(), knob.statuses.end(), 'r') ==
              (length + cut - 1) / cut);
    }
}

TEST_CASE("FloatParameter: a value in mid-ramp goes on from there, unless it is the target") {
    for (int at : {0, 1, 256, 881, 882, 1000}) {
        INFO("after " << at << " samples");
        Knob knob;
        knob.set(1.0f, 20.0f);
        knob.run(at);
        knob.set(1.0f - 1e-7f, 0.0f);  // no news
        const float expected = at >= 882 ? 1.0f : static_cast<float>(at) / 882.0f;
        CHECK(knob->isRamping() == (at < 882));
        knob.set(0.25f, 10.0f);
        const std::vector<float> out = knob.run(442);
        CHECK(out[0] == about(expected));
        CHECK(out[440] == about(0.25f + (expected - 0.25f) / 441.0f));
        CHECK(out[441] == 0.25f);
    }
}

TEST_CASE("FloatParameter: a circular value takes the shorter way round") {
    struct Case {
        float from, to, minimum, maximum, period, first;
    };
    for (const Case& c : {Case{0.9f, 0.1f, -1.0f, 1.0f, 1.0f, -0.1f},
                          {0.9f, 0.1f, 0.0f, 1.0f, 1.0f, 0.0f},
                          {0.1f, 0.9f, 0.0f, 2.0f, 1.0f, 1.1f},
                          {0.25f, 0.75f, 0.0f, 1.0f, 1.0f, 0.25f},
                          {-170.0f, 170.0f, -360.0f, 360.0f, 360.0f, 190.0f},
                          {0.9f, 0.1f, 0.0f, 1.0f, -1.0f, 0.9f}}) {
        INFO(c.from << " to " << c.to << ", period " << c.period << ", maximum " << c.maximum);
        Knob knob(c.from, c.minimum, c.maximum);
        knob->wrapPeriod = c.period;
        knob.set(c.to, 20.0f);
        const std::vector<float> out = knob.run(1000);
        CHECK(out[0] == about(c.first));
        CHECK(out[441] == about((c.first + c.to) / 2));
        CHECK(out[882] == c.to);
    }
}

TEST_CASE("FloatParameter: values jump unless they were followed up to the present sample") {
    struct Case {
        std::string before;  // of a cycle missed, a reset, a sample followed, another value
        float ms;
        bool ramps;
    };
    for (const Case& c : {Case{"", automatic, true},
                          {"v", automatic, true},
                          {"m", automatic, false},
                          {"m", 20.0f, true},  // a ramp that is asked for runs in full
                          {"mv", automatic, true},
                          {"r", automatic, false},
                          {"rv", automatic, false},
                          {"rf", automatic, true}}) {
        INFO(c.before << ", ramp " << c.ms);
        Knob knob;
        for (char step : c.before) {
            if (step == 'm') runCycle(knob.environment, 9);
            if (step == 'r') knob.environment.reset(Environment::ResetMode::MarkOnly);
            if (step == 'f') knob.run(1);
            if (step == 'v') knob->assign(0.4f);
        }
        knob.set(0.8f, c.ms);
        CHECK(knob->isRamping() == c.ramps);
        CHECK((knob.run(1)[0] != 0.8f) == c.ramps);
    }
    Environment environment;
    FloatParameter fresh(&environment);
    fresh.assign(0.8f);
    CHECK_FALSE(fresh.isRamping());
}

TEST_CASE("FloatParameter: a ramp nobody pulls goes on in silence; a reset or a new rate ends it") {
    for (int missed : {0, 1, 881, 882, 5000}) {
        INFO("missed " << missed);
        Knob pulled, lagging;
        pulled.set(1.0f, 20.0f);
        lagging.set(1.0f, 20.0f);
        pulled.run(missed, 1);
        for (int i = 0; i < missed; ++i)
            runCycle(lagging.environment, 1);
        CHECK(lagging.run(1000, 1) == pulled.run(1000, 1));
    }
    for (float ms : {1e30f, infinity}) {
        Knob crawling;
        crawling.set(1.0f, ms);
        for (double expected : {0.0, 0.5, 1.0, 1.0}) {
            CHECK(crawling.run(1)[0] == doctest::Approx(expected));
            runCycle(crawling.environment, 1 << 30, {}, Environment::skipCycle);
        }
    }
    for (int way : {0, 1, 2, 3}) {
        INFO("way " << way);
        Knob knob;
        knob.set(1.0f, 20.0f);
        knob.run(100);
        if (way < 3) knob.environment.reset(static_cast<Environment::ResetMode>(way));
        if (way == 3) knob.environment.setSampleRate(96000.0f);
        CHECK(knob.run(64) == std::vector<float>(64, 1.0f));
        knob.set(0.0f, 20.0f);
        CHECK(knob.rampLength() == (way == 3 ? 1920 : 882));
    }
}

TEST_CASE(
    "FloatParameter: absurd values stay within the limits, and ramp times that are none jump") {
    for (const auto& [value, target] : {std::pair{2.0f, 1.0f},
                                        {-infinity, -1.0f},
                                        {infinity, 1.0f},
                                        {nan, -1.0f},
                                        {0.25f, 0.25f}})
        for (float ms : {5.0f, 0.0f, 0.02f, nan}) {
            INFO("value " << value << ", ramp " << ms);
            Knob knob(0.5f, -1.0f, 1.0f);
            knob.set(value, ms);
            CHECK(knob->getTarget() == target);
            const std::vector<float> out = knob.run(500);
            CHECK(std::count(out.begin(), out.end(), target) == (ms == 5.0f ? 280 : 500));
            CHECK(std::all_of(out.begin(), out.end(), [](float x) { return std::abs(x) <= 1; }));
        }
}

TEST_CASE("FloatParameter: new limits pull the target in at once, and set the scale of the ramps") {
    struct Case {
        float minimum, maximum, range, target, expectedRange;
    };
    for (const Case& c : {Case{0.0f, 0.5f, 0.0f, 0.5f, 0.5f},
                          {0.9f, 2.0f, 10.0f, 0.9f, 10.0f},
                          {-1.0f, 1.0f, nan, 0.75f, 2.0f}}) {
        INFO(c.minimum << " to " << c.maximum << ", range " << c.range);
        Knob knob(0.25f);
        knob.set(0.75f, 20.0f);
        knob.run(100);
        knob->setRange(c.minimum, c.maximum, c.range);
        CHECK(knob->getRange() == c.expectedRange);
        CHECK(knob->getTarget() == c.target);
        CHECK(knob->isRamping() == (c.target == 0.75f));
        if (c.target != 0.75f) CHECK(knob.run(100) == std::vector<float>(100, c.target));
        knob->wrapPeriod = 4.0f;
        const FloatParameter copy(*knob.operator->());  // stands at the target, with all the rules
        CHECK_FALSE(copy.isRamping());
        CHECK(copy.getTarget() == c.target);
        CHECK(copy.getMinimum() == c.minimum);
        CHECK(copy.getMaximum() == c.maximum);
        CHECK(copy.getRange() == c.expectedRange);
        CHECK(copy.wrapPeriod == 4.0f);
    }
}

TEST_CASE("FloatParameter: whoever renders it in a cycle, and how many do, all hear the same") {
    Environment environment;
    FloatParameterSource source(&environment);
    FloatParameterForwarder first(&environment, &source.parameter);
    FloatParameterForwarder second(&environment, &source.parameter);
    Knob alone;
    runCycle(environment, 1, {&source});
    source.parameter.setValue(1.0f, 20.0f);
    alone->setValue(1.0f, 20.0f);
    for (int cycle = 0; cycle < 20; ++cycle) {
        INFO("cycle " << cycle);
        const std::vector<float> expected = alone.run(64);
        runCycle(environment, 64, {&source, &first, &second});
        for (Producer* producer : std::initializer_list<Producer*>{&source, &first, &second}) {
            CHECK(std::equal(expected.begin(), expected.end(), producer->getOutput()->data()));
            CHECK(producer->isConstant() == alone.source.isConstant());
        }
    }
}

TEST_CASE("FloatParameterBus: carries its knob until it is pointed elsewhere, and shares either") {
    Environment environment;
    FloatParameterBus bus(&environment, 0.5f);
    FloatParameterBusForwarder shared(&environment, &bus);
    test::ClockSource modulation(&environment);
    modulation.setStatus(2);
    runCycle(environment, 16, {&shared});
    CHECK(shared.getOutput()->data()[15] == 0.5f);
    CHECK(shared.isConstant());
    bus.setSource(&modulation);
    bus.assign(0.25f);  // for later: the knob is not heard now
    runCycle(environment, 16, {&shared});
    CHECK(shared.getOutput() == modulation.getOutput());
    CHECK(shared.getStatus() == 2);
    bus.setSource(nullptr);
    environment.reset(Environment::ResetMode::MarkOnly);
    runCycle(environment, 16, {&shared});
    CHECK(shared.getOutput()->data()[0] == 0.25f);
}

TEST_CASE("FloatParameter: the cut of the blocks is not heard") {
    test::Rng rng = test::Rng::fromEnvironment();
    std::vector<float> values(30);
    for (float& value : values)
        value = static_cast<float>(rng.real(-4.0, 4.0));
    for (float ms : {0.0f, automatic, 5.0f, 900.0f})
        for (int cut : {1, 64, 255, rng.integer(2, 254)}) {
            INFO("ramp " << ms << " ms, cut " << cut << ", seed " << rng.seed());
            Knob whole(0.0f, -4.0f, 4.0f), cutUp(0.0f, -4.0f, 4.0f);
            float worst = 0.0f;
            int wrongAtRest = 0;
            for (float value : values) {
                whole.set(value, ms);
                cutUp.set(value, ms);
                const std::vector<float> expected = whole.run(1000), out = cutUp.run(1000, cut);
                for (std::size_t i = 0; i < out.size(); ++i) {
                    worst = std::max(worst, std::abs(out[i] - expected[i]));
                    wrongAtRest += expected[i] == value && out[i] != value;
                }
            }
            CHECK(wrongAtRest == 0);
            // Jumps and constant stretches agree to the bit. On a ramp each block starts anew from
            // a float product and a float sum and goes on in double, so where the cuts lie decides
            // about the last bits: half an ulp of the way (4 * 2^-24), of the sum and of the sample
            // (2 * 2^-24 each), on either side.
            CHECK(worst <= (ms == 0.0f ? 0.0f : 16 * 0x1p-24f));
        }
}

}  // namespace
}  // namespace cinder::wave
