#include "modulation/sources/envelopes/EnvelopeGenerator.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <vector>

#include "support/Rng.h"
#include "support/StageRig.h"

namespace {

using namespace cinder;
using namespace cinder::test;

enum Control { Delay, Attack, Decay, Release, Hold, Sustain, numControls };
using Controls = std::array<std::vector<float>, numControls>;  // one value or one for every sample
enum class Action { Start, Close };
using Actions = std::map<int, Action>;  // by sample

constexpr wave::FloatParameterBus EnvelopeGenerator::*buses[] = {
    &EnvelopeGenerator::delay,   &EnvelopeGenerator::attack, &EnvelopeGenerator::decay,
    &EnvelopeGenerator::release, &EnvelopeGenerator::hold,   &EnvelopeGenerator::sustain};

const EnvelopeCurves& sharedCurves() {
    static const EnvelopeCurves curves;
    return curves;
}

/// The envelope as it is written down, one sample at a time.
class Twin {
public:
    Twin(const EnvelopeCurves& curves, double rate, bool shifted)
        : curves(curves), rate(rate), shifted(shifted) {}

    std::vector<float> play(const Controls& controls, const Actions& actions, int length) {
        std::vector<float> out;
        for (int i = 0; i < length; ++i) {
            const auto action = actions.find(i);
            const bool acts = action != actions.end();
            if (acts && action->second == Action::Start) {
                read(controls, i);
                start();
            } else if (acts) {
                gate = false;
                countdown = 0;
            }
            if (countdown == 0) read(controls, i);
            --countdown;
            step();
            out.push_back(static_cast<float>(value));
        }
        return out;
    }

private:
    static double at(const std::vector<float>& values, int i) {
        return static_cast<double>(values[static_cast<std::size_t>(i) % values.size()]);
    }
    static bool differs(double a, double b) { return std::abs(a - b) > 1.1920929e-7; }
    int up4(double seconds) const { return (static_cast<int>(seconds * rate + 1e-4) + 3) / 4 * 4; }
    int down4(double samples) const { return static_cast<int>(samples + 1e-4) / 4 * 4; }
    double table(EnvelopeCurves::Section section, double position) const {
        const FunctionTable& t = curves[section];
        if (position >= 1.0) return static_cast<double>(t.values.back());
        return static_cast<double>(t.lookup(static_cast<float>(position)));
    }
    double offset() const { return shifted ? 0.0 : sustain; }

    void start() {
        attackStart = value;
        heldFor = 0;
        decayRange = std::max(0.0, 1.0 - sustain - 1.1920929e-7);
        delayLeft = up4(delay);
        attackLeft = up4(attack);
        attackPosition = decayPosition = releasePosition = 0.0;
        gate = running = true;
        released = false;
    }
    void read(const Controls& c, int i) {
        if (differs(delay, at(c[Delay], i))) {
            const int length = up4(delay);
            delay = at(c[Delay], i);
            if (delayLeft > 0) delayLeft = std::max(0, up4(delay) - (length - delayLeft));
        }
        if (differs(attack, at(c[Attack], i))) {
            attack = at(c[Attack], i);
            if (attackLeft > 0) attackLeft = down4((1.0 - attackPosition) * attack * rate);
        }
        if (differs(decay, at(c[Decay], i)) || differs(sustain, at(c[Sustain], i))) {
            decay = at(c[Decay], i);
            sustain = at(c[Sustain], i);
            if (!running) value = offset() - sustain;
            const double x = attackLeft < 1 ? std::abs(value - offset()) : 1.0 - sustain;
            decayRange = std::max(0.0, x - 1.1920929e-7);
            decayPosition = 0.0;
        }
        if (differs(release, at(c[Release], i))) {
            release = at(c[Release], i);
            lastValue = value;
            releasePosition = 0.0;
        }
        hold = at(c[Hold], i);
        countdown = 64;
    }
    void step() {
        const double rest = offset() - sustain;
        if (!running) {
            value = rest;
            return;
        }
        const bool holds = gate || (!released && heldFor < down4(hold * rate));
        if (!gate) ++heldFor;
        if (!holds) {
            released = true;
            value = table(EnvelopeCurves::Release, releasePosition) * (lastValue - rest) + rest;
            releasePosition += 1.0 / (rate * release);
            if (releasePosition >= 1.0) running = false;
            return;
        }
        if (delayLeft > 0) {
            --delayLeft;
        } else if (attackLeft > 0) {
            --attackLeft;
            const double height = 1.0 - (sustain - offset()) - attackStart - 1.1920929e-7;
            value = table(EnvelopeCurves::Attack, attackPosition) * height + attackStart;
            attackPosition += 1.0 / (rate * attack);
        } else {
            stepDecay();
        }
        lastValue = value;
    }
    void stepDecay() {
        const double above = value - offset();
        if (above > 1.1920929e-7)
            value = table(EnvelopeCurves::FallingDecay, decayPosition) * decayRange + offset();
        else if (-above > 1.1920929e-7)
            value = table(EnvelopeCurves::RisingDecay, decayPosition) * decayRange + offset() -
                    decayRange;
        else
            value = offset();
        decayPosition += 1.0 / (rate * decay);
    }

    const EnvelopeCurves& curves;
    const double rate;
    const bool shifted;
    double delay = 0.0, attack = 0.001451247, decay = attack, release = attack, hold = 0.0;
    double sustain = 1.0, value = 0.0, lastValue = 0.0, attackStart = 0.0, decayRange = 0.0;
    double attackPosition = 0.0, decayPosition = 0.0, releasePosition = 0.0;
    int delayLeft = 0, attackLeft = 0, heldFor = 0, countdown = 0;
    bool gate = false, running = false, released = false;
};

struct Rig {
    explicit Rig(const Controls& controls, float rate = 48000.0f,
                 const EnvelopeCurves* curves = &sharedCurves())
        : generator(&environment, curves) {
        environment.setSampleRate(rate);
        for (std::size_t i = 0; i < numControls; ++i) {
            wave::FloatParameterBus& bus = generator.*buses[i];
            turn(bus, controls[i][0]);
            if (controls[i].size() == 1) continue;
            sources.push_back(std::make_unique<SignalSource>(&environment, controls[i]));
            bus.setSource(sources.back().get());
        }
    }
    /// `pieces` are cut further where something happens.
    std::vector<float> play(const std::vector<int>& pieces, const Actions& actions = {}) {
        std::vector<float> out;
        out.reserve(65536);
        const RealtimeGuard guard;
        for (const int piece : pieces)
            for (int left = piece; left > 0;) {
                const auto now = static_cast<int>(environment.getPosition());
                const auto next = actions.upper_bound(now);
                const int n = next == actions.end() ? left : std::min(left, next->first - now);
                if (const auto action = actions.find(now); action != actions.end())
                    action->second == Action::Start ? generator.requestStart() : generator.close();
                environment.beginBlock();
                if (pulls) collect(out, n);
                environment.render(n, 0);
                left -= n;
            }
        return out;
    }
    void collect(std::vector<float>& out, int n) {
        const float* const samples = generator.pull(n)->data();
        out.insert(out.end(), samples, samples + n);
        const auto differs = [=](float x) { return x != samples[0]; };
        if (generator.isConstant()) lies = lies || std::any_of(samples, samples + n, differs);
    }

    wave::Environment environment;
    std::vector<std::unique_ptr<SignalSource>> sources;
    EnvelopeGenerator generator;
    bool pulls = true;
    bool lies = false;  // a block said to be constant was none
};

Controls randomControls(Rng& rng, bool move, int length) {
    constexpr double limits[numControls][2] = {{0.0, 0.01},     {0.00146, 0.03}, {0.00146, 0.03},
                                               {0.00146, 0.05}, {0.0, 0.02},     {0.0, 1.0}};
    Controls controls;
    for (std::size_t i = 0; i < numControls; ++i) {
        const double from = limits[i][0], to = limits[i][1];
        controls[i] = {static_cast<float>(rng.integer(0, 4) > 0 ? rng.real(from, to) : from)};
        // Long stretches at rest, then a step: that is how knobs move.
        for (int n = 1; move && rng.integer(0, 1) == 0 && n < length;) {
            const auto next = static_cast<float>(rng.real(from, to));
            controls[i].resize(static_cast<std::size_t>(n), controls[i].back());
            controls[i].push_back(next);
            n += rng.integer(1, 4000);
        }
    }
    return controls;
}

/// Notes at multiples of `grid`.
Actions randomActions(Rng& rng, int length, int grid) {
    Actions actions;
    for (int at = grid; at < length; at += grid * rng.integer(1, 4000 / grid))
        actions[at] = rng.integer(0, 1) == 0 ? Action::Start : Action::Close;
    return actions;
}

float worstDifference(const std::vector<float>& a, const std::vector<float>& b) {
    REQUIRE(a.size() == b.size());
    float worst = 0.0f;
    for (std::size_t i = 0; i < a.size(); ++i)
        worst = std::max(worst, std::abs(a[i] - b[i]));
    return worst;
}

}  // namespace

TEST_CASE("EnvelopeGenerator: follows its description, standing and moving, for any cut") {
    Rng rng = Rng::fromEnvironment();
    constexpr int length = 30000;
    const EnvelopeCurves straight{EnvelopeGenerator::DefaultUpCurve(),
                                  EnvelopeGenerator::DefaultDownCurve()};
    for (int round = 0; round < 48; ++round) {
        INFO("seed " << rng.seed() << ", round " << round);
        const bool moves = round % 2 == 1, shifted = round % 8 >= 6, isStraight = round % 4 >= 2;
        const float rate = round % 3 == 0 ? 96000.0f : 44100.0f;
        const Controls controls = randomControls(rng, moves, length);
        const Actions actions = randomActions(rng, length, round % 5 == 0 ? 1 : 4);
        const auto render = [&](const std::vector<int>& pieces) {
            Rig rig(controls, rate, isStraight ? nullptr : &sharedCurves());
            if (shifted) rig.generator.range = EnvelopeGenerator::Range::SustainAtZero;
            const std::vector<float> out = rig.play(pieces, actions);
            CHECK(!rig.lies);
            return out;
        };
        const std::vector<float> out = render(evenPieces(length, 256));
        Twin twin(isStraight ? straight : sharedCurves(), static_cast<double>(rate), shifted);
        CHECK(worstDifference(out, twin.play(controls, actions, length)) < 3e-6f);
        CHECK(worstDifference(out, render(rng.pieces(length, 9))) < 2.5e-7f);
        CHECK(worstDifference(out, render(rng.pieces(length, 256))) < 2.5e-7f);
    }
}

TEST_CASE("EnvelopeGenerator: the peak is 1, rest is exactly 0, sustain is exactly its level") {
    Rig rig({{{0.0f}, {0.01f}, {0.01f}, {0.01f}, {0.0f}, {0.5f}}});
    const Actions actions{{480, Action::Start}, {4800, Action::Close}, {4992, Action::Start}};
    const std::vector<float> out = rig.play(evenPieces(12000, 240), actions);
    CHECK(std::all_of(out.begin(), out.begin() + 480, [](float x) { return x == 0.0f; }));
    CHECK(out[4799] == 0.5f);
    CHECK(*std::max_element(out.begin() + 4992, out.end()) == doctest::Approx(1.0).epsilon(0.01));
    rig.generator.close();
    CHECK(rig.play(evenPieces(960, 240)).back() == 0.0f);
    CHECK(rig.generator.isMuted());
    CHECK(rig.generator.isConstant());
    CHECK(rig.generator.getSourceValue() == 0.0f);
}

TEST_CASE("EnvelopeGenerator: levels start and close it on multiples of 4, notes do not") {
    std::vector<float> levels(24000, 0.0f);
    std::fill(levels.begin() + 1003, levels.begin() + 6000, 0.5f);
    const Controls controls{{{0.0f}, {0.002f}, {0.01f}, {0.01f}, {0.0f}, {0.5f}}};
    Rig rig(controls);
    SignalSource signal(&rig.environment, levels);
    Trigger trigger(&rig.environment, &signal);
    trigger.threshold.assign(0.25f);
    rig.generator.setTrigger(&trigger);
    const std::vector<float> out = rig.play(evenPieces(12000, 240));
    // 15 ms of silence close it.
    const int close = (6000 + 720) / 4 * 4;
    Twin twin(sharedCurves(), 48000.0, false);
    CHECK(worstDifference(out, twin.play(controls, {{1000, Action::Start}, {close, Action::Close}},
                                         12000)) < 3e-6f);
    rig.generator.setTriggering(Triggering::Midi);
    rig.play(evenPieces(13200, 240));
    CHECK(rig.generator.isIdle());
    rig.generator.setTriggering(Triggering::SideChain);
    rig.play(evenPieces(4560, 240));
    CHECK(rig.generator.getSourceValue() == 0.5f);
    rig.generator.reset();
    CHECK(rig.play({4})[0] == 0.0f);
    CHECK(!rig.generator.isIdle());  // the sound goes on
}

TEST_CASE("EnvelopeGenerator: runs unheard, and reads no control while it rests") {
    Rng rng = Rng::fromEnvironment();
    const Controls controls = randomControls(rng, false, 1);
    const Actions actions{{240, Action::Start}, {720, Action::Close}};
    Rig heard(controls);
    Rig unheard(controls);
    unheard.pulls = false;
    heard.play(evenPieces(960, 240), actions);
    unheard.play(evenPieces(960, 240), actions);
    unheard.pulls = true;
    CHECK(unheard.play(evenPieces(4800, 240)) == heard.play(evenPieces(4800, 240)));

    Rig resting(controls);
    SignalSource time(&resting.environment, 0.01f);
    resting.generator.attack.setSource(&time);
    resting.pulls = false;
    resting.play({256, 256, 4});
    resting.pulls = true;
    resting.play({256});
    resting.pulls = false;
    CHECK(time.renders == 0);
    CHECK(resting.generator.isConstant());
    resting.generator.requestStart();
    CHECK(!resting.generator.isMuted());
    resting.play({256});
    CHECK(time.renders == 1);
    // Who pulls behind the visit hears a whole block.
    CHECK(resting.generator.getOutput()->data()[255] > 0.1f);
}

TEST_CASE("EnvelopeGenerator: whatever the controls bring, it stays finite") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Rng rng = Rng::fromEnvironment();
    const std::vector<float> hostile{nan, -1.0f, infinity, -infinity, 1e30f, 0.0f, 3e38f, 1e-40f};
    Controls controls;
    controls.fill(hostile);
    for (const float rate : {1e-3f, 48000.0f, 1e9f, 3e38f}) {
        INFO("rate " << rate << ", seed " << rng.seed());
        Rig rig(controls, rate);
        for (const float y : rig.play(rng.pieces(20000, 250), randomActions(rng, 20000, 1)))
            REQUIRE((y >= 0.0f && y <= 1.0f));
    }
}
