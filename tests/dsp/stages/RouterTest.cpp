#include "dsp/stages/Router.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

#include "dsp/stages/VolumeFilter.h"
#include "support/StageRig.h"

namespace cinder {
namespace {

using test::play;
using test::SignalSource;

TEST_CASE("Router: at rest it hands on the selected block and pulls nothing else") {
    wave::Environment environment;
    SignalSource a(&environment, std::vector<float>{1.0f, 2.0f}), b(&environment, 3.0f);
    Router router(&environment, 3);  // input 2 stays unconnected
    router.connect(0, &a);
    router.connect(1, &b);
    play(environment, router, 64);
    CHECK(router.getOutput() == a.getOutput());
    CHECK(b.renders == 0);

    router.selection = 1;
    play(environment, router, 4096);
    const int renders = a.renders;
    play(environment, router, 64);
    CHECK(router.getOutput() == b.getOutput());
    CHECK(router.isConstant());
    CHECK(a.renders == renders);

    for (int nowhere : {2, 3, -1}) {
        router.selection = nowhere;
        play(environment, router, 4096);
        CHECK(router.getOutput() == environment.getZeroBlock());
        CHECK(router.isConstant());
    }
}

TEST_CASE("Router: fades in 20 ms with no step above that of the ramp, also when switched midway") {
    for (int switchBackAfter : {100, 441, 2000}) {
        wave::Environment environment;
        SignalSource low(&environment, -1.0f), high(&environment, 1.0f);
        Router router(&environment, 2);
        router.connect(0, &low);
        router.connect(1, &high);
        std::vector<float> out;
        for (const auto& [selection, n] : {std::pair{0, 64}, {1, switchBackAfter}, {0, 2000}}) {
            router.selection = selection;
            const std::vector<float> more = play(environment, router, n, 50);
            out.insert(out.end(), more.begin(), more.end());
        }
        float largest = 0.0f;
        for (std::size_t i = 1; i < out.size(); ++i)
            largest = std::max(largest, std::abs(out[i] - out[i - 1]));
        INFO("switched back after " << switchBackAfter);
        CHECK(largest <= 2.0f / 882.0f * 1.001f);
        CHECK(std::ranges::max(out) ==
              doctest::Approx(std::min(1.0, switchBackAfter / 441.0 - 1)).epsilon(0.01));
        CHECK(out.back() == -1.0f);
        CHECK(std::ranges::all_of(out, [](float y) { return std::abs(y) <= 1.00001f; }));
    }
}

struct Switch final : wave::MuteController {
    bool isMuted() const noexcept CINDER_REALTIME override { return muted; }
    bool muted = false;
};

TEST_CASE("VolumeFilter: silent, handed on or scaled, and no more pulled than that takes") {
    wave::Environment environment;
    SignalSource in(&environment, std::vector<float>{1.0f, -2.0f});
    SignalSource second(&environment, 0.5f);
    VolumeFilter volume(&environment, 0.0f, 4.0f);
    Switch mute;
    volume.setInput(&in);
    volume.setMuteController(&mute);
    CHECK(play(environment, volume, 2) == std::vector<float>{1.0f, -2.0f});
    CHECK(volume.getOutput() == in.getOutput());

    volume.setSecondLevel(&second);
    CHECK(play(environment, volume, 2) == std::vector<float>{0.5f, -1.0f});
    volume.level.assign(3.0f);
    play(environment, volume, 16384);
    CHECK(play(environment, volume, 2) == std::vector<float>{1.5f, -3.0f});

    volume.level.assign(0.0f);
    play(environment, volume, 16384);
    const int renders = second.renders;
    CHECK(play(environment, volume, 2) == std::vector<float>(2, 0.0f));
    CHECK(volume.isConstant());
    CHECK(second.renders == renders);

    volume.level.assign(1.0f);
    mute.muted = true;
    const int inputRenders = in.renders;
    CHECK(play(environment, volume, 2) == std::vector<float>(2, 0.0f));
    CHECK(in.renders == inputRenders);
}

}  // namespace
}  // namespace cinder
