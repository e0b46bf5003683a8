#pragma once

#include "cinder/audio/AudioReader.h"
#include "cinder/audio/FileDescriptor.h"
#include "cinder/audio/SoundFile.h"

#include <filesystem>
#include <vector>

namespace cinder {

/// Reads an audio file in pieces; a piece is all that memory holds of it.
/// Shape   WAV (also RF64, W64), AIFF, FLAC, Ogg and what else libsndfile knows by its content;
///         mono or stereo, any rate, any length of at least one frame
/// Range   integer formats arrive as value / 2^(bits - 1), so 24 bits and fewer are exact
/// State   the position
/// Errors  the constructor: no such file, a folder, a pipe or device (audio files are read with
///         seeks), empty, not audio, a wrong number of channels, no frames.
///         read(): the file ends before the length it announces, or is damaged
class AudioFileReader final : public AudioReader {
public:
    explicit AudioFileReader(const std::filesystem::path& path);

    int read(std::span<float* const> channels, int maxFrames) override;

    int numChannels() const override { return info.channels; }
    int sampleRate() const override { return info.samplerate; }
    std::int64_t numFrames() const override { return info.frames; }

private:
    void openFile();
    void openSound();
    void countFrames();
    [[noreturn]] void failAsDamaged(std::int64_t frame);

    std::filesystem::path path;
    FileDescriptor descriptor;
    SoundFile sound;
    SF_INFO info{};
    std::vector<float> interleaved;
    std::int64_t position = 0;
};

}  // namespace cinder
