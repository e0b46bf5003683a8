#pragma once

#include "cinder/audio/AudioReader.h"
#include "cinder/audio/UserError.h"

#include "support/TemporaryFolder.h"

#include <array>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace cinder::test {

/// One vector per channel.
using Audio = std::vector<std::vector<float>>;

/// Audio from memory, as a reader.
class MemoryReader final : public AudioReader {
public:
    MemoryReader(Audio audio, int sampleRate) : audio(std::move(audio)), rate(sampleRate) {}

    int read(std::span<float* const> channels, int maxFrames) override;
    int numChannels() const override { return static_cast<int>(audio.size()); }
    int sampleRate() const override { return rate; }
    std::int64_t numFrames() const override { return static_cast<std::int64_t>(audio[0].size()); }

private:
    Audio audio;
    int rate;
    size_t position = 0;
};

/// Reads to the end in pieces of the given sizes, repeated.
Audio readAll(AudioReader& reader, const std::vector<int>& pieces = {1000});
Audio readFile(const std::filesystem::path& path, const std::vector<int>& pieces = {1000});

/// Writes and commits.
void writeFile(const std::filesystem::path& path, const Audio& audio, int sampleRate,
               const std::vector<int>& pieces = {1000});

/// A sine of amplitude 1 that starts at phase 0.
std::vector<float> sine(double hz, int sampleRate, int numFrames);

/// The text of the UserError that `action` throws; empty if it throws none.
std::string errorOf(const std::function<void()>& action);
bool isOneLine(const std::string& text);

}  // namespace cinder::test
