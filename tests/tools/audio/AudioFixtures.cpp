#include "tools/audio/AudioFixtures.h"

#include "cinder/audio/AudioFileReader.h"
#include "cinder/audio/AudioFileWriter.h"

#include <doctest/doctest.h>
#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>

namespace cinder::test {

int MemoryReader::read(std::span<float* const> channels, int maxFrames) {
    const size_t count = std::min(static_cast<size_t>(maxFrames), audio[0].size() - position);
    for (size_t channel = 0; channel < audio.size(); ++channel)
        std::copy_n(audio[channel].begin() + static_cast<std::ptrdiff_t>(position), count,
                    channels[channel]);
    position += count;
    return static_cast<int>(count);
}

Audio readAll(AudioReader& reader, const std::vector<int>& pieces) {
    Audio audio(static_cast<size_t>(reader.numChannels()));
    std::vector<float*> into(audio.size());
    for (size_t turn = 0;; ++turn) {
        const int wanted = pieces[turn % pieces.size()];
        const size_t before = audio[0].size();
        for (size_t channel = 0; channel < audio.size(); ++channel) {
            audio[channel].resize(before + static_cast<size_t>(wanted));
            into[channel] = audio[channel].data() + before;
        }
        const int got = reader.read(into, wanted);
        for (auto& channel : audio)
            channel.resize(before + static_cast<size_t>(got));
        if (got < wanted) return audio;
    }
}

Audio readFile(const std::filesystem::path& path, const std::vector<int>& pieces) {
    AudioFileReader reader(path);
    return readAll(reader, pieces);
}

void writeFile(const std::filesystem::path& path, const Audio& audio, int sampleRate,
               const std::vector<int>& pieces) {
    const auto total = static_cast<int>(audio[0].size());
    AudioFileWriter writer(path, static_cast<int>(audio.size()), sampleRate, total);
    std::vector<const float*> from(audio.size());
    int piece = 0;
    for (int done = 0, turn = 0; done < total; done += piece, ++turn) {
        piece = std::min(pieces[static_cast<size_t>(turn) % pieces.size()], total - done);
        for (size_t channel = 0; channel < audio.size(); ++channel)
            from[channel] = audio[channel].data() + done;
        writer.write(from, piece);
    }
    writer.commit();
}

std::vector<float> sine(double hz, int sampleRate, int numFrames) {
    std::vector<float> samples(static_cast<size_t>(numFrames));
    for (size_t n = 0; n < samples.size(); ++n)
        samples[n] = static_cast<float>(
            std::sin(2.0 * std::numbers::pi * hz * static_cast<double>(n) / sampleRate));
    return samples;
}

std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const UserError& error) {
        return error.what();
    }
    return {};
}

bool isOneLine(const std::string& text) {
    return !text.empty() && text.find('\n') == std::string::npos;
}

}  // namespace cinder::test
