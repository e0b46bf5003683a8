#include "cinder/audio/AudioFileWriter.h"

#include "cinder/audio/UserError.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace cinder {

namespace {

constexpr double vorbisQuality = 0.8;  // 0..1; about 250 kbit/s in stereo

constexpr double scale24 = 8388608.0;  // 2^23
constexpr int loudest24 = 8388607;

ReplacementFile& fileOf(void* user) {
    return *static_cast<ReplacementFile*>(user);
}

/// libsndfile writes through these, since ReplacementFile remembers why a write failed and
/// libsndfile doesn't. It isn't even told: some of its encoders lose their memory over a failed
/// write. So throwIfFailed() must follow whatever may write.
SF_VIRTUAL_IO throughReplacementFile() {
    SF_VIRTUAL_IO operations;
    operations.get_filelen = [](void* user) -> sf_count_t { return fileOf(user).size(); };
    operations.seek = [](sf_count_t offset, int whence, void* user) -> sf_count_t {
        return fileOf(user).seek(offset, whence);
    };
    operations.read = [](void* data, sf_count_t count, void* user) -> sf_count_t {
        return fileOf(user).read(data, count);
    };
    operations.write = [](const void* data, sf_count_t count, void* user) -> sf_count_t {
        fileOf(user).write(data, count);
        return count;
    };
    operations.tell = [](void* user) -> sf_count_t { return fileOf(user).seek(0, SEEK_CUR); };
    return operations;
}

}  // namespace

AudioFileWriter::AudioFileWriter(const std::filesystem::path& target, int numChannels,
                                 int sampleRate, std::int64_t maxFrames)
    : path(target),
      chosen(audioFileFormatFor(target, maxFrames * numChannels)),
      channels(numChannels),
      maxFrames(maxFrames),
      file(target) {
    assert(numChannels == 1 || numChannels == 2);
    const size_t chunkSamples = static_cast<size_t>(soundFileChunk) * static_cast<size_t>(channels);
    if (chosen.store == SampleStore::Int24)
        integers.resize(chunkSamples);
    else
        floats.resize(chunkSamples);
    open(sampleRate);
}

AudioFileWriter::~AudioFileWriter() = default;

void AudioFileWriter::open(int sampleRate) {
    SF_INFO info{};
    info.channels = channels;
    info.samplerate = sampleRate;
    info.format = chosen.soundFormat;
    SF_VIRTUAL_IO operations = throughReplacementFile();
    sound.reset(sf_open_virtual(&operations, SFM_WRITE, &info, &file));
    file.throwIfFailed();
    if (!sound)
        throw UserError("cannot write " + quoted(path) + " as " + std::string(chosen.name) +
                        " at " + std::to_string(sampleRate) + " Hz: " + soundFileError(nullptr));
    // The peak chunk carries the time of day: without it, the same sound is the same file.
    sf_command(sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    double quality = vorbisQuality;
    sf_command(sound.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
}

void AudioFileWriter::write(std::span<const float* const> samples, int numFrames) {
    assert(static_cast<int>(samples.size()) == channels && sound);
    if (framesWritten + numFrames > maxFrames)
        throw std::logic_error("more audio than was announced to the writer");
    for (int done = 0; done < numFrames;) {
        const int chunk = std::min(numFrames - done, soundFileChunk);
        const sf_count_t taken = writeChunk(samples, done, chunk);
        file.throwIfFailed();
        if (taken != chunk)
            throw UserError("cannot write " + quoted(path) + ": " + soundFileError(sound.get()));
        done += chunk;
        framesWritten += chunk;
    }
}

sf_count_t AudioFileWriter::writeChunk(std::span<const float* const> samples, int offset,
                                       int numFrames) {
    if (chosen.store == SampleStore::Int24) {
        auto out = integers.begin();
        for (int frame = offset; frame < offset + numFrames; ++frame)
            for (const float* channel : samples)
                *out++ = quantised(channel[frame]);
        return sf_writef_int(sound.get(), integers.data(), numFrames);
    }
    auto out = floats.begin();
    for (int frame = offset; frame < offset + numFrames; ++frame)
        for (const float* channel : samples)
            *out++ = finite(channel[frame]);
    return sf_writef_float(sound.get(), floats.data(), numFrames);
}

float AudioFileWriter::finite(float sample) {
    if (std::isfinite(sample)) return sample;
    ++samplesNonFinite;
    return 0.0f;
}

/// The sample as 24 bits at the top of 32, which is where libsndfile takes them from.
int AudioFileWriter::quantised(float sample) {
    const auto value = static_cast<double>(finite(sample));
    if (std::abs(value) > 1.0) ++samplesClipped;
    const double steps = std::clamp(std::nearbyint(value * scale24), -scale24, 1.0 * loudest24);
    return static_cast<int>(steps) * 256;
}

void AudioFileWriter::commit() {
    assert(sound);
    // Closing writes the last block and the lengths in the header.
    const int failure = sf_close(sound.release());
    file.throwIfFailed();
    if (failure != SF_ERR_NO_ERROR)
        throw UserError("cannot write " + quoted(path) + ": " + sf_error_number(failure));
    file.commit();
}

}  // namespace cinder
