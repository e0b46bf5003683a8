#include <doctest/doctest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <string>

#include "distortion/tone/CabinetStyle.h"
#include "dsp/filters/ClosedForm.h"
#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::Rng;
using test::SignalSource;

struct Rig {
    explicit Rig(std::vector<float> samples, float rate = 44100.0f)
        : input(&environment, std::move(samples)) {
        cabinet.setInput(&input);
        environment.setSampleRate(rate);
    }

    wave::Environment environment;
    SignalSource input;
    CabinetProcessor cabinet{&environment};
};

std::vector<float> impulse(int numSamples) {
    std::vector<float> samples(static_cast<std::size_t>(numSamples));
    samples[0] = 1.0f;
    return samples;
}

TEST_CASE("Cabinet: an echo comes after its time, cut to samples, at any rate and cut") {
    constexpr TapRow taps[] = {{1.07f, -0.21f}, {8.0f, 0.22f}, {9.99f, 0.5f}};
    struct {
        float rate;
        std::size_t delays[3];
    } const rows[] = {
        {44100.0f, {47, 352, 440}}, {48000.0f, {51, 384, 479}}, {192000.0f, {205, 1536, 1918}}};
    for (const auto& row : rows)
        for (const int cut : {256, 64, 7, 4, 1}) {
            INFO("rate " << row.rate << ", cut " << cut);
            Rig rig(impulse(4000), row.rate);
            std::vector<float> expected = impulse(4000);
            for (int i = 0; i < 3; ++i) {
                rig.cabinet.addTap(taps[i]);
                expected[row.delays[i]] = taps[i].gain;
            }
            CHECK(play(rig.environment, rig.cabinet, 4000, cut) == expected);
        }
}

/// The response of a whole recipe from the closed forms of its parts.
double expectedDb(const CabinetRecipe& recipe, double hz, double rate) {
    using namespace std::complex_literals;
    std::complex<double> echoes = 1.0;
    for (const TapRow& tap : recipe.taps) {
        const double samples = std::floor(static_cast<double>(tap.ms) * 0.001 * rate);
        echoes += static_cast<double>(tap.gain) *
                  std::exp(-2.0i * std::numbers::pi * samples * hz / rate);
    }
    double power = std::norm(echoes);
    for (const FilterRow& row : recipe.filters) {
        const double warped = std::tan(std::numbers::pi * hz / rate) /
                              std::tan(std::numbers::pi * static_cast<double>(row.hz) / rate);
        power *= test::closedForm(row.shape, polesOf(row.slope, row.shape),
                                  static_cast<double>(row.gainDb),
                                  static_cast<double>(qForShape(row.shape, row.q)), warped);
    }
    return 10.0 * std::log10(power);
}

TEST_CASE("Cabinets: the impulse response is that of the taps and the filters") {
    using namespace std::complex_literals;
    for (const CabinetRecipe& recipe : cabinetRecipes)
        for (const double rate : {44100.0, 96000.0}) {
            const CinderCabinetStyle style(recipe);
            const int length = 32768;
            Rig rig(impulse(length), static_cast<float>(rate));
            const auto report = test::guarded([&] { style.apply(rig.cabinet); });
            CHECK_MESSAGE(report.isClean(), report);
            const std::vector<float> response = play(rig.environment, rig.cabinet, length);
            for (const double hz : {25.0, 60.0, 110.0, 480.0, 1200.0, 3300.0, 5100.0, 9000.0}) {
                INFO(std::string(recipe.name) << " at " << rate << ", " << hz << " Hz");
                std::complex<double> sum = 0.0;
                for (int n = 0; n < length; ++n)
                    sum += static_cast<double>(response[static_cast<std::size_t>(n)]) *
                           std::exp(-2.0i * std::numbers::pi * (hz / rate * n));
                CHECK(std::abs(10.0 * std::log10(std::norm(sum)) - expectedDb(recipe, hz, rate)) <
                      0.01);
            }
        }
}

TEST_CASE("Cabinet: empty it hands its input on, and no echo outlives a change or a gap") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    std::vector<float> samples = rng.noise(1000);
    samples.resize(8000);
    Rig rig(samples);
    const CinderCabinetStyle echoes({"", cabinetRecipes[3].taps, {}});
    const CabinetStyle none;
    const auto isSilent = [&] {
        for (const float x : play(rig.environment, rig.cabinet, 1000, 100))
            if (x != 0.0f) return false;
        return true;
    };
    play(rig.environment, rig.cabinet, 500, 100);
    CHECK(rig.cabinet.getOutput() == rig.input.getOutput());
    echoes.apply(rig.cabinet);

    SUBCASE("a change of style") {
        play(rig.environment, rig.cabinet, 500, 100);
        none.apply(rig.cabinet);
        echoes.apply(rig.cabinet);
        CHECK(isSilent());
    }
    SUBCASE("a reset") {
        play(rig.environment, rig.cabinet, 500, 100);
        rig.environment.reset(wave::Environment::ResetMode::All);
        CHECK(isSilent());
    }
    SUBCASE("a gap") {
        play(rig.environment, rig.cabinet, 300, 100);
        play(rig.environment, rig.input, 700, 100);
        CHECK(isSilent());
    }
    SUBCASE("otherwise they sound on") {
        play(rig.environment, rig.cabinet, 500, 100);
        CHECK_FALSE(isSilent());
    }
}

}  // namespace
}  // namespace cinder
