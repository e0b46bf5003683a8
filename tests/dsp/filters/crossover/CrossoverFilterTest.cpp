#include "dsp/filters/crossover/CrossoverFilter.h"

#include <doctest/doctest.h>

#include "dsp/filters/crossover/SplitRig.h"

namespace cinder {
namespace {

using test::play;
using test::Samples;
using test::SignalSource;
using Response = CrossoverFilter::Response;

TEST_CASE("CrossoverFilter: orders 2 and 6 turn the high-pass, order 1 has no phase to make up") {
    for (const auto slope : test::allSlopes) {
        wave::Environment environment;
        SignalSource source(&environment, test::impulse(64));
        CrossoverFilter highPass(&environment, Response::HighPass);
        CrossoverFilter allPass(&environment, Response::AllPass);
        for (CrossoverFilter* filter : {&highPass, &allPass}) {
            filter->setInput(&source);
            filter->slope = slope;
            filter->frequency.getParameter().setValue(6.0f, 0.0f);
        }
        const bool turns = slope == CrossoverSlope::Db12 || slope == CrossoverSlope::Db36;
        const float first = play(environment, highPass, 64)[0];
        CHECK(first * (turns ? -1.0f : 1.0f) > 0.9f);
        environment.reset(wave::Environment::ResetMode::All);
        const Samples signal = test::Rng(1).noise(64);
        SignalSource noise(&environment, signal);
        allPass.setInput(&noise);
        CHECK((play(environment, allPass, 64) == signal) == (slope == CrossoverSlope::Db6));
    }
}

TEST_CASE("CrossoverFilter: a slope in dB reads as the nearest row") {
    struct {
        float db;
        CrossoverSlope slope;
    } const cases[] = {{0.0f, CrossoverSlope::Db6},   {8.9f, CrossoverSlope::Db6},
                       {9.0f, CrossoverSlope::Db12},  {18.0f, CrossoverSlope::Db24},
                       {30.0f, CrossoverSlope::Db36}, {42.0f, CrossoverSlope::Db48},
                       {96.0f, CrossoverSlope::Db48}};
    for (const auto& c : cases)
        CHECK(rowOfSlope(c.db).slope == c.slope);
}

}  // namespace
}  // namespace cinder
