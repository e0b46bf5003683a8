#include "cinder/audio/AudioFileReader.h"
#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace cinder::test {

namespace {

using Arguments = std::vector<std::string>;

/// A folder, and the command in it.
struct Workshop {
    TemporaryFolder folder;

    std::string path(const std::string& name) const { return (folder / name).string(); }
    Audio put(const std::string& name, Audio audio, int rate = 48000) const {
        writeFile(folder / name, audio, rate);
        return audio;
    }
    /// Renders IN to OUT, and both are names in the folder.
    Program::Outcome render(const std::string& in, const std::string& out,
                            Arguments more = {}) const {
        more.insert(more.begin(), {"render", path(in), path(out)});
        return Program::run(more);
    }
    void renderWell(const std::string& in, const std::string& out, const Arguments& more) const {
        const Program::Outcome outcome = render(in, out, more);
        INFO(outcome.err);
        REQUIRE(outcome.status == 0);
        REQUIRE(outcome.err.empty());
    }
};

/// What comes out of the plug-in at these settings.
Audio rendered(const Workshop& shop, const Arguments& options) {
    shop.renderWell("in.wav", "out.wav", options);
    return readFile(shop.folder / "out.wav");
}

double worstDifference(const Audio& a, const Audio& b) {
    double worst = 0.0;
    for (std::size_t channel = 0; channel < a.size(); ++channel)
        for (std::size_t n = 0; n < a[channel].size(); ++n)
            worst = std::max(worst, std::abs(double{a[channel][n]} - double{b[channel][n]}));
    return worst;
}

/// The first frame at which they differ.
int parting(const Audio& a, const Audio& b) {
    return static_cast<int>(std::ranges::mismatch(a[0], b[0]).in1 - a[0].begin());
}

Audio constant(int numFrames) {
    return {std::vector<float>(static_cast<std::size_t>(numFrames), 0.25f)};
}

/// A source moves the gain of the output.
Arguments gainFrom(const std::string& source) {
    return {"--set", "Slot 1 Source=" + source, "--set", "Slot 1 Target=Output Gain",
            "--set", "Slot 1 Level=60%"};
}

Arguments operator+(Arguments some, const Arguments& more) {
    some.insert(some.end(), more.begin(), more.end());
    return some;
}

Audio noise(int numChannels, int numFrames) {
    Rng rng = Rng::fromEnvironment();
    Audio audio;
    for (int channel = 0; channel < numChannels; ++channel)
        audio.push_back(rng.noise(numFrames, 0.7f));
    return audio;
}

}  // namespace

TEST_CASE("render: every format keeps channels and length, at another rate the time") {
    const Workshop shop;
    const std::pair<std::string, int> outs[] = {
        {"out.wav", 384000}, {"out.aif", 8000}, {"out.flac", 96000}, {"out.oga", 44100}};
    for (const std::string in : {"in.wav", "in.aiff", "in.flac", "in.ogg"})
        for (const int numChannels : {1, 2}) {
            shop.put(in, noise(numChannels, 7001), 44100);
            for (const auto& [out, rate] : outs) {
                INFO(in << " to " << out << ", channels " << numChannels);
                Arguments options;
                if (rate != 44100) options = {"--rate", std::to_string(rate)};
                shop.renderWell(in, out, options);
                AudioFileReader result(shop.folder / out);
                CHECK(result.numChannels() == numChannels);
                CHECK(result.sampleRate() == rate);
                CHECK(std::ssize(readAll(result)[0]) == std::llround(7001.0 * rate / 44100.0));
            }
        }
    CHECK(shop.folder.names().size() == 8);
}

TEST_CASE("render: host blocks of any size give the same file, bit by bit") {
    const Workshop shop;
    shop.put("in.wav", noise(2, 9001));
    putBytes(shop.folder / "three.txt",
             "Num Active Bands=3\nBand 2 Drive=80%\nBand 2 Style=Smooth Amp\n"
             "Band 3 Feedback Amount=60%\n");
    for (const std::string quality : {"Off", "On"}) {
        const Arguments options = {"--params", shop.path("three.txt"), "--set",
                                   "High Quality=" + quality};
        shop.renderWell("in.wav", "first.wav", options);
        for (const std::string block : {"1", "3", "64", "255", "256", "257", "4096", "65536"}) {
            INFO("High Quality " << quality << ", block " << block);
            shop.renderWell("in.wav", "out.wav", options + Arguments{"--block", block});
            REQUIRE((bytesOf(shop.folder / "out.wav") == bytesOf(shop.folder / "first.wav")));
        }
    }
}

TEST_CASE("render: the output stands in step with the input, unless it is left late") {
    const Workshop shop;
    for (const int numFrames : {1, 3, 4, 5000}) {
        const Audio audio = shop.put("in.wav", noise(2, numFrames));
        CHECK(rendered(shop, {"--set", "Mix=0%"}) == audio);
    }
    const Audio audio = shop.put("in.wav", {sine(100.0, 48000, 24000)});
    const Arguments dry = {"--set", "Mix=0%", "--set", "High Quality=On"};
    const Audio inStep = rendered(shop, dry);
    double worst = 0.0;
    for (std::size_t n = 500; n < 24000; ++n)
        worst = std::max(worst, std::abs(double{inStep[0][n]} - double{audio[0][n]}));
    // Half a sample, by which the latency is rounded, is 0.0065 of this sine.
    CHECK(worst < 0.0066);
    const Program::Outcome late =
        shop.render("in.wav", "late.wav", dry + Arguments{"--no-latency-compensation"});
    INFO(late.out);
    CHECK(late.out.find("latency  8 samples (0.167 ms), left in") != std::string::npos);
    Audio expected = inStep;
    expected[0].insert(expected[0].begin(), 8, 0.0f);
    expected[0].resize(24000);
    const Audio result = readFile(shop.folder / "late.wav");
    for (std::size_t n = 8; n < 24000; ++n)
        REQUIRE(result[0][n] == expected[0][n]);
}

TEST_CASE("render: a parameter by name, id and file is the same, the last value counts") {
    const Workshop shop;
    shop.put("in.wav", noise(1, 20000));
    putBytes(shop.folder / "a.txt",
             "\xef\xbb\xbf# A4, but not C#4\r\n\r\n  25 = 70%  \r\n9=warm tape\r\n"
             "Band 1 Feedback Amount=50%\nBand 1 Feedback Frequency = C#4\nNum Active Bands=2");
    shop.renderWell("in.wav", "one.wav", {"--params", shop.path("a.txt")});
    const Program::Outcome outcome = shop.render(
        "in.wav", "two.wav",
        {"--set", "num-active-bands=4", "--set", "NUM ACTIVE BANDS=2", "--set", "band 2 drive=0.7%",
         "--set", "Band 2 Drive=70 %", "--set", "Band 1 Style=WARM TAPE", "--set",
         "Band 1 Feedback Amount=50", "--set", "Band 1 Feedback Frequency=277.1826 Hz"});
    INFO(outcome.err << outcome.out);
    CHECK(worstDifference(readFile(shop.folder / "one.wav"), readFile(shop.folder / "two.wav")) <
          1e-4);
    CHECK(outcome.out.find("Num Active Bands 2, Band 1 Feedback Amount 50.000 %, ") !=
          std::string::npos);
    CHECK(outcome.out.find("Band 2 Drive 70.00%") != std::string::npos);
    shop.renderWell("in.wav", "in.wav",
                    {"--set", "Mix=0%", "--params", shop.path("a.txt"), "--set", "Mix=100%"});
    CHECK(bytesOf(shop.folder / "one.wav") == bytesOf(shop.folder / "in.wav"));
}

TEST_CASE("render: automation moves straight between its points, wherever blocks end") {
    const Workshop shop;
    shop.put("in.wav", constant(96000));
    putBytes(shop.folder / "fall.csv",
             "time,name,to\n1.5,Output Gain,\"-30,0 dB\"\n# the start\n0.5,2,\"0\"\n");
    const Arguments fall = {"--automation", shop.path("fall.csv")};
    const Audio still = rendered(shop, {});
    const Audio whole = rendered(shop, fall);
    // What is set is smoothed by the plug-in: towards each value by a straight ramp of 150 ms in
    // the gain, which the next value 64 samples later finds begun.
    const auto heard = [&](std::size_t n) { return double{whole[0][n]} / double{still[0][n]}; };
    double gain = 1.0;
    for (std::size_t n = 24000; n <= 72000; n += 64) {
        INFO("frame " << n);
        CHECK(heard(n) == doctest::Approx(gain).epsilon(0.005));
        const double target = std::pow(10.0, -1.5 * (static_cast<double>(n) - 24000.0) / 48000.0);
        gain += (target - gain) * 64.0 / 7200.0;
    }
    CHECK(heard(72000 + 7200) == doctest::Approx(std::pow(10.0, -1.5)).epsilon(1e-3));
    for (const std::string block : {"1", "100", "4096"})
        CHECK(worstDifference(rendered(shop, fall + Arguments{"--block", block}), whole) < 2e-6);

    // What has steps waits for its point.
    shop.put("in.wav", noise(1, 9000));
    putBytes(shop.folder / "step.csv", "0,Audition Signal,Output\n0.1,Audition Signal,input\n");
    const int frame =
        parting(rendered(shop, {"--automation", shop.path("step.csv")}), rendered(shop, {}));
    CHECK(frame >= 4800);
    CHECK(frame <= 4802);
}

TEST_CASE("render: a note sounds at its sample, by the tempo map of the file") {
    const Workshop shop;
    shop.put("in.wav", constant(48000));
    // 96 ticks a beat: half a second, then a tempo of 60 and 37 ticks more.
    const std::string track(
        "\x60\xff\x51\3\x0f\x42\x40"
        "\x25\x90\x3c\x64"
        "\0\xff\x2f\0",
        15);
    putBytes(shop.folder / "note.mid",
             std::string("MThd\0\0\0\6\0\1\0\1\0\x60MTrk\0\0\0\x0f", 22) + track);
    const Arguments options =
        gainFrom("EG 1") + Arguments{"--set", "Num Active EGs=1", "--set", "EG 1 Triggering=MIDI"};
    const Audio without = rendered(shop, options);
    for (const std::string block : {"64", "512", "10000"}) {
        const int frame =
            parting(rendered(shop, options + Arguments{"--midi", shop.path("note.mid"), "--tempo",
                                                       "90", "--block", block}),
                    without);
        INFO("block " << block);
        CHECK(frame >= 42500);
        CHECK(frame <= 42502);
    }
}

TEST_CASE("render: the song runs at the tempo") {
    const Workshop shop;
    shop.put("in.wav", constant(96000));
    const Arguments options = gainFrom("XLFO 1") + Arguments{"--set", "Num Active XLFOs=1",
                                                             "--set", "XLFO 1 Sync Mode=1",
                                                             "--set", "XLFO 1 Step 1 Value=-1"};
    for (const auto& [tempo, halfBar] : {std::pair{"120", 48000}, {"200", 28800}}) {
        const Arguments timed = options + Arguments{"--tempo", tempo};
        const int frame =
            parting(rendered(shop, timed + Arguments{"--set", "XLFO 1 Step 2 Value=1"}),
                    rendered(shop, timed + Arguments{"--set", "XLFO 1 Step 2 Value=-1"}));
        INFO("tempo " << std::string(tempo) << ", frame " << frame);
        CHECK(std::abs(frame - halfBar) < 300);
    }
}

TEST_CASE("render: side chain, mono and tail") {
    const Workshop shop;
    const Audio audio = shop.put("in.wav", noise(2, 3000));
    const Audio side = shop.put("side.wav", noise(2, 2000));
    shop.put("slow.wav", {sine(100.0, 24000, 12000)}, 24000);
    const Arguments listen = {"--set", "Audition Signal=Side Chain", "--sidechain"};
    Audio expected = side;
    for (auto& channel : expected)
        channel.resize(3000);
    CHECK(rendered(shop, listen + Arguments{shop.path("side.wav")}) == expected);
    // Resampled, and one channel for both.
    const Audio twice = rendered(shop, listen + Arguments{shop.path("slow.wav")});
    const Audio fine = {sine(100.0, 48000, 3000)};
    CHECK(worstDifference({{twice[1].begin() + 500, twice[1].end()}},
                          {{fine[0].begin() + 500, fine[0].end()}}) < 1e-3);

    const Audio mono = rendered(shop, {"--set", "Mix=0%", "--mono"});
    REQUIRE(mono.size() == 1);
    for (std::size_t n = 0; n < 3000; ++n)
        REQUIRE(mono[0][n] == 0.5f * (audio[0][n] + audio[1][n]));

    const Audio longer = rendered(shop, {"--set", "Mix=0%", "--tail", "0.5"});
    REQUIRE(longer[0].size() == 27000);
    CHECK(std::ranges::equal(std::span(longer[1]).first(3000), audio[1]));
    CHECK(std::ranges::count(std::span(longer[1]).last(24000), 0.0f) == 24000);
}

TEST_CASE("render: a picture of the spectra beside the audio, which stays the same") {
    const Workshop shop;
    shop.put("in.wav", noise(2, 30000));
    const Audio audio = rendered(shop, {});
    for (const auto& [name, begins] : {std::pair{"out.png", "\x89PNG"}, {"out.SVG", "<?xml"}}) {
        // The drawing libraries may have something to say on standard error.
        CHECK(shop.render("in.wav", "out.wav", {"--spectrum", shop.path(name)}).status == 0);
        CHECK(readFile(shop.folder / "out.wav") == audio);
        CHECK(bytesOf(shop.folder / name).starts_with(begins));
    }
    const Program::Outcome wrong =
        shop.render("in.wav", "other.wav", {"--spectrum", shop.path("out.gif")});
    CHECK(wrong.status == 1);
    CHECK(wrong.err.find(".png or .svg") != std::string::npos);
    CHECK(shop.folder.names() ==
          std::vector<std::string>{"in.wav", "out.SVG", "out.png", "out.wav"});
}

TEST_CASE("render: the table tells what was done") {
    const Workshop shop;
    shop.put("in.wav", {sine(1000.0, 48000, 48000)});
    const std::string out = shop.render("in.wav", "out.flac", {"--set", "Mix=0"}).out;
    INFO(out);
    for (const char* text :
         {"in.wav'", "out.flac'", "FLAC", "with   Mix 0.000%", "1.000 s", "48000 Hz",
          "0.00 dBFS  -3.01 dBFS", "0 samples (0.000 ms)", "times real time", "clipped  "})
        CHECK_MESSAGE(out.find(text) != std::string::npos, std::string(text));
}

TEST_CASE("render: presets and states are where a rendering starts, and what it can leave") {
    const Workshop shop;
    shop.put("in.wav", noise(2, 5000));
    const Audio plain = rendered(shop, {});
    const Audio audio = rendered(shop, {"--preset", "Hot Reel", "--set", "Mix=50%", "--save-preset",
                                        shop.path("half.knp"), "--save-state", shop.path("s")});
    CHECK(audio != plain);
    CHECK(rendered(shop, {"--preset", shop.path("half.knp")}) == audio);
    CHECK(rendered(shop, {"--state", shop.path("s")}) == audio);
    CHECK(rendered(shop, {"--preset", shop.path("half.knp"), "--save-preset",
                          shop.path("half.txt")}) == audio);
    CHECK(rendered(shop, {"--preset", shop.path("half.txt")}) == audio);
    CHECK(rendered(shop, {"--params", shop.path("half.txt")}) == audio);
    CHECK(rendered(shop, {}) == plain);

    putBytes(shop.folder / "cut.knp", bytesOf(shop.folder / "half.knp").substr(0, 100));
    putBytes(shop.folder / "cut", bytesOf(shop.folder / "s").substr(0, 3620));
    const Arguments wrong[] = {{"--preset", "No Such"},
                               {"--preset", shop.path("cut.knp")},
                               {"--preset", shop.path("s")},
                               {"--state", shop.path("half.knp")},
                               {"--state", shop.path("cut")}};
    CHECK(shop.render("in.wav", "other.wav", {"--save-preset", shop.path("x.band")}).status == 2);
    for (const Arguments& options : wrong) {
        const Program::Outcome outcome = shop.render("in.wav", "other.wav", options);
        CHECK_MESSAGE(outcome.status == 1, options.back());
        CHECK_FALSE(outcome.err.empty());
        CHECK_FALSE(std::filesystem::exists(shop.folder / "other.wav"));
    }
}

}  // namespace cinder::test
