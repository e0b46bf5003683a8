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

}  // namespace
}  // namespace cinder
