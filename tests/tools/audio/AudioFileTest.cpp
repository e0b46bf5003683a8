#include "cinder/audio/AudioFileReader.h"
#include "cinder/audio/AudioFileWriter.h"

#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>

#include <cmath>
#include <iterator>
#include <string>

namespace cinder::test {

namespace {

Audio noise24(Rng& rng, int numChannels, int numFrames) {
    Audio audio(static_cast<size_t>(numChannels));
    for (auto& channel : audio)
        for (int i = 0; i < numFrames; ++i)
            channel.push_back(static_cast<float>(rng.integer(-8388608, 8388607)) / 8388608.0f);
    return audio;
}

}  // namespace

TEST_CASE("AudioFile: 24-bit audio goes through every exact format to the bit, however cut") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    const std::vector<std::vector<int>> cuts = {{1000000}, {4096}, {4097, 1, 509}, {1, 2, 3, 5000}};
    for (const std::string ending : {"wav", "WAV", "aiff", "aif", "flac"})
        for (const int numChannels : {1, 2})
            for (const int numFrames : {1, 4096, 10007})
                for (const auto& cut : cuts) {
                    INFO(ending << ", channels " << numChannels << ", frames " << numFrames
                                << ", first cut " << cut[0] << ", seed " << rng.seed());
                    const Audio audio = noise24(rng, numChannels, numFrames);
                    writeFile(folder / ("noise." + ending), audio, 44100, cut);
                    AudioFileReader reader(folder / ("noise." + ending));
                    CHECK(reader.sampleRate() == 44100);
                    CHECK(reader.numFrames() == numFrames);
                    CHECK(readAll(reader, cut) == audio);
                }
}

TEST_CASE("AudioFile: Vorbis keeps the length and nearly the sound") {
    const TemporaryFolder folder;
    const Audio audio = {sine(440.0, 48000, 50001), sine(1000.0, 48000, 50001)};
    writeFile(folder / "tone.ogg", audio, 48000, {4096, 100000});
    const Audio back = readFile(folder / "tone.ogg", {777});
    REQUIRE(back.size() == 2);
    for (size_t channel = 0; channel < 2; ++channel) {
        REQUIRE(back[channel].size() == 50001);
        double error = 0.0;
        for (size_t n = 0; n < 50001; ++n)
            error += std::pow(back[channel][n] - audio[channel][n], 2.0);
        CHECK(std::sqrt(error / 50001.0) < 0.01);
    }
}

TEST_CASE("AudioFile: WAV keeps what is above full scale, 24 bits clip and count it") {
    const TemporaryFolder folder;
    const std::vector<float> in = {1.0f, -1.0f, 1.5f, -1e30f, INFINITY, NAN, 0.25f};
    const float loudest = 8388607.0f / 8388608.0f;
    const std::vector<float> kept = {1.0f, -1.0f, 1.5f, -1e30f, 0.0f, 0.0f, 0.25f};
    const std::vector<float> clipped = {loudest, -1.0f, loudest, -1.0f, 0.0f, 0.0f, 0.25f};
    for (const char* name : {"x.wav", "x.aiff", "x.flac"}) {
        INFO(name);
        const bool isFloat = std::string(name) == "x.wav";
        AudioFileWriter writer(folder / name, 1, 48000, 100);
        const float* channel = in.data();
        writer.write({&channel, 1}, static_cast<int>(in.size()));
        writer.commit();
        CHECK(writer.numClipped() == (isFloat ? 0 : 2));
        CHECK(writer.numNonFinite() == 2);
        CHECK(readFile(folder / name)[0] == (isFloat ? kept : clipped));
    }
}

TEST_CASE("AudioFile: a WAV under 4 GiB is plain, and holds no time of day") {
    const TemporaryFolder folder;
    writeFile(folder / "plain.wav", {sine(440.0, 48000, 1000)}, 48000);
    const std::string bytes = bytesOf(folder / "plain.wav");
    CHECK(bytes.substr(0, 4) == "RIFF");
    CHECK(bytes.find("PEAK") == std::string::npos);
}

TEST_CASE("AudioFile: damage is an error, a recording cut off as long as what is left") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    for (const std::string name : {"a.wav", "a.ogg", "a.flac"})
        for (const bool isSpoilt : {false, true}) {
            if (isSpoilt && name == "a.wav") continue;  // other samples, as good as any
            const auto path = folder / name;
            writeFile(path, noise24(rng, 2, 40000), 48000);
            std::string bytes = bytesOf(path);
            const size_t half = bytes.size() / 2;
            isSpoilt ? bytes.replace(half, 100, 100, 'U') : bytes.erase(half);
            putBytes(path, bytes);
            INFO(name << (isSpoilt ? " spoilt" : " cut off") << ", seed " << rng.seed());
            if (isSpoilt || name == "a.flac") {  // which says how long it is
                const std::string error = errorOf([&] { readFile(path); });
                INFO(error);
                CHECK(isOneLine(error));
                CHECK(error.find("is damaged after frame") != std::string::npos);
            } else {
                AudioFileReader reader(path);
                CHECK(reader.numFrames() > 10000);
                CHECK(reader.numFrames() < 30000);
                CHECK(std::ssize(readAll(reader)[0]) == reader.numFrames());
            }
        }
}

TEST_CASE("AudioFile: a stream that doesn't say how long it is is counted first") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const Audio audio = noise24(rng, 2, 30011);
    writeFile(folder / "a.flac", audio, 48000);
    std::string bytes = bytesOf(folder / "a.flac");
    // Bytes 21 to 25: four bits of the sample width, then 36 bits of length; 0 means unknown.
    bytes[21] = static_cast<char>(bytes[21] & 0xf0);
    bytes.replace(22, 4, 4, '\0');
    putBytes(folder / "a.flac", bytes);
    AudioFileReader reader(folder / "a.flac");
    CHECK(reader.numFrames() == 30011);
    CHECK(readAll(reader) == audio);
}

}  // namespace cinder::test
