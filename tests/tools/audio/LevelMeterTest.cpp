#include "cinder/audio/LevelMeter.h"

#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

namespace cinder::test {

TEST_CASE("LevelMeter: peak and RMS of all that is finite, however cut") {
    const std::vector<float> loud = sine(1000.0, 48000, 48000);
    const std::vector<float> silent(48000), notFinite = {NAN, INFINITY};
    for (const int cut : {1, 37, 512, 48000}) {
        INFO("cut " << cut);
        LevelMeter meter;
        CHECK(meter.rmsDb() == -INFINITY);
        const float* const wrong[] = {notFinite.data()};
        meter.add(wrong, 2);
        CHECK(meter.peakDb() == -INFINITY);
        CHECK(meter.rmsDb() == -INFINITY);
        for (int done = 0; done < 48000; done += cut) {
            const float* channels[] = {silent.data(), loud.data() + done};
            meter.add(channels, std::min(cut, 48000 - done));
        }
        CHECK(meter.numNonFinite() == 2);
        CHECK(meter.peakDb() == doctest::Approx(0.0).epsilon(1e-6));
        CHECK(meter.rms() == doctest::Approx(0.5).epsilon(1e-5));
        CHECK(meter.rmsDb() == doctest::Approx(-6.0206).epsilon(1e-5));
    }
}

}  // namespace cinder::test
