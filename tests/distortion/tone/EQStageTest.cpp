#include "distortion/tone/EQStage.h"

#include <doctest/doctest.h>

#include <cmath>
#include <deque>

#include "support/Rng.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::Rng;
using test::SignalSource;
using enum FilterShape;

constexpr FilterRow rows[] = {
    {120.0f, 12.0f, 1.0f, LowShelf},
    {900.0f, -9.0f, 3.0f, Bell},
    {6000.0f, 6.0f, 0.4f, HighShelf},
    {9000.0f, 0.0f, 1.0f, LowPass, FilterSlope::Poles4},
};

TEST_CASE(
    "qForShape: shelves are designed with 0.2 to 2.5, bells by a factor, others as they are") {
    const auto designed = [](FilterShape shape, float q) {
        const auto raw = static_cast<double>(qForShape(shape, q));
        return std::pow(32.0, std::log(raw) * 0.13554251 + 0.5) / 8.0;
    };
    for (const FilterShape shelf : {LowShelf, HighShelf}) {
        CHECK(designed(shelf, 0.025f) == doctest::Approx(0.2).epsilon(1e-5));
        CHECK(designed(shelf, 40.0f) == doctest::Approx(2.5).epsilon(1e-5));
        CHECK(qForShape(shelf, 1.0f) == doctest::Approx(1.0).epsilon(1e-6));
    }
    CHECK(qForShape(Bell, 1.5f) == doctest::Approx(std::sqrt(2.0)).epsilon(1e-6));
    for (const FilterShape pass : {LowPass, HighPass})
        CHECK(qForShape(pass, 2.6872f) == 2.6872f);
}

/// The same filters, wired by hand.
void wire(EQFilter& filter, const FilterRow& row, wave::Producer* input) {
    filter.setInput(input);
    filter.shape = row.shape;
    filter.slope = row.slope;
    filter.frequency.getParameter().setValue(std::log2(row.hz), 0.0f);
    filter.gain.getParameter().setValue(row.gainDb, 0.0f);
    filter.q.getParameter().setValue(qForShape(row.shape, row.q), 0.0f);
}

TEST_CASE("EQStage: empty it hands its input on, filled it is its filters one behind the other") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    wave::Environment environment;
    SignalSource input(&environment, rng.noise(4096));
    EQStage stage(&environment);
    stage.setInput(&input);

    for (const int count : {0, 1, 4, 2, 0, 3}) {
        INFO("filters " << count);
        EQFilter plain[4] = {EQFilter(&environment), EQFilter(&environment), EQFilter(&environment),
                             EQFilter(&environment)};
        wave::Producer* last = &input;
        for (int i = 0; i < count; ++i) {
            wire(plain[i], rows[i], last);
            last = &plain[i];
        }
        bool same = true;
        test::RealtimeGuard guard;
        stage.clear();
        for (int i = 0; i < count; ++i)
            stage.addFilter(rows[i]);
        for (const int n : {64, 256, 1, 100}) {
            environment.beginBlock();
            const float* const out = stage.pull(n)->data();
            same = same && std::equal(out, out + n, last->pull(n)->data());
            environment.render(n, 0);
        }
        CHECK(same);
        if (count == 0) CHECK(stage.getOutput() == input.getOutput());
    }
}

TEST_CASE("EQStage: two that are linked have the bits of two that are not, through every change") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    wave::Environment environment;
    std::deque<SignalSource> inputs;
    std::deque<EQStage> linked, alone;
    for (int channel = 0; channel < 2; ++channel) {
        inputs.emplace_back(&environment, rng.noise(16384));
        for (std::deque<EQStage>* stages : {&linked, &alone}) {
            EQStage& stage = stages->emplace_back(&environment);
            stage.setInput(&inputs.back());
            for (const FilterRow& row : rows)
                stage.addFilter(row);
        }
    }
    linked[1].link(linked[0]);

    for (int block = 0; block < 96; ++block) {
        INFO("block " << block);
        const test::RealtimeGuard guard;
        for (std::deque<EQStage>* stages : {&linked, &alone})
            for (EQStage& stage : *stages) {
                if (block == 20) stage.gainBus(1).assign(0.0f);
                if (block == 45) stage.gainBus(1).assign(3.0f);
                if (block == 60) stage.filter(0).enabled = false;
                if (block == 75) stage.filter(0).enabled = true;
            }
        // Of the second channel alone, which rests with the first.
        for (std::deque<EQStage>* stages : {&linked, &alone}) {
            if (block == 8) (*stages)[1].filter(1).enabled = false;
            if (block == 12) (*stages)[1].filter(1).enabled = true;
        }
        const int n = block % 3 == 0 ? 17 : 128;
        environment.beginBlock();
        const bool pulls = block != 50;  // nobody wants this one
        for (std::size_t c = 0; pulls && c < 2; ++c) {
            const float* const out = linked[c].pull(n)->data();
            CHECK(std::equal(out, out + n, alone[c].pull(n)->data()));
        }
        environment.render(n, 0);
        if (block == 85) environment.reset(wave::Environment::ResetMode::All);
    }
}

}  // namespace
}  // namespace cinder
