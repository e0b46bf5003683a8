#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "distortion/styles/BandRig.h"

namespace cinder {
namespace {

using test::allStyles;
using test::BandRig;
using test::play;
using enum StyleId;

float largestStep(const std::vector<float>& samples) {
    float largest = 0.0f;
    for (std::size_t i = 1; i < samples.size(); ++i)
        largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
    return largest;
}

TEST_CASE("Style change: where the switches fade no step is above the signal's own") {
    // At drive 0 and this level all curves are near to straight, and what is left is the fade.
    constexpr float peak = 0.05f;
    std::vector<float> samples;
    for (int i = 0; i < 4410; ++i)
        samples.push_back(peak * std::sin(0.02849517f * static_cast<float>(i)));  // 200 Hz
    constexpr StyleId path[] = {CleanTape, Smudge, Destroy, Smudge, GentleSaturation, Smudge};
    for (const int factor : {1, 8}) {
        BandRig rig({samples}, 44100.0f, factor);
        wave::Producer& band = rig.channels[0]->cabinet;
        rig.set(path[0], 0.0f);
        play(rig.environment, band, 300, 100);  // the converters begin from silence
        std::vector<float> out;
        for (const StyleId style : path) {
            rig.set(style, 0.0f);
            const auto more = play(rig.environment, band, 3000, 100);
            out.insert(out.end(), more.begin(), more.end());
        }
        INFO("factor " << factor);
        CHECK(largestStep(out) < 1.05f * largestStep(samples));
    }
}

TEST_CASE("Style change: between two curves the step is theirs, at any factor") {
    std::vector<float> samples;
    for (int i = 0; i < 4410; ++i)
        samples.push_back(0.05f * std::sin(0.02849517f * static_cast<float>(i)));  // 200 Hz
    constexpr StyleId path[] = {CleanTape, HeavySaturation, GentleSaturation, HeavySaturation};
    for (const float drive : {0.0f, 0.6f, 1.0f}) {
        float atFactor1 = 0.0f;
        for (const int factor : {1, 2, 4, 8}) {
            BandRig rig({samples}, 44100.0f, factor);
            wave::Producer& band = rig.channels[0]->cabinet;
            rig.set(path[0], drive);
            play(rig.environment, band, 300, 100);
            std::vector<float> out;
            for (int change = 0; change < 60; ++change) {  // all over the sine
                rig.set(path[change % 4], drive);
                const auto more = play(rig.environment, band, 337, 100);
                out.insert(out.end(), more.begin(), more.end());
            }
            INFO("drive " << drive << ", factor " << factor);
            if (factor == 1) atFactor1 = largestStep(out);
            CHECK(largestStep(out) <= 1.5f * atFactor1);
        }
    }
}

TEST_CASE("Style change: filters and curves change at once, and not by much more than they give") {
    std::vector<float> samples;
    for (int i = 0; i < 4410; ++i)
        samples.push_back(0.25f * std::sin(0.02849517f * static_cast<float>(i)));  // 200 Hz
    for (const float drive : {0.0f, 0.5f, 1.0f}) {
        BandRig rig({samples}, 44100.0f, 8);
        wave::Producer& band = rig.channels[0]->cabinet;
        const auto highest = [&](int numSamples) {
            const auto out = play(rig.environment, band, numSamples);
            return std::abs(*std::max_element(out.begin(), out.end(), [](float a, float b) {
                return std::abs(a) < std::abs(b);
            }));
        };
        float before = highest(22050);
        for (int i = 0; i < 2 * numStyles; ++i) {
            const auto style = StyleId{i * 5 % numStyles};
            if (style == Smudge || style == Destroy) continue;  // these fade
            rig.set(style, drive);
            const float behind = highest(900);
            highest(22050);
            const float after = highest(2205);
            INFO("to style " << static_cast<int>(style) << ", drive " << drive);
            CHECK(behind < 1.8f * std::max(before, after));
            before = after;
        }
    }
}

TEST_CASE("Style change: a stage that comes back has forgotten what it heard") {
    std::vector<float> samples(20000, 0.8f);
    samples.resize(200000);
    constexpr std::pair<StyleId, StyleId> cases[] = {
        {Smudge, CleanTape}, {Destroy, CleanTape}, {CleanTape, Smudge}};
    for (const auto& [style, other] : cases) {
        BandRig rig({samples});
        wave::Producer& band = rig.channels[0]->cabinet;
        rig.set(style, 1.0f);
        play(rig.environment, band, 10000);
        rig.set(other, 0.0f);
        play(rig.environment, band, 100000);
        rig.set(style, 1.0f);
        INFO("style " << static_cast<int>(style));
        const auto out = play(rig.environment, band, 60000);
        CHECK(std::count(out.begin(), out.end(), 0.0f) == 60000);
    }
}

TEST_CASE("DistortionController: a style that is not there is neutral and has no cabinet") {
    BandRig rig({{0.5f, -0.25f}});
    BandRig::Channel& channel = *rig.channels[0];
    rig.set(ScreamingAmp, 0.0f);
    CHECK(channel.cabinet.getCount() == 3);
    CHECK(channel.cabinet.getNumTaps() == 4);
    for (const int nowhere : {-1, 16, 1 << 30}) {
        rig.controller.style = nowhere;
        play(rig.environment, channel.cabinet, 64);
        CHECK(channel.cabinet.getOutput() == channel.distortion.getOutput());
        rig.controller.style = static_cast<int>(LeadAmp);
    }
    CHECK(channel.cabinet.getCount() == 4);
}

TEST_CASE("DistortionController: applies the style at hand when its entry is added") {
    BandRig rig({std::vector<float>{0.5f}});
    CabinetProcessor cabinet(&rig.environment);
    DistortionController controller;
    controller.style = 1;
    controller.addProcessors(nullptr, &cabinet);
    const CinderCabinetStyle box(cabinetRecipes[0]);
    controller.addStyle(nullptr, &box);
    CHECK(cabinet.getCount() == 0);
    controller.addStyle(nullptr, &box);
    CHECK(cabinet.getCount() == 4);
}

}  // namespace
}  // namespace cinder
