#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>

#include "core/platform/Denormals.h"
#include "distortion/styles/BandRig.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::allStyles;
using test::BandRig;
using test::play;
using test::Rng;
using test::SignalSource;

/// A style's stages wired one behind the other, without switches.
struct Composition {
    Composition(BandRig& rig, const DistortionStyle& style, std::uint32_t noiseSeed)
        : pre(&rig.environment, &rig.channels[0]->input, 4),
          smudger(&rig.environment),
          crusher(&rig.environment),
          noise(&rig.environment, &rig.capacitorStyle, noiseSeed),
          clipper(&rig.converterStyle) {
        const StyleRecipe& recipe = style.getRecipe();
        for (const FilterRow& row : recipe.setup.pre)
            pre.addFilter(row);
        last = &pre;
        for (wave::FloatParameterBus* drive : {&smudger.drive, &crusher.drive, &clipper.drive})
            drive->setSource(rig.channels[0]->distortion.drive.getSource());
        crusher.bitDepth = 24.0f;
        const bool isAmp = recipe.cabinet != Cabinet::None;
        noise.level.getParameter().setValue(isAmp ? 6.3095735e-7f : 3.1622776e-6f, 0.0f);
        clipper.setStyle(&style.getClipperStyle());
        if (recipe.id == StyleId::Destroy) append(crusher);
        if (recipe.id == StyleId::Smudge) {
            append(smudger);
        } else {
            append(noise);
            append(clipper);
        }
        post = std::make_unique<FilterChain>(&rig.environment, last, 5);
        for (const FilterRow& row : recipe.setup.post)
            post->addFilter(row);
        post->addFilter({120.0f, 6.0f, 0.3f, FilterShape::LowShelf});  // the bass
        cabinet = std::make_unique<CabinetProcessor>(&rig.environment);
        cabinet->setInput(&*post);
        if (const CabinetStyle* box = allStyles().cabinetOf(recipe.id)) box->apply(*cabinet);
    }
    void append(wave::Filter& stage) {
        stage.setInput(last);
        last = &stage;
    }

    wave::Producer* last;
    FilterChain pre;
    Smudger smudger;
    BitCrusher crusher;
    NoiseFilter noise;
    FunctionTableClipper clipper;
    std::unique_ptr<FilterChain> post;
    std::unique_ptr<CabinetProcessor> cabinet;
};

TEST_CASE("Styles: each is the composition of its parts, with a drive in motion") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    std::vector<float> drives;
    for (int i = 0; i < 4096; ++i)
        drives.push_back(static_cast<float>(i % 2048) / 2047.0f);
    for (const StyleRecipe& recipe : styleRecipes)
        for (const int factor : {1, 4}) {
            INFO(std::string(recipe.name) << ", factor " << factor);
            BandRig rig({rng.noise(4096, 0.5f)}, 48000.0f, factor);
            BandRig::Channel& channel = *rig.channels[0];
            SignalSource drive(&rig.environment, drives);
            channel.distortion.drive.setSource(&drive);
            channel.distortion.toneGain(0).getParameter().setValue(6.0f, 0.0f);
            rig.set(recipe.id, 0.0f);
            Composition parts(rig, allStyles().style(recipe.id), 1);

            bool same = true;
            test::RealtimeGuard guard;
            for (int block = 0; block < 100; ++block) {
                const int n = block % 2 == 0 ? 256 : 33;
                rig.environment.beginBlock();
                const float* const out = channel.cabinet.pull(n)->data();
                same = same && std::equal(out, out + n, parts.cabinet->pull(n)->data());
                rig.environment.render(n, 0);
            }
            CHECK(same);
        }
}

TEST_CASE("Styles: the same bits for any cut of the block") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const std::vector<float> signal = rng.noise(6000, 0.5f);
    for (const StyleRecipe& recipe : styleRecipes)
        for (const int factor : {1, 8}) {
            std::vector<float> whole;
            for (const int cut : {256, 61, 4}) {
                INFO(std::string(recipe.name) << ", factor " << factor << ", cut " << cut);
                BandRig rig({signal}, 44100.0f, factor);
                rig.set(recipe.id, 0.7f);
                const auto out = play(rig.environment, rig.channels[0]->cabinet, 6000, cut);
                if (whole.empty()) whole = out;
                CHECK(out == whole);
            }
        }
}

std::vector<float> sine(double hz, double rate, double peak, int numSamples) {
    std::vector<float> samples;
    for (int i = 0; i < numSamples; ++i)
        samples.push_back(
            static_cast<float>(peak * std::sin(2.0 * std::numbers::pi * hz / rate * i)));
    return samples;
}

TEST_CASE("Styles: symmetric ones without filters keep the reference level at every drive") {
    for (const StyleId id :
         {StyleId::CleanTape, StyleId::GentleSaturation, StyleId::HeavySaturation})
        for (float drive = 0.0f; drive <= 1.0f; drive += 0.037f) {
            const ClipperRow& row = clipperRows[static_cast<int>(id)];
            const auto reference = static_cast<double>(row.referenceLevelDb);
            const auto samples = sine(1000.0, 192000.0, std::pow(10.0, reference / 20.0), 19200);
            BandRig rig({samples}, 192000.0f);
            rig.set(id, drive);
            float peak = 0.0f;
            for (const float x : play(rig.environment, rig.channels[0]->cabinet, 9600))
                peak = std::max(peak, std::abs(x));
            INFO(std::string(styleRecipes[static_cast<int>(id)].name) << ", drive " << drive);
            CHECK(std::abs(20.0 * std::log10(static_cast<double>(peak)) - reference -
                           static_cast<double>(row.outputDb)) < 0.1);
        }
}

TEST_CASE("Styles: the clipper of every symmetric one keeps the reference level") {
    for (const ClipperRow& row : clipperRows) {
        if (row.curve == tubeCurve || row.curve == rectifyCurve || row.negativeScale != 1.0f)
            continue;
        const auto reference = static_cast<double>(row.referenceLevelDb);
        double worst = 0.0;
        for (float drive = 0.0f; drive <= 1.0f; drive += 0.037f) {
            wave::Environment environment;
            sr::IIRConverterStyle converterStyle(&environment);
            SignalSource input(&environment, sine(1.0, 32.0, std::pow(10.0, reference / 20.0), 32));
            FunctionTableClipper clipper(&converterStyle);
            clipper.setInput(&input);
            clipper.setStyle(&allStyles().style(row.id).getClipperStyle());
            test::turn(clipper.drive, drive);
            const auto out = play(environment, clipper, 32);
            const auto peak = static_cast<double>(*std::max_element(out.begin(), out.end()));
            worst = std::max(worst, std::abs(20.0 * std::log10(peak) - reference -
                                             static_cast<double>(row.outputDb)));
        }
        INFO(std::string(styleRecipes[static_cast<int>(row.id)].name) << ": " << worst << " dB");
        CHECK(worst < 0.01);
    }
}

TEST_CASE("Styles: a burst at full drive ends in silence, without a trace of its DC") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const platform::FlushDenormalsScope flush;
    constexpr std::pair<float, int> cases[] = {
        {44100.0f, 1}, {44100.0f, 8}, {96000.0f, 4}, {192000.0f, 2}};
    for (const auto& [rate, factor] : cases)
        for (const StyleRecipe& recipe : styleRecipes) {
            const int quarter = static_cast<int>(rate / 4.0f);
            std::vector<float> burst = rng.noise(quarter);
            for (float& x : burst)
                x += 0.25f;
            burst.resize(20u * burst.size());
            BandRig rig({burst}, rate, factor);
            rig.set(recipe.id, 1.0f);
            wave::Producer& band = rig.channels[0]->cabinet;
            const auto highest = [&](int numSamples) {
                float peak = 0.0f;
                for (const float x : play(rig.environment, band, numSamples, 256))
                    peak = std::isfinite(x) ? std::max(peak, std::abs(x)) : x;
                return peak;
            };
            INFO(std::string(recipe.name) << " at " << rate << ", factor " << factor);
            CHECK(highest(4 * quarter) < 1.5f);
            CHECK(highest(8 * quarter) < 1.5f);
            const float tail = highest(3 * quarter);
            // The sharp bell at 24 Hz falls by 17 dB a second, and is 48 dB louder behind it.
            if (recipe.id == StyleId::BrokenTube)
                CHECK(highest(4 * quarter) < 0.3f * tail);
            else
                CHECK(tail < 1e-12f);
        }
}

TEST_CASE("Styles: a linked pair gives the bits of two channels, through changes of style") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const std::vector<std::vector<float>> signals = {rng.noise(7000), rng.noise(7000)};
    for (const int factor : {1, 8}) {
        BandRig plain(signals, 44100.0f, factor), linked(signals, 44100.0f, factor);
        linked.link();
        for (int change = 0; change < 60; ++change) {
            const auto style = StyleId{change < 16 ? change : rng.integer(0, 15)};
            const float drive = static_cast<float>(rng.real(0.0, 1.0));
            INFO("factor " << factor << ", style " << static_cast<int>(style));
            bool same = true;
            for (BandRig* rig : {&plain, &linked}) {
                rig->set(style, drive);
                for (auto& channel : rig->channels)
                    channel->distortion.toneGain(1).getParameter().setValue(9.0f * drive, 0.0f);
            }
            for (const int n : rng.pieces(1500, 256)) {
                test::RealtimeGuard guard;
                plain.environment.beginBlock();
                linked.environment.beginBlock();
                for (std::size_t c = 0; c < 2; ++c) {
                    const float* const a = plain.channels[c]->cabinet.pull(n)->data();
                    const float* const b = linked.channels[c]->cabinet.pull(n)->data();
                    same = same && std::equal(a, a + n, b) && std::isfinite(a[n - 1]);
                }
                plain.environment.render(n, 0);
                linked.environment.render(n, 0);
            }
            CHECK(same);
        }
    }
}

}  // namespace
}  // namespace cinder
