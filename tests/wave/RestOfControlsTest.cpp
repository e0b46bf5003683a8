#include "wave/RestOfControls.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/Rng.h"
#include "wave/Cycle.h"

namespace cinder::wave {
namespace {

/// A stage that hands out its two controls one behind the other, and may rest.
class Reader final : public Source {
public:
    Reader(Environment* environment, bool rests) : Source(environment), mayRest(rests) {
        for (FloatParameterBus* control : {&first, &second})
            rest.add(*control);
    }
    void render(BasicBlock<float>*, int numSamples, unsigned) noexcept override {
        if (mayRest && rest.goesOn(environment->getPosition(), numSamples)) {
            ++rested;
        } else {
            blocks[0] = first.pull(numSamples)->data();
            blocks[1] = second.pull(numSamples)->data();
            if (mayRest) rest.tryToBegin(numSamples);
        }
        const test::RealtimePause notes;
        for (const float* block : blocks)
            heard.insert(heard.end(), block, block + numSamples);
    }

    FloatParameterBus first{environment, 0.2f}, second{environment, 0.7f};
    RestOfControls rest;
    const float* blocks[2] = {};
    std::vector<float> heard;
    int rested = 0;

private:
    bool mayRest;
};

TEST_CASE("RestOfControls: nobody can tell it from looking every time") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    Environment environment;
    Reader resting(&environment, true), looking(&environment, false);
    test::ClockSource other(&environment);
    int numBlocks = 0;
    for (; numBlocks < 3000; ++numBlocks) {
        const int what = rng.integer(0, 99);
        const float value = static_cast<float>(rng.real(0.0, 1.0));
        for (Reader* reader : {&resting, &looking}) {
            if (what < 3) reader->first.assign(value);
            if (what == 3) reader->second.getParameter().setRange(0.0f, 0.5f + value / 2.0f, 0.0f);
            if (what == 4) reader->second.assign(value);
        }
        if (what == 5) environment.reset(Environment::ResetMode::MarkOnly);
        const int n = rng.integer(1, 256);
        if (what == 6)
            test::runCycle(environment, n);  // nobody wants this one
        else
            test::runCycle(environment, n, {&resting, &looking});
    }
    CHECK(resting.heard == looking.heard);
    CHECK(resting.rested > numBlocks / 4);

    resting.first.setSource(&other);
    test::runCycle(environment, 8, {&resting});
    const int before = resting.rested;
    test::runCycle(environment, 8, {&resting});
    test::runCycle(environment, 8, {&resting});
    CHECK(resting.rested == before);  // what comes from elsewhere may move
}

}  // namespace
}  // namespace cinder::wave
