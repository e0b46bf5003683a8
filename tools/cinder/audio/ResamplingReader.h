#pragma once

#include "cinder/audio/AudioReader.h"

#include <array>
#include <memory>
#include <vector>

struct soxr;

namespace cinder {

/// Another reader at another rate: y(n / outRate) = x(n / inRate), band-limited to the lower of
/// the two, by the linear-phase 28-bit converter of libsoxr with its delay taken out.
/// Shape   channels of the source; numFrames() = round(source frames * outRate / inRate), at least
/// 1 Range   samples that aren't finite become 0 first, or each would blank a filter's length State
/// the converter's; the same samples for any cut into reads Errors  UserError where the rates are
/// too far apart for the converter, and those of the source
class ResamplingReader final : public AudioReader {
public:
    /// `source` must outlive this reader, which alone may read from it.
    ResamplingReader(AudioReader& source, int sampleRate);

    int read(std::span<float* const> channels, int maxFrames) override;

    int numChannels() const override { return source.numChannels(); }
    int sampleRate() const override { return rate; }
    std::int64_t numFrames() const override { return total; }

private:
    struct ConverterDeleter {
        void operator()(soxr* converter) const noexcept;
    };

    void refill();
    int convert(std::span<float* const> channels, int offset, int numFrames);

    AudioReader& source;
    const int rate;
    const std::int64_t total;
    std::unique_ptr<soxr, ConverterDeleter> converter;
    std::array<std::vector<float>, 2> input;  // what the source gave, one chunk
    int inputFrames = 0;
    int inputUsed = 0;
    bool sourceEnded = false;
    std::int64_t position = 0;
};

}  // namespace cinder
