#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace cinder {

/// How samples are stored.
enum class SampleStore {
    Float,  // as they are, also above full scale
    Int24,  // rounded to 2^-23 and clipped at full scale
};

/// One way to write an audio file, chosen by the ending of its name.
struct AudioFileFormat {
    std::string_view ending;  // lower case, with the dot
    std::string_view name;    // for people
    int soundFormat;          // for libsndfile
    SampleStore store;
    std::int64_t maxSamples;  // of all channels together
};

/// The format that writes `numSamples` (of all channels together) to `path`; upper and lower case
/// mean the same. UserError if no ending fits, naming those that do, or if the samples don't fit.
const AudioFileFormat& audioFileFormatFor(const std::filesystem::path& path,
                                          std::int64_t numSamples);

}  // namespace cinder
