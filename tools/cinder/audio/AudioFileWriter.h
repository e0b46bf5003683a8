#pragma once

#include "cinder/audio/AudioFileFormat.h"
#include "cinder/audio/ReplacementFile.h"
#include "cinder/audio/SoundFile.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace cinder {

/// Writes an audio file that appears at its name when it is whole, and never before. The file that
/// is being read may be the target.
/// Shape   mono or stereo, any length; the ending of the name chooses the format:
///         .wav (32-bit float; RF64 beyond 4 GiB), .aiff .aif .flac (24 bit), .ogg .oga (Vorbis)
/// Range   24-bit formats store round(x * 2^23), so what was read from 24 bits or fewer is written
///         back to the bit; what lies outside -1..1 is clipped and counted. The others don't clip.
///         A sample that isn't finite becomes 0 and is counted
/// State   the same file for any cut into writes
/// Errors  UserError. The constructor: unknown ending, a format without room for the length or the
///         rate, and those of ReplacementFile. write(), commit(): full disk and the like. An error
///         at any time leaves the target as it was
class AudioFileWriter {
public:
    /// `maxFrames` is the length that will be written, or more: it settles what has room.
    AudioFileWriter(const std::filesystem::path& target, int numChannels, int sampleRate,
                    std::int64_t maxFrames);
    AudioFileWriter(const AudioFileWriter&) = delete;
    AudioFileWriter& operator=(const AudioFileWriter&) = delete;
    ~AudioFileWriter();

    /// One array per channel.
    void write(std::span<const float* const> samples, int numFrames);

    /// Ends the file and puts it in its place. Nothing can be written after it.
    void commit();

    const AudioFileFormat& format() const { return chosen; }
    std::int64_t numFrames() const { return framesWritten; }
    std::int64_t numClipped() const { return samplesClipped; }      ///< beyond full scale
    std::int64_t numNonFinite() const { return samplesNonFinite; }  ///< NaN or infinite

private:
    void open(int sampleRate);
    float finite(float sample);
    int quantised(float sample);
    sf_count_t writeChunk(std::span<const float* const> samples, int offset, int numFrames);

    const std::filesystem::path path;
    const AudioFileFormat& chosen;
    const int channels;
    const std::int64_t maxFrames;
    ReplacementFile file;
    SoundFile sound;  // after `file`: closing it still writes
    std::vector<float> floats;
    std::vector<int> integers;
    std::int64_t framesWritten = 0;
    std::int64_t samplesClipped = 0;
    std::int64_t samplesNonFinite = 0;
};

}  // namespace cinder
