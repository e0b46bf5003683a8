#include "cinder/audio/AudioFileFormat.h"

#include "cinder/audio/UserError.h"

#include <sndfile.h>

#include <algorithm>
#include <limits>
#include <string>

namespace cinder {

namespace {

constexpr std::int64_t unlimited = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t fourGiB = (std::int64_t{1} << 32) - 4096;  // less the other chunks

constexpr int wav = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
constexpr int rf64 = SF_FORMAT_RF64 | SF_FORMAT_FLOAT;
constexpr int aiff = SF_FORMAT_AIFF | SF_FORMAT_PCM_24;
constexpr int flac = SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
constexpr int ogg = SF_FORMAT_OGG | SF_FORMAT_VORBIS;

// WAV holds floats, so that a level above full scale survives until someone turns it down. Of two
// rows with the same ending, the first with enough room is taken.
constexpr AudioFileFormat formats[] = {
    // ending  name                          libsndfile  stored as  samples
    {".wav", "WAV, 32-bit float", wav, SampleStore::Float, fourGiB / 4},
    {".wav", "WAV (RF64), 32-bit float", rf64, SampleStore::Float, unlimited},
    {".aiff", "AIFF, 24 bit", aiff, SampleStore::Int24, fourGiB / 3},
    {".aif", "AIFF, 24 bit", aiff, SampleStore::Int24, fourGiB / 3},
    {".flac", "FLAC, 24 bit", flac, SampleStore::Int24, unlimited},
    {".ogg", "Ogg Vorbis", ogg, SampleStore::Float, unlimited},
    {".oga", "Ogg Vorbis", ogg, SampleStore::Float, unlimited},
};

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string knownEndings() {
    std::string endings;
    std::string_view last;
    for (const AudioFileFormat& format : formats) {
        if (format.ending == last) continue;
        if (!endings.empty()) endings += ", ";
        endings += last = format.ending;
    }
    return endings;
}

}  // namespace

const AudioFileFormat& audioFileFormatFor(const std::filesystem::path& path,
                                          std::int64_t numSamples) {
    std::string ending = path.extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), lowerCase);
    bool isKnown = false;
    for (const AudioFileFormat& format : formats) {
        if (format.ending != ending) continue;
        if (numSamples <= format.maxSamples) return format;
        isKnown = true;
    }
    if (isKnown)
        throw UserError("cannot write " + quoted(path) + ": " + ending +
                        " ends at 4 GiB; .wav and .flac have room");
    throw UserError(quoted(path) +
                    " has no ending that names a format to write: " + knownEndings());
}

}  // namespace cinder
