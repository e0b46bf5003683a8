#include "cinder/audio/AudioFileReader.h"

#include "cinder/audio/UserError.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <limits>
#include <string>

namespace cinder {

namespace {

/// libsndfile's answer for a stream that doesn't say how long it is.
constexpr sf_count_t unknownLength = std::numeric_limits<sf_count_t>::max();

constexpr int maxChannels = 2;

}  // namespace

AudioFileReader::AudioFileReader(const std::filesystem::path& path) : path(path) {
    openFile();
    openSound();
    if (info.channels > maxChannels)
        throw UserError(quoted(path) + " has " + std::to_string(info.channels) +
                        " channels; 1 or 2 are supported");
    interleaved.resize(static_cast<size_t>(soundFileChunk) * static_cast<size_t>(info.channels));
    if (info.frames == unknownLength) countFrames();
    if (info.frames < 1) throw UserError(quoted(path) + " has no audio in it (0 frames)");
}

void AudioFileReader::openFile() {
    // Without O_NONBLOCK, opening a pipe that nobody writes to would wait for ever.
    descriptor = FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isOpen()) throw systemError("open", path, errno);
    struct stat status {};
    if (::fstat(descriptor.get(), &status) != 0) throw systemError("open", path, errno);
    if (S_ISDIR(status.st_mode)) throw UserError(quoted(path) + " is a folder, not an audio file");
    if (!S_ISREG(status.st_mode))
        throw UserError(quoted(path) + " is a pipe or device; audio is read from regular files");
    if (status.st_size == 0) throw UserError(quoted(path) + " is empty");
}

void AudioFileReader::openSound() {
    info = SF_INFO{};
    position = 0;
    if (::lseek(descriptor.get(), 0, SEEK_SET) != 0) throw systemError("read", path, errno);
    sound.reset(sf_open_fd(descriptor.get(), SFM_READ, &info, SF_FALSE));
    if (!sound)
        throw UserError(quoted(path) +
                        " is not audio that can be read: " + soundFileError(nullptr));
    if (info.channels < 1 || info.samplerate < 1)
        throw UserError(quoted(path) + " is damaged: its header makes no sense");
}

void AudioFileReader::countFrames() {
    sf_count_t counted = 0;
    while (const sf_count_t got = sf_readf_float(sound.get(), interleaved.data(), soundFileChunk))
        counted += got;
    if (counted == 0 || sf_error(sound.get()) != SF_ERR_NO_ERROR) failAsDamaged(counted);
    openSound();
    info.frames = counted;
}

int AudioFileReader::read(std::span<float* const> channels, int maxFrames) {
    assert(static_cast<int>(channels.size()) == info.channels);
    const auto wanted = static_cast<int>(std::min<std::int64_t>(maxFrames, info.frames - position));
    for (int done = 0; done < wanted;) {
        const int chunk = std::min(wanted - done, soundFileChunk);
        const auto got = static_cast<int>(sf_readf_float(sound.get(), interleaved.data(), chunk));
        if (got < chunk) failAsDamaged(position + std::max(got, 0));
        const float* in = interleaved.data();
        for (int frame = done; frame < done + chunk; ++frame)
            for (float* channel : channels)
                channel[frame] = *in++;
        done += chunk;
        position += chunk;
    }
    return wanted;
}

void AudioFileReader::failAsDamaged(std::int64_t frame) {
    std::string text = quoted(path) + " is damaged after frame " + std::to_string(frame);
    if (info.frames != unknownLength) text += " of " + std::to_string(info.frames);
    if (sf_error(sound.get()) != SF_ERR_NO_ERROR) text += ": " + soundFileError(sound.get());
    throw UserError(text);
}

}  // namespace cinder
