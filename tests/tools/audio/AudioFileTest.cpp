#include "cinder/audio/AudioFileReader.h"
#include "cinder/audio/AudioFileWriter.h"

#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>
#include <sys/stat.h>

#include <cmath>
#include <limits>

namespace cinder::test {

namespace {

Audio noise24(Rng& rng, int numChannels, int numFrames) {
    Audio audio(static_cast<size_t>(numChannels));
    for (auto& channel : audio)
        for (int i = 0; i < numFrames; ++i)
            channel.push_back(static_cast<float>(rng.integer(-8388608, 8388607)) / 8388608.0f);
    return audio;
}

/// A file with any number of channels and frames of silence, as other programs make them.
void makeSilence(const std::filesystem::path& path, int numChannels, int numFrames) {
    SF_INFO info{};
    info.channels = numChannels;
    info.samplerate = 48000;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    const SoundFile file(sf_open(path.c_str(), SFM_WRITE, &info));
    REQUIRE(file);
    const std::vector<short> samples(static_cast<size_t>(numChannels * numFrames));
    REQUIRE(sf_writef_short(file.get(), samples.data(), numFrames) == numFrames);
}

}  // namespace

TEST_CASE("AudioFile: 24-bit audio goes through every exact format to the bit, however cut") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    const std::vector<std::vector<int>> cuts = {{1000000}, {4096}, {4097, 1, 509}, {1, 2, 3, 5000}};
    for (const char* ending : {"wav", "WAV", "aiff", "aif", "flac"})
        for (const int numChannels : {1, 2})
            for (const int numFrames : {1, 4096, 10007})
                for (const auto& cut : cuts) {
                    INFO(ending << ", channels " << numChannels << ", frames " << numFrames
                                << ", first cut " << cut[0] << ", seed " << rng.seed());
                    const auto path = folder / (std::string("noise.") + ending);
                    const Audio audio = noise24(rng, numChannels, numFrames);
                    writeFile(path, audio, 44100, cut);
                    AudioFileReader reader(path);
                    CHECK(reader.numChannels() == numChannels);
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
        REQUIRE(back[channel].size() == audio[channel].size());
        double error = 0.0;
        for (size_t n = 0; n < back[channel].size(); ++n)
            error += std::pow(back[channel][n] - audio[channel][n], 2.0);
        CHECK(std::sqrt(error / 50001.0) < 0.01);
    }
}

TEST_CASE("AudioFile: WAV keeps what is above full scale, 24 bits clip and count it") {
    const TemporaryFolder folder;
    constexpr float infinite = std::numeric_limits<float>::infinity();
    constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
    const std::vector<float> in = {1.0f, -1.0f, 1.5f, -1e30f, infinite, noNumber, 0.25f};
    const float loudest = 8388607.0f / 8388608.0f;
    struct Case {
        const char* name;
        std::vector<float> out;
        int clipped;
    };
    const Case cases[] = {
        {"x.wav", {1.0f, -1.0f, 1.5f, -1e30f, 0.0f, 0.0f, 0.25f}, 0},
        {"x.aiff", {loudest, -1.0f, loudest, -1.0f, 0.0f, 0.0f, 0.25f}, 2},
        {"x.flac", {loudest, -1.0f, loudest, -1.0f, 0.0f, 0.0f, 0.25f}, 2},
    };
    for (const Case& c : cases) {
        INFO(c.name);
        AudioFileWriter writer(folder / c.name, 1, 48000, 100);
        const float* channel = in.data();
        writer.write({&channel, 1}, static_cast<int>(in.size()));
        writer.commit();
        CHECK(writer.numClipped() == c.clipped);
        CHECK(writer.numNonFinite() == 2);
        CHECK(readFile(folder / c.name)[0] == c.out);
    }
}

TEST_CASE("AudioFile: a WAV under 4 GiB is plain, and holds no time of day") {
    const TemporaryFolder folder;
    writeFile(folder / "plain.wav", {sine(440.0, 48000, 1000)}, 48000);
    const std::string bytes = bytesOf(folder / "plain.wav");
    CHECK(bytes.substr(0, 4) == "RIFF");
    CHECK(bytes.find("PEAK") == std::string::npos);
}

TEST_CASE("AudioFile: what can't be read is named in one line") {
    const TemporaryFolder folder;
    putBytes(folder / "text.wav", "This is no audio at all, whatever its name says.\n");
    putBytes(folder / "empty.wav", "");
    makeSilence(folder / "nine.wav", 9, 100);
    makeSilence(folder / "three.wav", 3, 100);
    makeSilence(folder / "none.wav", 2, 0);
    std::filesystem::create_directory(folder / "folder.wav");
    REQUIRE(::mkfifo((folder / "pipe.wav").c_str(), 0600) == 0);
    struct Case {
        std::filesystem::path path;
        const char* says;
    };
    const Case cases[] = {
        {folder / "missing.wav", "No such file"},
        {folder / "text.wav" / "x.wav", "Not a directory"},
        {folder / "text.wav", "is not audio"},
        {folder / "empty.wav", "is empty"},
        {folder / "nine.wav", "has 9 channels; 1 or 2 are supported"},
        {folder / "three.wav", "has 3 channels; 1 or 2 are supported"},
        {folder / "none.wav", "0 frames"},
        {folder / "folder.wav", "is a folder"},
        {folder / "pipe.wav", "is a pipe or device"},
        {"/dev/null", "is a pipe or device"},
        {folder / "line\nbreak.wav", "line?break.wav"},
    };
    for (const Case& c : cases) {
        const std::string error = errorOf([&] { AudioFileReader reader(c.path); });
        INFO(c.path << ": " << error);
        CHECK(isOneLine(error));
        CHECK(error.find(c.says) != std::string::npos);
    }
}

TEST_CASE("AudioFile: a damaged file, or one that ends too soon, is an error and not silence") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (const std::string& name : {std::string("a.flac"), std::string("a.ogg")}) {
        const auto path = folder / name;
        writeFile(path, noise24(rng, 2, 40000), 48000);
        const std::string whole = bytesOf(path);
        std::string spoilt = whole;
        spoilt.replace(whole.size() / 2, 100, 100, 'U');
        for (const std::string& bytes : {whole.substr(0, whole.size() / 2), spoilt}) {
            if (name == "a.ogg" && bytes != spoilt) continue;  // cut off, it is a shorter file
            putBytes(path, bytes);
            const std::string error = errorOf([&] { readFile(path); });
            INFO(name << ", " << bytes.size() << " bytes: " << error);
            CHECK(isOneLine(error));
            CHECK(error.find("is damaged after frame") != std::string::npos);
        }
    }
}

TEST_CASE("AudioFile: a recording that was cut off is as long as what is left of it") {
    const TemporaryFolder folder;
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (const std::string& name : {std::string("a.wav"), std::string("a.ogg")}) {
        const auto path = folder / name;
        writeFile(path, noise24(rng, 2, 40000), 48000);
        const std::string whole = bytesOf(path);
        putBytes(path, whole.substr(0, whole.size() / 2));
        AudioFileReader reader(path);
        INFO(name << ": " << reader.numFrames());
        CHECK(reader.numFrames() > 10000);
        CHECK(reader.numFrames() < 30000);
        CHECK(static_cast<std::int64_t>(readAll(reader)[0].size()) == reader.numFrames());
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
