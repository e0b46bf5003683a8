#include "modulation/sources/dynamics/Capacitor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
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

enum Control { Attack, AttackScale, AttackCurve, Softening, Release, ReleaseScale, ReleaseCurve };
constexpr wave::FloatParameterBus Capacitor::*buses[] = {
    &Capacitor::attack,           &Capacitor::attackScale, &Capacitor::attackCurve,
    &Capacitor::releaseSoftening, &Capacitor::release,     &Capacitor::releaseScale,
    &Capacitor::releaseCurve};

/// The time controls of one run, one value or one for every sample.
struct Shape {
    std::array<std::vector<float>, 7> controls{{{0.0005f}, {1}, {0}, {0}, {0.1f}, {1}, {0}}};
    bool autoRelease = false;
    std::vector<float>& operator[](Control control) { return controls[control]; }
};

struct CapacitorFixture {
    explicit CapacitorFixture(std::vector<float> x, float rate = 48000.0f)
        : signal(&environment, std::move(x)) {
        environment.setSampleRate(rate);
        stage.setInput(&signal);
    }
    /// The controls as knobs at their first values, or fed from outside, from sources that do not
    /// say whether they stand still.
    void apply(const Shape& shape, bool fed) {
        for (std::size_t i = 0; i < shape.controls.size(); ++i) {
            turn(stage.*buses[i], shape.controls[i][0]);
            if (!fed) continue;
            sources.push_back(std::make_unique<SignalSource>(&environment, shape.controls[i]));
            (stage.*buses[i]).setSource(sources.back().get());
        }
        stage.autoRelease = shape.autoRelease;
        stage.autoReleaseTime = 1.0f;
    }
    std::vector<float> pull(const std::vector<int>& pieces) {
        return playPieces(environment, stage, pieces);
    }
    bool passesByPointer() const { return stage.getOutput() == signal.getOutput(); }

    wave::Environment environment;
    Signal signal;
    std::vector<std::unique_ptr<SignalSource>> sources;
    Capacitor stage{&environment, &sharedStyle()};
};

/// The recursion as it is written down, the exponentials in full, worked out for every sample.
std::vector<float> referenceOf(const std::vector<float>& x, const Shape& shape, double rate) {
    double state = 0.0;
    double position = 0.0;
    bool falling = false;
    std::vector<float> out;
    for (std::size_t n = 0; n < x.size(); ++n) {
        const auto at = [&](Control control) {
            const std::vector<float>& values = shape.controls[control];
            return static_cast<double>(values[std::min(n, values.size() - 1)]);
        };
        const double distance = static_cast<double>(x[n]) - state;
        double d = distance;
        double t = 0.0;
        if (distance <= -1.1920928955078125e-07) {
            if (!falling) position = 0.0;
            falling = true;
            t = at(Release);
            if (shape.autoRelease) t = 1.0 / (std::sqrt(state) + 1.0);
            const double still = t * d * -0.1;
            t = (t - still) * at(ReleaseScale) + still;
            if (at(Softening) > 0.0) {
                const double length = std::max(1.0, std::abs(d) / 24.0 * rate * at(Softening));
                position = std::min(1.0, position + 1.0 / length);
                d *= position * position;
            }
            if (d > -10.0) t += std::exp(d) * at(ReleaseCurve);
        } else {
            falling = false;
            t = at(Attack);
            const double still = t * d * 0.1;
            t = (t - still) * at(AttackScale) + still;
            if (d < 10.0) t += std::exp(-d) * at(AttackCurve);
        }
        t *= rate;
        state += d * (t > 1.2e-7 ? 1.0 - std::exp(-std::log(10.0) / t) : 1.0);
        out.push_back(static_cast<float>(state));
    }
    return out;
}

double worstDifference(const std::vector<float>& a, const std::vector<float>& b) {
    double worst = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
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
    const auto between = [&](double from, double to) {
        return controlBetween(rng, from, to, length);
    };
    std::vector<Shape> all(9);
    all[1][AttackScale] = {0.3f};
    all[2][AttackCurve] = {0.02f};
    all[3][Softening] = {0.5f};
    all[4][ReleaseScale] = {0.0f};
    all[5][ReleaseCurve] = {0.05f};
    all[6].autoRelease = true;
    all[7][Attack] = between(0.0, 0.1);
    all[7][Release] = between(0.01, 0.3);
    all[8].controls = {between(0.001, 0.2), between(0.2, 1.0), between(0.0, 0.3), between(0.0, 2.0),
                       between(0.01, 0.3),  between(0.2, 1.0), between(0.0, 0.2)};
    return all;
}

}  // namespace

TEST_CASE("Capacitor: after the set time a tenth of a step is left") {
    for (const float rate : {44100.0f, 96000.0f})
        for (const int n : {0, 20, 4410}) {
            INFO("rate " << rate << ", " << n << " samples");
            std::vector<float> step(5001, 1.0f);
            step.resize(12000);
            CapacitorFixture rig(step, rate);
            turn(rig.stage.attack, static_cast<float>(n) / rate);
            turn(rig.stage.release, static_cast<float>(n) / rate);
            const std::vector<float> out = rig.pull(evenPieces(12000, 250));
            const float left = n > 0 ? 0.1f : 0.0f;
            const std::size_t end = std::max(n, 1) - 1;
            CHECK(out[end] == doctest::Approx(1.0f - left).epsilon(1e-5));
            CHECK(out[5001 + end] == doctest::Approx(left * out[5000]).epsilon(1e-5));
        }
}

TEST_CASE("Capacitor: every shape follows the formula, for any cut, fed or by knobs") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 12000;
    std::vector<float> x = gainChanges(rng, length);
    x[0] = 20.0f;
    const std::vector<float> noise = rng.noise(length, 30.0f);
    std::vector<Shape> all = shapes(rng, length);
    for (std::size_t i = 0; i < all.size(); ++i) {
        INFO("shape " << i);
        Shape& shape = all[i];
        const auto render = [&](const std::vector<float>& input, int longest, bool fed) {
            CapacitorFixture rig(input);
            rig.apply(shape, fed);
            return rig.pull(longest == 256 ? evenPieces(length, 256) : rng.pieces(length, longest));
        };
        const std::vector<float> out = render(x, 256, true);
        // The curve of a fall is worked out only now and then.
        const bool hasFallCurve = shape[ReleaseCurve] != std::vector{0.0f};
        CHECK(worstDifference(out, referenceOf(x, shape, 48000.0)) < (hasFallCurve ? 5e-3 : 1e-4));
        CHECK(render(x, 60, true) == out);
        for (auto& control : shape.controls)
            control.resize(1);
        CHECK(render(noise, 200, false) == render(noise, 256, true));
    }
}

TEST_CASE("Capacitor: two that are partners have the bits of two that are not") {
    Rng rng = Rng::fromEnvironment();
    for (const simd::InstructionSet set : simd::supportedSets()) {
        INFO(simd::nameOf(set) << ", seed " << rng.seed());
        simd::ScopedInstructionSet scope(set);
        constexpr int length = 30000;
        wave::Environment environment;
        const Capacitor::Style style;
        std::deque<test::Signal> inputs;
        std::deque<Capacitor> paired, alone;
        for (int channel = 0; channel < 2; ++channel) {
            std::vector<float> x = gainChanges(rng, length);
            std::fill_n(x.begin() + 9000 + 2000 * channel, 7000, 0.0f);
            inputs.emplace_back(&environment, x);
            for (std::deque<Capacitor>* stages : {&paired, &alone}) {
                Capacitor& stage = stages->emplace_back(&environment, &style);
                stage.setInput(&inputs.back());
                turn(stage.release, 0.001f);
            }
        }
        paired[1].setPartner(&paired[0]);
        int block = 0;
        for (const int n : rng.pieces(length, 200)) {
            ++block;
            INFO("block " << block);
            for (std::deque<Capacitor>* stages : {&paired, &alone}) {
                if (block % 50 == 20) (*stages)[block % 4 / 2].reset();
                if (block % 40 == 10) (*stages)[1].attack.assign(block % 80 == 10 ? 0.1f : 0.01f);
            }
            environment.beginBlock();
            for (const std::size_t c : {block % 3 == 0 ? 1u : 0u, block % 3 == 0 ? 0u : 1u}) {
                const float* const out = paired[c].pull(n)->data();
                CHECK(std::equal(out, out + n, alone[c].pull(n)->data()));
            }
            environment.render(n, 0);
        }
    }
}

TEST_CASE("Capacitor: what is nearly reached is not a fall, and a plain block ends one") {
    for (bool fed : {false, true}) {
        CapacitorFixture rig({0.01f, 0.0099999f, 0.0099997f});
        Shape shape;
        shape[Attack] = {0.0f};
        shape[Release] = {10.0f};
        rig.apply(shape, fed);
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

TEST_CASE("Capacitor: at rest the input goes through; cuts differ by what rest leaves out") {
    std::vector<float> x(2000, 5e-10f);
    x[300] = 1e-7f;
    x[1999] = 1.0f;
    CapacitorFixture rig(x);
    turn(rig.stage.attack, 0.01f);
    turn(rig.stage.release, 0.001f);
    const bool passes[] = {true, false, true, true, true, true, true, false};
    for (const bool expected : passes) {
        rig.pull({250});
        CHECK(rig.passesByPointer() == expected);
        CHECK(!rig.stage.isConstant());
    }
    SignalSource silence(&rig.environment, 0.0f);
    CapacitorFixture still({0.0f});
    still.stage.setInput(&silence);
    still.pull({256});
    CHECK(still.stage.getOutput() == silence.getOutput());
    CHECK(still.stage.isConstant());

    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 30000;
    std::vector<float> gaps = gainChanges(rng, length);
    for (std::size_t n = 0; n < gaps.size(); ++n)
        if (n / 4000 % 2 == 1) gaps[n] = 8e-10f;
    const auto render = [&](int longest) {
        CapacitorFixture cut(gaps);
        turn(cut.stage.release, 0.005f);
        return cut.pull(rng.pieces(length, longest));
    };
    const std::vector<float> coarse = render(256), fine = render(16);
    for (std::size_t n = 0; n < gaps.size(); ++n)
        REQUIRE(std::abs(coarse[n] - fine[n]) <= 1.3e-7f + 1.2e-7f * std::abs(coarse[n]));
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
        once.apply(shape, true);
        CapacitorFixture again(twice);
        again.apply(shape, true);
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
            rig.apply(shape, true);
            rig.pull({1, 1});
            for (float y : rig.pull(evenPieces(4096, 256)))
                REQUIRE(std::isfinite(y));
        }
    Shape strange;
    for (auto& control : strange.controls)
        control = {nan, -1.0f, 1e30f, infinity, -infinity, 0.0f};
    CapacitorFixture rig(rng.noise(64, 20.0f));
    rig.apply(strange, true);
    rig.pull({64});
    rig.apply(Shape(), true);
    for (float y : rig.pull(evenPieces(4096, 256)))
        REQUIRE(std::isfinite(y));

    CapacitorFixture below({-4.0f, -8.0f});
    Shape automatic;
    automatic.autoRelease = true;
    below.apply(automatic, true);
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
    CHECK(style.exp(1.19e-7) == 1.0);
    CHECK(style.exp(-1e30) == style.exp(-25.0));
    CHECK(style.exp(std::numeric_limits<double>::quiet_NaN()) == style.exp(-25.0));
}
