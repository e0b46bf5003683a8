#include "cinder/audio/LevelMeter.h"

#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

namespace cinder::test {

TEST_CASE("LevelMeter: a full-scale sine has a peak of 0 dB and an RMS of -3.01 dB, however cut") {
    const std::vector<float> loud = sine(1000.0, 48000, 48000);
    for (const int cut : {1, 37, 512, 48000}) {
        INFO("cut " << cut);
        LevelMeter meter;
        for (int done = 0; done < 48000; done += cut) {
            const float* channels[] = {loud.data() + done, loud.data() + done};
            meter.add(channels, std::min(cut, 48000 - done));
        }
        CHECK(meter.peakDb() == doctest::Approx(0.0).epsilon(1e-6));
        CHECK(meter.rmsDb() == doctest::Approx(-3.0103).epsilon(1e-5));
    }
}

TEST_CASE("LevelMeter: the peak is the loudest channel's, the RMS that of all samples") {
    const float left[] = {0.5f, 0.5f};
    const float right[] = {-1.0f, 0.0f};
    const float* channels[] = {left, right};
    LevelMeter meter;
    meter.add(channels, 2);
    CHECK(meter.peak() == 1.0);
    CHECK(meter.rms() == doctest::Approx(std::sqrt(1.5 / 4.0)));
}

TEST_CASE("LevelMeter: silence is -infinity, and what isn't finite is counted and left out") {
    LevelMeter meter;
    CHECK(meter.rmsDb() == -std::numeric_limits<double>::infinity());
    const float samples[] = {0.0f, std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity(), 0.0f};
    const float* channel = samples;
    meter.add({&channel, 1}, 4);
    CHECK(meter.peakDb() == -std::numeric_limits<double>::infinity());
    CHECK(meter.rmsDb() == -std::numeric_limits<double>::infinity());
    CHECK(meter.numNonFinite() == 2);
}

}  // namespace cinder::test
