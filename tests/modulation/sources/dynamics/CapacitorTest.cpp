#include "modulation/sources/dynamics/Capacitor.h"

#include <array>
#include <cmath>
#include <limits>
#include <memory>

#include "modulation/sources/dynamics/SignalRig.h"
#include "support/Rng.h"

#include <doctest/doctest.h>

namespace {

using namespace cinder;
using namespace cinder::test;

const Capacitor::Style& sharedStyle() {
    static const Capacitor::Style style;
    return style;
}

/// The time controls of one run, one value or one for every sample.
struct Shape {
    std::vector<float> attack{0.0005f}, attackScale{1.0f}, attackCurve{0.0f};
    std::vector<float> softening{0.0f}, release{0.1f}, releaseScale{1.0f}, releaseCurve{0.0f};
    bool autoRelease = false;
    float autoReleaseTime = 1.0f;
};

struct Control {
    wave::FloatParameterBus Capacitor::*bus;
    const std::vector<float>* values;
};

std::array<Control, 7> controlsOf(const Shape& shape) {
    return {{{&Capacitor::attack, &shape.attack},
             {&Capacitor::attackScale, &shape.attackScale},
             {&Capacitor::attackCurve, &shape.attackCurve},
             {&Capacitor::releaseSoftening, &shape.softening},
             {&Capacitor::release, &shape.release},
             {&Capacitor::releaseScale, &shape.releaseScale},
             {&Capacitor::releaseCurve, &shape.releaseCurve}}};
}

struct CapacitorFixture {
    explicit CapacitorFixture(std::vector<float> x, float rate = 48000.0f,
                              bool isConstantInput = false)
        : signal(&environment, std::move(x), isConstantInput) {
        environment.setSampleRate(rate);
        stage.setInput(&signal);
    }
    /// Sets the knobs to the first value of each control.
    void turnKnobs(const Shape& shape) {
        for (const auto& [bus, values] : controlsOf(shape))
            turn(stage.*bus, (*values)[0]);
        stage.autoRelease = shape.autoRelease;
        stage.autoReleaseTime = shape.autoReleaseTime;
    }
    /// Feeds all controls from outside, from sources that do not say whether they stand still.
    void feed(const Shape& shape) {
        for (const auto& [bus, values] : controlsOf(shape)) {
            sources.push_back(std::make_unique<Signal>(&environment, *values));
            (stage.*bus).setSource(sources.back().get());
        }
        stage.autoRelease = shape.autoRelease;
        stage.autoReleaseTime = shape.autoReleaseTime;
    }
    std::vector<float> pull(const std::vector<int>& pieces) {
        return pullPieces(environment, stage, pieces);
    }

    wave::Environment environment;
    Signal signal;
    std::vector<std::unique_ptr<Signal>> sources;
    Capacitor stage{&environment, &sharedStyle()};
};

/// The recursion as it is written down, the exponentials in full, worked out for every sample.
std::vector<float> referenceOf(const std::vector<float>& x, const Shape& shape, double rate) {
    double state = 0.0;
    double position = 0.0;
    bool falling = false;
    std::vector<float> out;
    for (std::size_t n = 0; n < x.size(); ++n) {
        const auto at = [n](const std::vector<float>& control) {
            return static_cast<double>(control[std::min(n, control.size() - 1)]);
        };
        const double distance = static_cast<double>(x[n]) - state;
        double d = distance;
        double t = 0.0;
        if (distance <= -1.1920928955078125e-07) {
            if (!falling) position = 0.0;
            falling = true;
            t = at(shape.release);
            if (shape.autoRelease)
                t = static_cast<double>(shape.autoReleaseTime) / (std::sqrt(state) + 1.0);
            const double still = t * d * -0.1;
            t = (t - still) * at(shape.releaseScale) + still;
            if (at(shape.softening) > 0.0) {
                const double length =
                    std::max(1.0, std::abs(d) / 24.0 * rate * at(shape.softening));
                position = std::min(1.0, position + 1.0 / length);
                d *= position * position;
            }
            if (d > -10.0) t += std::exp(d) * at(shape.releaseCurve);
        } else {
            falling = false;
            t = at(shape.attack);
            const double still = t * d * 0.1;
            t = (t - still) * at(shape.attackScale) + still;
            if (d < 10.0) t += std::exp(-d) * at(shape.attackCurve);
        }
        t *= rate;
        state += d * (t > 1.2e-7 ? 1.0 - std::exp(-std::log(10.0) / t) : 1.0);
        out.push_back(static_cast<float>(state));
    }
    return out;
}

double worstDifference(const std::vector<float>& a, const std::vector<float>& b) {
    double worst = a.size() == b.size() ? 0.0 : 1e9;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        worst = std::max(worst, std::abs(static_cast<double>(a[i]) - static_cast<double>(b[i])));
    return worst;
}

/// Gain changes in dB as a compander sees them: steps, ramps, noise, all from 0 to 36.
std::vector<float> gainChanges(Rng& rng, int length) {
    std::vector<float> x;
    double level = 0.0;
    for (int n = 0; n < length; ++n) {
        if (rng.integer(0, 700) == 0) level = rng.real(0.0, 36.0);
        level = std::clamp(level + rng.real(-0.2, 0.2), 0.0, 36.0);
        x.push_back(static_cast<float>(level));
    }
    return x;
}

std::vector<float> controlBetween(Rng& rng, double from, double to, int length) {
    std::vector<float> x;
    const double speed = rng.real(0.001, 0.01);
    for (int n = 0; n < length; ++n)
        x.push_back(static_cast<float>(from + (to - from) * (0.5 - 0.5 * std::cos(speed * n))));
    return x;
}

/// Plain times, then each extension alone, then all of them, standing and moving.
std::vector<Shape> shapes(Rng& rng, int length) {
    std::vector<Shape> all(9);
    all[1].attackScale = {0.3f};
    all[2].attackCurve = {0.02f};
    all[3].softening = {0.5f};
    all[4].releaseScale = {0.0f};
    all[5].releaseCurve = {0.05f};
    all[6].autoRelease = true;
    all[7].attack = controlBetween(rng, 0.0, 0.1, length);
    all[7].release = controlBetween(rng, 0.01, 0.3, length);
    Shape& last = all[8];
    last = {controlBetween(rng, 0.001, 0.2, length), controlBetween(rng, 0.2, 1.0, length),
            controlBetween(rng, 0.0, 0.3, length),   controlBetween(rng, 0.0, 2.0, length),
            controlBetween(rng, 0.01, 0.3, length),  controlBetween(rng, 0.2, 1.0, length),
            controlBetween(rng, 0.0, 0.2, length)};
    return all;
}

}  // namespace

TEST_CASE("Capacitor: after the set time a tenth of a step is left") {
    for (float rate : {44100.0f, 96000.0f})
        for (float seconds : {0.0f, 0.0002f, 0.01f, 0.5f}) {
            INFO("rate " << rate << ", time " << seconds);
            CapacitorFixture rig({1.0f}, rate);
            turn(rig.stage.attack, seconds);
            const int n = static_cast<int>(seconds * rate) + 10;
            const std::vector<float> up = rig.pull(evenPieces(n, 256));
            const double decay =
                seconds > 0.0f ? std::exp(-2.3025851 / static_cast<double>(seconds * rate)) : 0.0;
            for (int i = 0; i < n; ++i)
                REQUIRE(static_cast<double>(up[static_cast<std::size_t>(i)]) ==
                        doctest::Approx(1.0 - std::pow(decay, i + 1)).epsilon(1e-6));

            std::vector<float> step(static_cast<std::size_t>(n) + 1, 0.0f);
            step[0] = 1.0f;
            CapacitorFixture fall(step, rate);
            turn(fall.stage.attack, 0.0f);
            turn(fall.stage.release, seconds);
            const std::vector<float> down = fall.pull(evenPieces(n + 1, 256));
            CHECK(down[0] == 1.0f);
            for (int i = 0; i <= n; ++i)
                REQUIRE(static_cast<double>(down[static_cast<std::size_t>(i)]) ==
                        doctest::Approx(std::pow(decay, i)).epsilon(1e-6));
        }
}

TEST_CASE("Capacitor: every shape follows the formula and is the same for any cut") {
    Rng rng = Rng::fromEnvironment();
    constexpr int length = 12000;
    std::vector<float> x = gainChanges(rng, length);
    x[0] = 20.0f;
    int number = 0;
    for (const Shape& shape : shapes(rng, length)) {
        INFO("shape " << number << ", seed " << rng.seed());
        CapacitorFixture whole(x);
        whole.feed(shape);
        const std::vector<float> out = whole.pull(evenPieces(length, 256));
        // The curve of a fall is worked out only now and then.
        const bool hasFallCurve = shape.releaseCurve != std::vector{0.0f};
        CHECK(worstDifference(out, referenceOf(x, shape, 48000.0)) < (hasFallCurve ? 5e-3 : 1e-4));
        CapacitorFixture cut(x);
        cut.feed(shape);
        CHECK(cut.pull(rng.pieces(length, 60)) == out);
        ++number;
    }
}

TEST_CASE("Capacitor: knobs that stand still give the bits of controls that might move") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 8000;
    const std::vector<float> x = rng.noise(length, 30.0f);
    for (const Shape& shape : shapes(rng, 1)) {
        CapacitorFixture knobs(x);
        knobs.turnKnobs(shape);
        CapacitorFixture fed(x);
        fed.feed(shape);
        CHECK(knobs.pull(rng.pieces(length, 256)) == fed.pull(rng.pieces(length, 256)));
    }
    CapacitorFixture untouched(x);
    CapacitorFixture defaults(x);
    defaults.turnKnobs(Shape());
    CHECK(untouched.pull(evenPieces(length, 256)) == defaults.pull(evenPieces(length, 256)));
}

TEST_CASE("Capacitor: what is nearly reached is not a fall, and a plain block ends one") {
    for (bool fed : {false, true}) {
        CapacitorFixture rig({0.01f, 0.0099999f, 0.0099997f});
        Shape shape;
        shape.attack = {0.0f};
        shape.release = {10.0f};
        fed ? rig.feed(shape) : rig.turnKnobs(shape);
        const std::vector<float> out = rig.pull({3});
        CHECK(out[1] == 0.0099999f);
        CHECK(out[2] == doctest::Approx(0.0099999).epsilon(1e-7));
    }
    for (bool plainBetween : {false, true}) {
        CapacitorFixture rig({24.0f, 0.0f});
        turn(rig.stage.attack, 0.0f);
        turn(rig.stage.release, 10.0f);
        turn(rig.stage.releaseSoftening, 0.01f);  // 480 samples
        rig.pull(evenPieces(1000, 250));
        if (plainBetween) turn(rig.stage.releaseSoftening, 0.0f);
        const float before = rig.pull({1})[0];
        turn(rig.stage.releaseSoftening, 0.01f);
        const float step = before - rig.pull({1})[0];
        CHECK((step > 1e-4f) == !plainBetween);
    }
}

TEST_CASE("Capacitor: at rest the input's block goes through") {
    std::vector<float> x(2000, 5e-10f);
    x[300] = 1e-7f;
    x[1999] = 1.0f;
    CapacitorFixture rig(x);
    turn(rig.stage.attack, 0.01f);
    turn(rig.stage.release, 0.001f);
    rig.pull({256});
    CHECK(rig.stage.getOutput() == rig.signal.getOutput());
    CHECK(!rig.stage.isConstant());
    rig.pull({256});
    CHECK(rig.stage.getOutput() != rig.signal.getOutput());
    rig.pull(evenPieces(1024, 256));
    CHECK(rig.stage.getOutput() == rig.signal.getOutput());
    rig.pull({256, 208});
    CHECK(rig.stage.getOutput() != rig.signal.getOutput());

    CapacitorFixture still({0.0f}, 48000.0f, true);
    still.pull({256});
    CHECK(still.stage.getOutput() == still.signal.getOutput());
    CHECK(still.stage.isConstant());
    still.stage.setInput(&rig.signal);
    still.pull(evenPieces(2048, 256));
    CHECK(!still.stage.isConstant());
}

TEST_CASE("Capacitor: cuts through silence differ by what rest leaves out") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 30000;
    std::vector<float> x = gainChanges(rng, length);
    for (int n = 0; n < length; ++n)
        if (n / 4000 % 2 == 1) x[static_cast<std::size_t>(n)] = 8e-10f;
    const auto render = [&](int longest) {
        CapacitorFixture rig(x);
        turn(rig.stage.release, 0.005f);
        return rig.pull(rng.pieces(length, longest));
    };
    const std::vector<float> coarse = render(256);
    const std::vector<float> fine = render(16);
    for (int n = 0; n < length; ++n) {
        const auto a = static_cast<double>(coarse[static_cast<std::size_t>(n)]);
        const auto b = static_cast<double>(fine[static_cast<std::size_t>(n)]);
        REQUIRE(std::abs(a - b) <= 1.3e-7 + 1.2e-7 * std::abs(a));  // and one ulp
    }
}

TEST_CASE("Capacitor: a reset takes effect with the next block and leaves nothing behind") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    // Lengths that are multiples of 16: the curve is worked out along the time line.
    constexpr int length = 4000;
    std::vector<float> x = rng.noise(length, 20.0f);
    x.front() = -15.0f;
    x.back() = -20.0f;
    std::vector<float> twice = x;
    twice.insert(twice.end(), x.begin(), x.end());
    for (Shape& shape : shapes(rng, 1)) {
        CapacitorFixture once(x);
        once.feed(shape);
        CapacitorFixture again(twice);
        again.feed(shape);
        again.pull(evenPieces(length, 250));
        again.stage.reset();  // while it falls: the noise ends and begins below 0
        CHECK(again.stage.getOutput()->data()[0] != 0.0f);
        CHECK(again.pull(evenPieces(length, 250)) == once.pull(evenPieces(length, 250)));
    }
}

TEST_CASE("Capacitor: no input and no control leaves a poisoned state") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Rng rng = Rng::fromEnvironment();
    for (float bad : {nan, infinity, -infinity, 3e38f, -3e38f})
        for (const Shape& shape : shapes(rng, 1)) {
            CapacitorFixture rig({1.0f, bad, 0.5f});
            rig.feed(shape);
            rig.pull({1, 1});
            for (float y : rig.pull(evenPieces(4096, 256)))
                REQUIRE(std::isfinite(y));
        }
    Shape strange;
    for (auto* control :
         {&strange.attack, &strange.attackScale, &strange.attackCurve, &strange.softening,
          &strange.release, &strange.releaseScale, &strange.releaseCurve})
        *control = {nan, -1.0f, 1e30f, infinity, -infinity, 0.0f};
    CapacitorFixture rig(rng.noise(64, 20.0f));
    rig.feed(strange);
    rig.pull({64});
    rig.feed(Shape());
    for (float y : rig.pull(evenPieces(4096, 256)))
        REQUIRE(std::isfinite(y));

    CapacitorFixture below({-4.0f, -8.0f});
    Shape automatic;
    automatic.autoRelease = true;
    below.feed(automatic);
    for (float y : below.pull({100}))
        CHECK((y < 0.0f && y > -1.0f));
}

TEST_CASE("Capacitor: the table of the exponential") {
    const Capacitor::Style& style = sharedStyle();
    double worst = 0.0;
    for (int i = 0; i <= 100000; ++i) {
        const double x = -25.0 * i / 100000.0;
        worst = std::max(worst, std::abs(style.exp(x) / std::exp(x) - 1.0));
    }
    CHECK(worst < 2.1e-6);
    CHECK(style.exp(0.0) == 1.0);
    CHECK(style.exp(1.19e-7) == 1.0);
    CHECK(style.exp(-25.0) == doctest::Approx(std::exp(-25.0)).epsilon(1e-6));
    CHECK(style.exp(-1e30) == style.exp(-25.0));
    CHECK(style.exp(std::numeric_limits<double>::quiet_NaN()) == style.exp(-25.0));
}
