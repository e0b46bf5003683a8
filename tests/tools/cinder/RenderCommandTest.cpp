#include "cinder/audio/AudioFileReader.h"
#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>

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
    for (const std::string factor : {"1", "2", "4", "8"}) {
        shop.renderWell("in.wav", "first.wav", {"--set", "Oversampling=" + factor});
        for (const std::string block : {"1", "3", "64", "255", "256", "257", "4096", "65536"}) {
            INFO("Oversampling " << factor << ", block " << block);
            shop.renderWell("in.wav", "out.wav",
                            {"--block", block, "--set", "Oversampling=" + factor});
            REQUIRE((bytesOf(shop.folder / "out.wav") == bytesOf(shop.folder / "first.wav")));
        }
    }
}

TEST_CASE("render: the output stands in step with the input, bypassed it is the input") {
    const Workshop shop;
    for (const std::string factor : {"1", "2", "4", "8"}) {
        INFO("Oversampling " << factor);
        const std::string oversampling = "Oversampling=" + factor;
        for (const int numFrames : {1, 3, 4, 5000}) {
            const Audio audio = shop.put("in.wav", noise(2, numFrames));
            shop.renderWell("in.wav", "out.wav", {"--set", "Bypass=1", "--set", oversampling});
            CHECK(readFile(shop.folder / "out.wav") == audio);
        }
        const Audio audio = shop.put("in.wav", {sine(100.0, 48000, 24000)});
        shop.renderWell(
            "in.wav", "out.wav",
            {"--set", "Curve=none", "--set", "Drive=0", "--set", "Level=0", "--set", oversampling});
        const Audio result = readFile(shop.folder / "out.wav");
        double worst = 0.0;
        for (std::size_t n = 500; n < 24000; ++n)
            worst = std::max(worst, std::abs(double{result[0][n]} - double{audio[0][n]}));
        // Half a sample, by which the latency is rounded, is 0.0065 of this sine.
        CHECK(worst < (factor == "1" ? 1e-30 : 0.0066));
    }
}

TEST_CASE("render: parameters in any case, the last value counts, and a file over itself") {
    const Workshop shop;
    shop.put("in.wav", noise(1, 20000));
    shop.renderWell("in.wav", "one.wav", {"--set", "Drive=24", "--set", "Curve=soft fold"});
    shop.renderWell("in.wav", "three.wav", {"--set", "Drive=23.9", "--set", "Curve=soft fold"});
    shop.renderWell("in.wav", "in.wav",
                    {"--set", "drive=3", "--set", "CURVE=Soft Fold", "--set", "dRiVe=24"});
    CHECK(bytesOf(shop.folder / "one.wav") == bytesOf(shop.folder / "in.wav"));
    CHECK(bytesOf(shop.folder / "one.wav") != bytesOf(shop.folder / "three.wav"));
}

TEST_CASE("render: bands by lists, names, numbers and parameters are the same bands") {
    const Workshop shop;
    shop.put("in.wav", noise(2, 9000));
    const std::vector<std::vector<Arguments>> spellings = {
        {{"--style", "warm-tube", "--drive", "70%"},
         {"--style", "1", "--drive", "70 %", "--bands", "1"},
         {"--bands", "1", "--set", "style 1=WARM TUBE", "--set", "Drive 1=70"}},
        {{"--bands", "3", "--style", "old-tape", "--drive", "10,50,90"},
         {"--style", "5", "--drive", "10,50,90", "--crossover", "310,2300"},
         {"--bands", "2", "--set", "Bands=3", "--style", "Old Tape,old tape,OLD-TAPE", "--set",
          "Drive 1=10", "--set", "Drive 3=90"}},
    };
    for (const auto& alike : spellings) {
        shop.renderWell("in.wav", "first.wav", alike[0]);
        for (const Arguments& options : alike) {
            INFO(options[0] << ' ' << options[1]);
            shop.renderWell("in.wav", "out.wav", options);
            CHECK((bytesOf(shop.folder / "out.wav") == bytesOf(shop.folder / "first.wav")));
        }
    }
    const std::string told = shop.render("in.wav", "out.wav", spellings[1][0]).out;
    INFO(told);
    CHECK(told.find("3 bands: Old Tape 10 % | 310 Hz | Old Tape 50 % | 2300 Hz | Old Tape 90 %, "
                    "Oversampling 8, Bypass 0") != std::string::npos);
}

TEST_CASE("render: the table tells what was done") {
    const Workshop shop;
    shop.put("in.wav", {sine(1000.0, 48000, 48000)});
    const std::string out = shop.render("in.wav", "out.wav", {"--set", "Bypass=1"}).out;
    INFO(out);
    for (const char* text :
         {"in.wav'", "out.wav'", "WAV, 32-bit float", "Bypass 1", "1.000 s", "48000 Hz",
          "0.00 dBFS  -3.01 dBFS", "4 samples (0.083 ms)", "times real time"})
        CHECK_MESSAGE(out.find(text) != std::string::npos, std::string(text));
}

}  // namespace cinder::test
