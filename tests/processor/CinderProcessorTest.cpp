#include "processor/ProcessorRig.h"

#include <doctest/doctest.h>

#include "core/NotifyEvent.h"
#include "dsp/sr/IIRPhaseCompensator.h"
#include "support/Rng.h"
#include "wave/Input.h"

namespace cinder {
namespace {

using namespace test;

constexpr std::size_t settled = 4800;  // all fades and ramps are over

Channels noise(int numSamples, float peak = 0.25f, int numChannels = 2) {
    Rng rng = Rng::fromEnvironment();
    Channels channels;
    for (int c = 0; c < numChannels; ++c)
        channels.push_back(rng.noise(numSamples, peak));
    return channels;
}

}  // namespace

TEST_CASE("CinderProcessor: the latency that the host is told is that of the sound") {
    struct Case {
        float rate;
        const char* quality;
        int latency;
    };
    const Case cases[] = {{44100.0f, "Off", 0}, {44100.0f, "On", 8},  {48000.0f, "On", 8},
                          {96000.0f, "On", 6},  {192000.0f, "On", 4}, {192000.0f, "Off", 0}};
    for (const Case& row : cases) {
        INFO("rate " << row.rate << ", latency " << row.latency);
        const ProcessorRig rig(row.rate);
        rig.set("High Quality", row.quality);
        CHECK(rig.processor->getLatency() == row.latency);
        rig.set("Mix", "0");
        rig.jump();
        // Phase compensation is all-pass: a low tone is delayed as a whole.
        const Channels in = sines(12000, 0.5f, 200.0 / static_cast<double>(row.rate));
        const Channels out = rig.play(in);
        for (std::size_t c = 0; c < 2; ++c)
            CHECK(differenceAt(row.latency, in[c], out[c], settled) < 0.005f);
    }
}

TEST_CASE("CinderProcessor: at Mix 0 and without High Quality the input itself comes out") {
    for (const int bands : {1, 2, 6}) {
        INFO("bands " << bands);
        const ProcessorRig rig;
        rig.set("Mix", "0");
        rig.set("Num Active Bands", std::to_string(bands));
        for (int band = 1; band < bands; ++band)
            rig.set("Band " + std::to_string(band) + " Crossover Frequency",
                    std::to_string(100 * band * band));
        rig.jump();
        const Channels in = noise(20000);
        const Channels out = rig.play(in);
        // More bands sum to an all-pass, which keeps the power.
        double inPower = 0.0, outPower = 0.0;
        for (std::size_t i = settled; i < in[0].size(); ++i) {
            inPower += static_cast<double>(in[0][i]) * static_cast<double>(in[0][i]);
            outPower += static_cast<double>(out[0][i]) * static_cast<double>(out[0][i]);
        }
        CHECK(outPower == doctest::Approx(inPower).epsilon(0.02));
        if (bands == 1) CHECK(differenceAt(0, in[0], out[0], settled) == 0.0f);
    }
}

TEST_CASE("CinderProcessor: at Mix 0 with High Quality the input comes in the wet path's time") {
    // Bit by bit what the converters of the band and of the clipper do to it, whatever the gains.
    constexpr int numSamples = 12000, blockSize = 240;
    const Channels in = noise(numSamples, 0.5f);
    for (const float rate : {44100.0f, 96000.0f, 192000.0f}) {
        INFO("rate " << rate);
        const ProcessorRig rig(rate);
        for (const auto& [name, text] : {std::pair{"High Quality", "On"},
                                         {"Mix", "0"},
                                         {"Input Gain", "12"},
                                         {"Band 1 Level", "6"}})
            rig.set(name, text);
        const Channels out = rig.play(in);

        wave::Environment clock;
        clock.setSampleRate(rate);
        sr::IIRConverterStyle distortion(&clock), clipper(&clock);
        distortion.setFactor(8);
        clipper.setFactor(4);
        wave::Input input(&clock);
        input.setBuffer(in[0].data(), numSamples);
        sr::IIRPhaseCompensator first(&distortion), second(&clipper);
        first.setInput(&input);
        second.setInput(&first);
        std::vector<float> expected;
        for (int i = 0; i < numSamples; i += blockSize) {
            clock.beginBlock();
            const float* const block = second.pull(blockSize)->data();
            expected.insert(expected.end(), block, block + blockSize);
            clock.render(blockSize, 0);
        }
        CHECK(out[0] == expected);
    }
}

TEST_CASE("CinderProcessor: a band that is off, solo and mute do what they say") {
    const Channels in = noise(20000, 0.05f);
    const auto play = [&](std::vector<std::pair<std::string, std::string>> settings) {
        const ProcessorRig rig;
        rig.set("Num Active Bands", "3");
        rig.set("Band 1 Crossover Frequency", "300");
        rig.set("Band 2 Crossover Frequency", "3000");
        for (const auto& [name, text] : settings)
            rig.set(name, text);
        rig.jump();
        return rig.play(in)[0];
    };
    const auto powerOf = [](const std::vector<float>& samples) {
        double power = 0.0;
        for (std::size_t i = settled; i < samples.size(); ++i)
            power += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
        return power;
    };
    const double all = powerOf(play({}));
    const double solo = powerOf(play({{"Band 2 State", "Solo"}}));
    const double mutes = powerOf(play({{"Band 1 State", "Mute"}, {"Band 3 State", "Mute"}}));
    const double rest = powerOf(play({{"Band 2 State", "Mute"}}));
    CHECK(solo == doctest::Approx(mutes));
    CHECK(solo + rest == doctest::Approx(all).epsilon(0.1));  // but for where they overlap
    CHECK(powerOf(play({{"Band 2 State", "Solo (Mute)"}})) == doctest::Approx(solo));
    CHECK(powerOf(play(
              {{"Band 1 State", "Mute"}, {"Band 2 State", "Mute"}, {"Band 3 State", "Mute"}})) ==
          0.0);
    // A solo in a band that isn't active counts for nothing.
    CHECK(powerOf(play({{"Band 4 State", "Solo"}})) == doctest::Approx(all));
    // Off: the band's input goes on unaltered, whatever it is set to. The others' noise is random.
    const std::vector<float> off = play({{"Band 2 Enabled", "Disabled"}});
    const std::vector<float> driven = play({{"Band 2 Enabled", "Disabled"},
                                            {"Band 2 Drive", "100"},
                                            {"Band 2 Level", "-30"},
                                            {"Band 2 Bass", "20"}});
    CHECK(differenceAt(0, off, driven, 0) < 2e-5f);
}

TEST_CASE("CinderProcessor: audition takes the input or the side chain as it is") {
    const Channels in = noise(20000, 0.3f, 4);
    for (const auto& [text, channel] : {std::pair{"Input", 0}, std::pair{"Side Chain", 2}}) {
        const ProcessorRig rig;
        rig.set("Audition Signal", text);
        rig.set("High Quality", "On");
        const Channels out = rig.play(in);
        for (std::size_t c = 0; c < 2; ++c)
            CHECK(differenceAt(0, in[static_cast<std::size_t>(channel) + c], out[c], settled) ==
                  0.0f);
    }
    // Without a side chain the main input stands in for it.
    const ProcessorRig rig;
    rig.set("Audition Signal", "Side Chain");
    const Channels main = {in[0], in[1]};
    CHECK(differenceAt(0, in[1], rig.play(main)[1], settled) == 0.0f);
}

TEST_CASE("CinderProcessor: mid/side works on the sum and the difference") {
    // Band pan to the right silences the mid, so that a mono signal is gone.
    Channels mono = noise(20000, 0.05f, 1);
    mono.push_back(mono.front());
    const ProcessorRig rig;
    rig.set("Channel Mode", "Mid/Side");
    rig.set("Band 1 Pan", "1");
    rig.jump();
    CHECK(peakOf(rig.play(mono)[0], settled) < 1e-4f);
    const ProcessorRig leftRight;
    leftRight.set("Band 1 Pan", "1");
    leftRight.jump();
    const Channels out = leftRight.play(mono);
    CHECK(peakOf(out[0], settled) == 0.0f);
    CHECK(peakOf(out[1], settled) > 0.01f);
}

TEST_CASE("CinderProcessor: linked stereo is two monos, and a wide layout is many") {
    constexpr std::int32_t surround = 6;  // six channels, the first two of them linked
    const Channels in = noise(20000, 0.2f, 6);
    for (const char* style : {"Warm Tube", "Lead Amp", "Old Tape"}) {
        const auto play = [&](std::int32_t layout, const Channels& signal) {
            const ProcessorRig rig(48000.0f, layout);
            rig.set("Num Active Bands", "3");
            rig.set("Band 1 Crossover Frequency", "300");
            rig.set("Band 2 Crossover Frequency", "3000");
            for (const char* band : {"Band 1", "Band 2", "Band 3"}) {
                rig.set(std::string(band) + " Style", style);
                rig.set(std::string(band) + " Drive", "60%");
            }
            rig.set("High Quality", "On");
            rig.jump();
            return rig.play(signal);
        };
        const Channels stereo = play(stereoLayout, {in[0], in[1]});
        const Channels wide = play(surround, in);
        REQUIRE(wide.size() == 6);
        for (std::size_t c = 0; c < 6; ++c) {
            const std::vector<float> mono = play(monoLayout, {in[c]})[0];
            CHECK(differenceAt(0, mono, wide[c], 0) < 1e-4f);
            if (c < 2) CHECK(differenceAt(0, mono, stereo[c], 0) < 1e-4f);
        }
    }
}

TEST_CASE("CinderProcessor: what is switched while music plays makes no step") {
    struct Case {
        std::vector<std::pair<std::string, std::string>> before;
        std::string name, text;
        float bound;  // the largest step of the tone itself is 0.0118
    };
    const Case cases[] = {
        {{}, "Num Active Bands", "6", 0.02f},
        {{{"Num Active Bands", "6"}}, "Num Active Bands", "2", 0.02f},
        {{{"Num Active Bands", "3"}}, "Band 2 State", "Solo", 0.02f},
        {{}, "Band 1 State", "Mute", 0.02f},
        {{}, "Band 1 Enabled", "Disabled", 0.02f},
        {{}, "Channel Mode", "Mid/Side", 0.02f},
        {{}, "Audition Signal", "Input", 0.02f},
        {{}, "Input Gain", "-12", 0.02f},
        {{}, "Output Pan", "1", 0.02f},
        {{}, "Mix", "0", 0.02f},
        {{}, "Band 1 Drive", "20", 0.02f},
        {{}, "High Quality", "On", 0.02f},
        {{{"High Quality", "On"}}, "High Quality", "Off", 0.02f},
        // A loop is heard until its band has faded out.
        {{{"Num Active Bands", "3"},
          {"Band 3 Style", "Clean Tape"},
          {"Band 3 Feedback Amount", "100"},
          {"Band 3 Feedback Frequency", "1000"}},
         "Num Active Bands",
         "2",
         0.03f},
    };
    for (const Case& row : cases) {
        INFO(row.name << " to " << row.text);
        const ProcessorRig rig;
        rig.set("Band 1 Style", "Clean Tape");
        for (int band = 1; band < 6; ++band)
            rig.set("Band " + std::to_string(band) + " Crossover Frequency",
                    std::to_string(100 * band * band));
        for (const auto& [name, text] : row.before)
            rig.set(name, text);
        rig.jump();
        const Channels in = sines(48000, 0.3f, 300.0 / 48000.0);
        Channels half = {{in[0].begin(), in[0].begin() + 24000},
                         {in[1].begin(), in[1].begin() + 24000}};
        rig.play(half);
        half = {{in[0].begin() + 24000, in[0].end()}, {in[1].begin() + 24000, in[1].end()}};
        rig.set(row.name, row.text);
        const Channels out = rig.play(half);
        for (const auto& channel : out)
            CHECK(largestStep(channel) < row.bound);
    }
}

TEST_CASE("CinderProcessor: a loop at 100 % stays bounded, and falls silent with the input") {
    for (int style = 0; style < 16; ++style) {
        const ProcessorRig rig;
        rig.parameter("Band 1 Style").setValue(static_cast<float>(style), 0);
        INFO(rig.parameter("Band 1 Style").text(static_cast<float>(style)));
        rig.set("Band 1 Feedback Amount", "100");
        rig.set("Band 1 Feedback Frequency", "400");
        rig.set("Band 1 Drive", "50%");
        rig.jump();
        const float loud = peakOf(rig.play(noise(24000))[0]);
        CHECK(loud > 0.01f);
        CHECK(loud < 1.2f);
        rig.play(silence(96000));
        CHECK(peakOf(rig.play(silence(4800))[0]) < 1e-3f);
    }
}

TEST_CASE("CinderProcessor: silence ends at exactly 0, and what comes next knows nothing of it") {
    const char* const styles[] = {"Warm Tube", "Old Tape", "Lead Amp",
                                  "Power Amp", "Rectify",  "Destroy"};
    for (const char* quality : {"Off", "On"}) {
        INFO("High Quality " << quality);
        const Channels sound = noise(9600, 0.3f);
        const auto play = [&](int blockSize) {
            const ProcessorRig rig;
            rig.set("High Quality", quality);
            rig.set("Num Active Bands", "6");
            for (int band = 1; band <= 6; ++band) {
                const std::string name = "Band " + std::to_string(band);
                rig.set(name + " Style", styles[band - 1]);
                rig.set(name + " Drive", "60%");
                rig.set(name + " Bass", "6");
                if (band < 6) rig.set(name + " Crossover Frequency", std::to_string(60 << band));
            }
            rig.jump();
            rig.play(sound, blockSize);
            rig.play(silence(6 * 48000), blockSize);
            CHECK(peakOf(rig.play(silence(960), blockSize)[0]) == 0.0f);
            return rig.play(sound, blockSize);
        };
        const Channels whole = play(512), cut = play(100);
        for (std::size_t c = 0; c < whole.size(); ++c) {
            CHECK(peakOf(whole[c]) > 0.01f);
            CHECK(differenceAt(0, whole[c], cut[c], 0) < 1e-5f);
        }
    }
}

TEST_CASE("CinderProcessor: the sub-block is shorter than the shortest loop") {
    // At 1 kHz and 48 kHz a loop has 48 samples. A longer block would read what isn't written yet,
    // so any cut of the host's blocks gives the same echoes.
    const Channels in = noise(12000, 0.1f);
    const auto play = [&](int blockSize) {
        const ProcessorRig rig;
        rig.set("Band 1 Style", "Smudge");  // no noise of its own
        rig.set("Band 1 Feedback Amount", "80");
        rig.set("Band 1 Feedback Frequency", "1000");
        rig.jump();
        return rig.play(in, blockSize)[0];
    };
    const std::vector<float> whole = play(4096);
    CHECK(play(48) == whole);
    CHECK(differenceAt(0, play(37), whole, 0) < 1e-6f);
}

}  // namespace cinder
