#pragma once

#include <sndfile.h>

#include <memory>
#include <string>

namespace cinder {

/// A handle of libsndfile that closes itself.
struct SoundFileCloser {
    void operator()(SNDFILE* file) const noexcept { sf_close(file); }
};
using SoundFile = std::unique_ptr<SNDFILE, SoundFileCloser>;

/// Frames that go through libsndfile in one call. Small on purpose: its Vorbis encoder keeps a
/// whole call on the stack.
inline constexpr int soundFileChunk = 4096;

/// What libsndfile says of the last failure of `file` (of the last open, if null), without the
/// full stop and the line end that some of its texts bring along.
std::string soundFileError(SNDFILE* file);

}  // namespace cinder
