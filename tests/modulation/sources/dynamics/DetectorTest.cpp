#include "modulation/sources/dynamics/Detector.h"

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include "core/simd/InstructionSet.h"
#include "support/Rng.h"
#include "support/StageRig.h"

#include <doctest/doctest.h>

namespace {

using namespace cinder;
using namespace cinder::test;

using Domain = Detector::GainChangeDomain;
using Purpose = Detector::Purpose;
using KneeStyle = Detector::KneeStyle;

struct Setting {
    Purpose purpose;
    float threshold, ratio, kneeWidth, range, rangeKnee;
};

constexpr Setting settings[] = {
    //  purpose            threshold  ratio   knee    range  range knee
    {Purpose::Compress, -20.0f, 2.0f, 0.0f, 180.0f, 0.0f},
    {Purpose::Compress, -20.0f, 1.5f, 12.0f, 180.0f, 0.0f},
    {Purpose::Compress, 0.0f, 99.9f, 30.0f, 24.0f, 0.0f},
    {Purpose::Compress, -60.0f, 100.0f, 6.0f, 40.0f, 0.0f},
    {Purpose::Compress, -60.0f, 4.0f, 6.0f, 40.0f, 12.0f},
    {Purpose::Expand, -6.0f, 2.0f, 12.0f, 36.0f, 0.0f},
    {Purpose::Expand, -48.0f, 1.5f, 0.0f, 60.0f, 0.0f},
    {Purpose::Expand, -48.0f, 4.0f, 30.0f, 30.0f, 30.0f},
    {Purpose::Expand, 12.0f, 100.0f, 3.0f, 180.0f, 0.0f},
    {Purpose::Boost, -30.0f, 1.25f, 0.0f, 180.0f, 0.0f},
    {Purpose::Boost, -30.0f, 3.0f, 20.0f, 48.0f, 6.0f},
};

double bent(double d, double width) {
    const double half = width / 2;
    if (width <= 1.2e-7 || std::abs(d) > half) return d;
    return std::pow((half + d) / width, 2) * half;
}

/// The change in dB, without hysteresis, in exact arithmetic.
double changeOf(double levelDb, const Setting& s) {
    const bool countsDown = s.purpose == Purpose::Expand;
    const double width = static_cast<double>(s.kneeWidth);
    const double range = static_cast<double>(s.range);
    const double distance = levelDb - static_cast<double>(s.threshold);
    const double ratio = static_cast<double>(s.ratio);
    double d = bent(countsDown ? -distance - width / 2 : distance, width);
    if (s.purpose == Purpose::Compress)
        d *= ratio < 100.0 ? 1.0 - 1.0 / ratio : 1.0;
    else
        d *= ratio - 1.0;
    d = range - bent(range - d, static_cast<double>(s.rangeKnee));
    return std::clamp(d, 0.0, range);
}

double gainOf(double level, const Setting& s) {
    const double change = changeOf(std::max(20.0 * std::log10(std::abs(level)), -180.0), s);
    const double gain = std::pow(10.0, (s.purpose == Purpose::Boost ? change : -change) / 20.0);
    return s.purpose == Purpose::Compress ? 1.0 - gain : gain;
}

struct DetectorFixture {
    explicit DetectorFixture(std::vector<float> levels) : signal(&environment, std::move(levels)) {
        stage.setInput(&signal);
    }
    /// Where `moves`, the threshold comes from a source that does not say that it stands still.
    void apply(const Setting& s, Domain domain, bool moves = false) {
        stage.gainChangeDomain = domain;
        stage.purpose = s.purpose;
        turn(stage.threshold, s.threshold);
        turn(stage.ratio, s.ratio);
        turn(stage.kneeWidth, s.kneeWidth);
        turn(stage.range, s.range);
        turn(stage.rangeKnee, s.rangeKnee);
        if (moves)
            stage.threshold.setSource(&threshold.emplace(&environment, std::vector{s.threshold}));
    }
    std::vector<float> pull(const std::vector<int>& pieces) {
        return playPieces(environment, stage, pieces);
    }

    wave::Environment environment;
    SignalSource signal;
    std::optional<SignalSource> threshold;
    Detector stage{&environment};
};

/// A level for every dB from -200 to 100, and one between any two.
std::vector<float> levelsDb() {
    std::vector<float> levels;
    for (int i = -400; i <= 200; ++i)
        levels.push_back(static_cast<float>(i) * 0.5f + (i % 2 == 0 ? 0.0f : 0.123f));
    return levels;
}

std::vector<float> linear(std::vector<float> levels) {
    for (std::size_t i = 0; i < levels.size(); ++i)
        levels[i] = (i % 3 == 0 ? -1.0f : 1.0f) * std::pow(10.0f, levels[i] / 20.0f);
    levels.insert(levels.end(), {0.0f, -0.0f, 1e-45f, 1e-9f, 1.0f, 1e30f});
    return levels;
}

}  // namespace

TEST_CASE("Detector: every purpose follows the formula, kernel and formula to the same bits") {
    Rng rng = Rng::fromEnvironment();
    const std::vector<float> db = levelsDb(), lin = linear(db);
    for (const simd::InstructionSet set : simd::supportedSets())
        for (const Setting& s : settings)
            for (const bool isLinear : {false, true}) {
                INFO(simd::nameOf(set) << ", setting " << &s - settings << ", linear " << isLinear
                                       << ", seed " << rng.seed());
                const simd::ScopedInstructionSet scoped(set);
                const std::vector<float>& levels = isLinear ? lin : db;
                const auto length = static_cast<int>(levels.size());
                DetectorFixture standing(levels), moving(levels);
                standing.apply(s, isLinear ? Domain::Linear : Domain::Decibel);
                moving.apply(s, isLinear ? Domain::Linear : Domain::Decibel, true);
                const std::vector<float> out = standing.pull(evenPieces(length, 199));
                CHECK(moving.pull(rng.pieces(length, 40)) == out);
                double worst = 0.0;
                for (std::size_t i = 0; i < out.size(); ++i) {
                    const auto level = static_cast<double>(levels[i]);
                    const double expected = isLinear ? gainOf(level, s) : changeOf(level, s);
                    const double error = std::abs(static_cast<double>(out[i]) - expected);
                    const bool isRelative = isLinear && s.purpose != Purpose::Compress;
                    worst = std::max(worst, isRelative ? error / expected : error);
                }
                // The rounding of a level grows with the ratio.
                CHECK(worst < (isLinear && s.ratio <= 4.0f ? 2e-6 : 1e-5));
            }
}

TEST_CASE("Detector: the gate shuts below the hysteresis and opens at the threshold") {
    const std::vector<float> levels{-5.0f, 1.0f, -5.0f, -10.0f, -10.5f, -5.0f, 0.0f, 0.5f, -9.0f};
    const std::vector<float> expected{5.0f, 0.0f, 0.0f, 0.0f, 10.5f, 5.0f, 0.0f, 0.0f, 0.0f};
    const Setting s{Purpose::Expand, 0.0f, 2.0f, 0.0f, 180.0f, 0.0f};
    for (int cut : {1, 2, 9}) {
        INFO("cut " << cut);
        DetectorFixture rig(levels);
        rig.apply(s, Domain::Decibel);
        turn(rig.stage.hysteresis, 10.0f);
        CHECK(rig.pull(evenPieces(9, cut)) == expected);
    }
}

TEST_CASE("Detector: what shuts the gate, and what a hysteresis that comes later finds") {
    using Change = void (*)(Detector&);
    const struct {
        Change change;
        float after;  // change at 5 dB below the threshold
    } rows[] = {
        {[](Detector&) {}, 0.0f},
        {[](Detector& d) { turn(d.kneeWidth, 1e-8f); }, 0.0f},
        {[](Detector& d) { d.reset(); }, 5.0f},
        {[](Detector& d) { d.purpose = Purpose::Boost, d.purpose = Purpose::Expand; }, 5.0f},
        {[](Detector& d) {
             d.gainChangeDomain = Domain::Linear, d.gainChangeDomain = Domain::Decibel;
         },
         5.0f},
    };
    const Setting s{Purpose::Expand, 0.0f, 2.0f, 0.0f, 180.0f, 0.0f};
    for (const auto& row : rows) {
        INFO("row " << &row - rows);
        DetectorFixture rig({1.0f, -5.0f, -5.0f});
        rig.apply(s, Domain::Decibel);
        turn(rig.stage.hysteresis, 10.0f);
        CHECK(rig.pull({2}) == std::vector<float>{0.0f, 0.0f});
        row.change(rig.stage);
        CHECK(rig.pull({1})[0] == row.after);
    }
    for (bool moves : {false, true})
        for (float before : {-5.0f, 2.0f}) {
            INFO("moves " << moves << ", before " << before);
            DetectorFixture rig({1.0f, before, 0.0f, -5.0f});
            rig.apply(s, Domain::Decibel, moves);
            rig.pull({3});
            turn(rig.stage.hysteresis, 10.0f);
            CHECK(rig.pull({1})[0] == (before < 0.0f ? 5.0f : 0.0f));
        }
}

TEST_CASE("Detector: what stands still is told") {
    for (Purpose purpose : {Purpose::Compress, Purpose::Expand, Purpose::Boost})
        for (Domain domain : {Domain::Linear, Domain::Decibel}) {
            INFO("purpose " << static_cast<int>(purpose) << ", domain "
                            << static_cast<int>(domain));
            DetectorFixture rig({0.01f, -70.0f, 3.0f});
            rig.apply({purpose, -20.0f, 1.0f, 12.0f, 180.0f, 0.0f}, domain);
            const bool isGain = domain == Domain::Linear && purpose != Purpose::Compress;
            CHECK(rig.pull({3}) == std::vector<float>(3, isGain ? 1.0f : 0.0f));
            CHECK(rig.stage.isConstant());
            if (!isGain) CHECK(rig.stage.getOutput() == rig.environment.getZeroBlock());

            turn(rig.stage.ratio, 4.0f);
            const float y = rig.pull({1})[0];
            CHECK(!rig.stage.isConstant());
            SignalSource constant(&rig.environment, 0.01f);
            rig.stage.setInput(&constant);
            CHECK(rig.pull({256, 5}) == std::vector<float>(261, y));
            CHECK(rig.stage.isConstant());
            rig.stage.ratio.getParameter().setValue(8.0f, 100.0f);
            rig.pull({64});
            CHECK(!rig.stage.isConstant());
        }
}

TEST_CASE("Detector: the logarithmic knee") {
    const std::vector<float> levels{-180.0f, -90.0f, -30.0f, -6.0f, 0.0f, 12.0f};
    for (Domain domain : {Domain::Linear, Domain::Decibel})
        for (float threshold : {-60.0f, -20.0f, -1e-8f, 0.0f, 20.0f}) {
            INFO("domain " << static_cast<int>(domain) << ", threshold " << threshold);
            DetectorFixture rig(domain == Domain::Linear ? linear(levels) : levels);
            rig.apply({Purpose::Boost, threshold, 1.0f, 0.0f, 40.0f, 0.0f}, domain);
            rig.stage.kneeStyle = KneeStyle::Logarithmic;
            const std::vector<float> out = rig.pull({static_cast<int>(levels.size())});
            for (std::size_t i = 0; i < levels.size(); ++i) {
                const double x = std::pow(10.0, static_cast<double>(levels[i]) / 20.0);
                const double slope = std::pow(10.0, -static_cast<double>(threshold) / 20.0) - 1.0;
                const double full = threshold < -1e-7f ? 20.0 * std::log10(slope * x + 1.0) : 0.0;
                const double d = std::min(full, 40.0);
                const double y = domain == Domain::Linear ? 1.0 - std::pow(10.0, -d / 20.0) : d;
                CHECK(static_cast<double>(out[i]) == doctest::Approx(y).epsilon(1e-5));
            }
        }
}

TEST_CASE("Detector: controls that move, cut anywhere") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int length = 3000;
    const std::vector<float> levels = rng.noise(length, 60.0f);
    const struct {
        wave::FloatParameterBus Detector::*bus;
        double from, to;
    } rows[] = {
        {&Detector::threshold, -40.0, 10.0}, {&Detector::ratio, 1.0, 120.0},
        {&Detector::kneeWidth, 0.0, 30.0},   {&Detector::range, 0.0, 180.0},
        {&Detector::rangeKnee, 0.0, 30.0},   {&Detector::hysteresis, 0.0, 20.0},
    };
    std::vector<std::vector<float>> controls;
    for (const auto& row : rows)
        for (float& x : controls.emplace_back(length))
            x = static_cast<float>(rng.real(row.from, row.to));
    for (Domain domain : {Domain::Linear, Domain::Decibel})
        for (Purpose purpose : {Purpose::Compress, Purpose::Expand, Purpose::Boost}) {
            const auto render = [&](int longest) {
                DetectorFixture rig(levels);
                rig.stage.gainChangeDomain = domain;
                rig.stage.purpose = purpose;
                std::vector<std::unique_ptr<SignalSource>> sources;
                for (std::size_t i = 0; i < controls.size(); ++i) {
                    sources.push_back(
                        std::make_unique<SignalSource>(&rig.environment, controls[i]));
                    (rig.stage.*rows[i].bus).setSource(sources.back().get());
                }
                return rig.pull(rng.pieces(length, longest));
            };
            const std::vector<float> whole = render(256);
            CHECK(render(1) == whole);
            CHECK(render(60) == whole);
        }
}

TEST_CASE("Detector: a knob's ramp leads from the constant block over the formula to the kernel") {
    DetectorFixture rig({-40.0f});
    turn(rig.stage.threshold, -20.0f);
    rig.stage.purpose = Purpose::Expand;
    CHECK(rig.pull({100})[99] == 0.0f);
    rig.stage.ratio.getParameter().setValue(3.0f, 10.0f);  // 441 samples
    const std::vector<float> out = rig.pull(evenPieces(700, 70));
    for (std::size_t n = 0; n < out.size(); ++n) {
        const double expected = 40.0 * std::min(static_cast<double>(n) / 441.0, 1.0);
        REQUIRE(static_cast<double>(out[n]) == doctest::Approx(expected).epsilon(1e-5));
    }
}

TEST_CASE("Detector: numbers that are none end within the range") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const std::vector<float> strange{nan, -nan, infinity, -infinity, 3e38f, -3e38f, 1e-45f};
    for (const Setting& s : settings)
        for (Domain domain : {Domain::Linear, Domain::Decibel})
            for (KneeStyle style : {KneeStyle::Quadratic, KneeStyle::Logarithmic})
                for (float hysteresis : {0.0f, 3.0f}) {
                    INFO("setting " << &s - settings << ", style " << static_cast<int>(style));
                    DetectorFixture rig(strange);
                    rig.apply(s, domain);
                    rig.stage.kneeStyle = style;
                    turn(rig.stage.hysteresis, hysteresis);
                    for (float y : rig.pull({7})) {
                        CHECK(y >= 0.0f);
                        CHECK(y <= (domain == Domain::Decibel ? s.range : 1.0001e9f));
                    }
                }
    for (bool moves : {false, true}) {
        DetectorFixture levels({nan, 0.0f});
        levels.apply(settings[6], Domain::Linear, moves);
        const std::vector<float> gains = levels.pull({2});
        CHECK(gains[0] == gains[1]);
    }
}
