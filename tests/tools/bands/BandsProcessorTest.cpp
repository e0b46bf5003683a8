#include "cinder/bands/BandsProcessor.h"

#include "cinder/measure/StyleProbe.h"
#include "support/Rng.h"
#include "support/Spectrum.h"
#include "support/StageRig.h"
#include "tools/HostBlocks.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>

namespace cinder::test {

namespace {

struct Setting {
    int id;
    float value;
};
using Settings = std::vector<Setting>;

struct BandsFixture {
    explicit BandsFixture(int numChannels, const Settings& settings = {},
                          float sampleRate = 48000.0f)
        : processor(numChannels == 1 ? monoLayout : stereoLayout) {
        processor.getEnvironment()->setSampleRate(sampleRate);
        set(settings);
    }
    /// Before the first block it doesn't ramp.
    void set(const Settings& settings) {
        for (const auto& [id, value] : settings)
            processor.getParameter(id)->setValue(value, AbstractPluginParameter::hostKnows);
    }
    Channels play(const Channels& input, const std::vector<int>& blocks = {512}) {
        return playThrough(processor, input, blocks);
    }

    BandsProcessor processor;
};

const StyleSet& allStyles() {
    static const StyleSet set;
    return set;
}

float styleOf(StyleId id) {
    return static_cast<float>(id);
}

/// A loud beginning, then digital silence.
Channels burst(Rng& rng, int numLoud, int numSilent) {
    Channels audio = {rng.noise(numLoud, 0.8f)};
    audio[0].resize(static_cast<std::size_t>(numLoud + numSilent));
    return audio;
}

/// From sample `start` on.
float peakOf(const std::vector<float>& audio, std::size_t start = 0) {
    float peak = 0.0f;
    for (std::size_t n = start; n < audio.size(); ++n)
        peak = std::max(peak, std::abs(audio[n]));
    return peak;
}

}  // namespace

TEST_CASE("BandsProcessor: one band is the style's stages and nothing else, for every style") {
    Rng rng = Rng::fromEnvironment();
    for (int style = 0; style < numStyles; ++style) {
        const int log2Factor = style % 4;
        const auto percent = static_cast<float>(rng.integer(0, 100));
        const std::vector<float> input = rng.noise(6000, 0.5f);
        BandsFixture bands(1, {{bandStyleId, static_cast<float>(style)},
                               {bandDriveId, percent},
                               {bandsOversamplingId, static_cast<float>(log2Factor)}});
        StyleProbe probe(
            allStyles(),
            {.style = StyleId{style}, .factor = 1 << log2Factor, .drive = percent * 0.01f});
        INFO(styleNames[static_cast<std::size_t>(style)] << ", seed " << rng.seed());
        CHECK(bands.play({input})[0] == probe.play(input));
    }
}

TEST_CASE("BandsProcessor: three bands in stereo are the sum of their parts") {
    constexpr StyleId styles[] = {StyleId::OldTape, StyleId::CrunchyAmp, StyleId::Destroy};
    constexpr float hz[] = {250.0f, 3100.0f};
    Rng rng = Rng::fromEnvironment();
    const Channels input = {rng.noise(6000, 0.5f), rng.noise(6000, 0.5f)};
    BandsFixture bands(2, {{bandsId, 3.0f}, {crossoverId, hz[0]}, {crossoverId + 1, hz[1]}}, 44100);
    for (int band = 0; band < 3; ++band)
        bands.set({{bandStyleId + band, styleOf(styles[band])},
                   {bandDriveId + band, 30.0f + 20.0f * static_cast<float>(band)}});
    const Channels output = bands.play(input);

    for (std::size_t channel = 0; channel < 2; ++channel) {
        std::vector<float> expected(6000, 0.0f);
        for (int band = 0; band < 3; ++band) {
            wave::Environment environment;
            CrossoverMultiBandModel model;
            SignalSource source(&environment, input[channel]);
            MultiBand split(&environment, &model);
            split.setInput(&source);
            model.bandCount.assign(3);
            for (int i = 0; i < 2; ++i)
                turn(split.getCrossover(i).frequency, std::log2(hz[i]));
            StyleProbe probe(
                allStyles(),
                {.style = styles[band],
                 .sampleRate = 44100.0,
                 .drive = bands.processor.getParameter(bandDriveId + band)->value() * 0.01f,
                 .noiseSeed = static_cast<std::uint32_t>(channel * maxBands) + 1u +
                              static_cast<std::uint32_t>(band)});
            const std::vector<float> part =
                probe.play(play(environment, *split.getOutput(band), 6000));
            for (std::size_t n = 0; n < 6000; ++n)
                expected[n] += part[n];
        }
        INFO("channel " << channel << ", seed " << rng.seed());
        CHECK(output[channel] == expected);
    }
}

TEST_CASE("BandsProcessor: the sum is flat when nothing drives") {
    // Too soft for the curve to bend it. The curve is odd, so half the difference of an impulse and
    // its negative is free of noise. What the converters do they do to one band as well.
    constexpr std::size_t length = 1 << 15;
    const auto spectrumOf = [&](int numBands) {
        std::vector<float> response(length);
        for (const float sign : {0.5f, -0.5f}) {
            BandsFixture bands(1, {{bandsId, static_cast<float>(numBands)}});
            for (int band = 0; band < maxBands; ++band)
                bands.set(
                    {{bandStyleId + band, styleOf(StyleId::CleanTape)}, {bandDriveId + band, 0}});
            Channels impulse = {std::vector<float>(length)};
            impulse[0][0] = 2e-3f * sign;
            const Channels output = bands.play(impulse);
            for (std::size_t n = 0; n < length; ++n)
                response[n] += output[0][n] * sign;
        }
        return powerSpectrum(response);
    };
    const std::vector<double> whole = spectrumOf(1);
    for (int numBands = 2; numBands <= maxBands; ++numBands) {
        const std::vector<double> sum = spectrumOf(numBands);
        double worst = 0.0;
        for (std::size_t k = 20 * length / 48000; k <= 20000 * length / 48000; ++k)
            worst = std::max(worst, std::abs(decibelsOfPower(sum[k] / whole[k])));
        INFO("bands " << numBands << ", worst " << worst << " dB");
        CHECK(worst < 0.01);
    }
}

TEST_CASE("BandsProcessor: any cut gives the same bits, and bypass is as late as is reported") {
    Rng rng = Rng::fromEnvironment();
    const Channels input = {rng.noise(5000, 0.6f), rng.noise(5000, 0.6f)};
    for (const float rate : {44100.0f, 96000.0f})
        for (int log2Factor = 0; log2Factor < 4; ++log2Factor) {
            const int numBands = 3 + log2Factor;
            Settings settings = {{bandsOversamplingId, static_cast<float>(log2Factor)},
                                 {bandsId, static_cast<float>(numBands)}};
            for (int band = 0; band < numBands; ++band)
                settings.push_back(
                    {bandStyleId + band, static_cast<float>(rng.integer(0, numStyles - 1))});
            const Channels whole = BandsFixture(2, settings, rate).play(input, {5000});
            for (const auto& blocks : std::vector<std::vector<int>>{
                     {1}, {64}, {255}, {257}, {4096}, rng.pieces(5000, 600)}) {
                INFO("rate " << rate << ", factor " << (1 << log2Factor) << ", blocks of "
                             << blocks[0] << ", seed " << rng.seed());
                REQUIRE(BandsFixture(2, settings, rate).play(input, blocks) == whole);
            }

            settings.push_back({bandsBypassId, 1.0f});
            BandsFixture bypassed(2, settings, rate);
            bypassed.processor.reset();
            const auto latency = static_cast<std::size_t>(bypassed.processor.getLatency());
            sr::IIRConverterStyle style(bypassed.processor.getEnvironment());
            style.setFactor(1 << log2Factor);
            CHECK(latency == static_cast<std::size_t>(style.getLatency(style.getFactor())));
            Channels delayed = input;
            for (auto& channel : delayed) {
                channel.insert(channel.begin(), latency, 0.0f);
                channel.resize(5000);
            }
            CHECK(bypassed.play(input) == delayed);
        }
}

TEST_CASE("BandsProcessor: bands come and go without a step, and come back empty") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    BandsFixture moving(1, {{bandDriveId, 0.0f}});
    std::vector<float> heard;
    for (const int numBands : {1, 3, 2, 6, 4, 1}) {
        Channels tone(1);
        for (std::size_t n = heard.size(); n < heard.size() + 6000; ++n)
            tone[0].push_back(0.1f * std::sin(0.02f * static_cast<float>(n)));
        moving.set({{bandsId, static_cast<float>(numBands)}});
        const Channels output = moving.play(tone);
        heard.insert(heard.end(), output[0].begin(), output[0].end());
    }
    float largest = 0.0f;
    for (std::size_t n = 1; n < heard.size(); ++n)
        largest = std::max(largest, std::abs(heard[n] - heard[n - 1]));
    CHECK(largest < 0.003f);  // the tone's own is 0.002

    BandsFixture returning(1, {{bandsId, 2.0f}, {bandStyleId + 1, styleOf(StyleId::Smudge)}});
    returning.play(burst(rng, 24000, 0));
    returning.set({{bandsId, 1.0f}});
    returning.play({std::vector<float>(48000)});
    returning.set({{bandsId, 2.0f}});
    CHECK(peakOf(returning.play({std::vector<float>(24000)})[0]) < 1e-6f);
}

TEST_CASE("BandsProcessor: a factor that comes back brings no old sound with it") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    BandsFixture bands(1, {{bandDriveId, 0.0f}});
    bands.play(burst(rng, 4800, 0));
    bands.set({{bandsOversamplingId, 0.0f}});
    bands.play({std::vector<float>(48000)});
    bands.set({{bandsOversamplingId, 3.0f}});
    CHECK(peakOf(bands.play({std::vector<float>(4800)})[0]) < 1e-6f);
}

TEST_CASE("ChannelGraph: bands beyond the count do not run") {
    wave::Environment environment;
    BandsShared shared(&environment);
    SignalSource source(&environment, std::vector<float>(64, 0.5f));
    ChannelGraph graph(shared, &source, 1);
    shared.model.bandCount.assign(2);
    for (int band = 2; band < maxBands; ++band)
        turn(graph.sum.input(band).gain, 0.0f);
    play(environment, graph.sum, 512);
    for (int band = 0; band < maxBands; ++band) {
        const ChannelGraph::Band& strip = *graph.bands[static_cast<std::size_t>(band)];
        CHECK((strip.distortion.getLastBlockId() > 0) == (band < 2));
        CHECK((strip.cabinet.getLastBlockId() > 0) == (band < 2));
    }
}

}  // namespace cinder::test
