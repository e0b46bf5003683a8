#include "cinder/audio/ResamplingReader.h"

#include "cinder/audio/UserError.h"

#include <soxr.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <string>

namespace cinder {

namespace {

constexpr int chunkFrames = 4096;

/// round(frames * out / in), halves up, without an overflow on the way.
std::int64_t scaledLength(std::int64_t frames, std::int64_t in, std::int64_t out) {
    const std::int64_t whole = frames / in;
    const std::int64_t rest = frames % in;
    return std::max<std::int64_t>(1, whole * out + (rest * out + in / 2) / in);
}

[[noreturn]] void fail(int from, int to, const char* reason) {
    throw UserError("cannot convert from " + std::to_string(from) + " Hz to " + std::to_string(to) +
                    " Hz: " + reason);
}

}  // namespace

void ResamplingReader::ConverterDeleter::operator()(soxr* converter) const noexcept {
    soxr_delete(converter);
}

ResamplingReader::ResamplingReader(AudioReader& source, int sampleRate)
    : source(source),
      rate(sampleRate),
      total(scaledLength(source.numFrames(), source.sampleRate(), std::max(sampleRate, 1))) {
    if (sampleRate < 1) fail(source.sampleRate(), sampleRate, "a rate is at least 1 Hz");
    const soxr_io_spec_t planarFloats = soxr_io_spec(SOXR_FLOAT32_S, SOXR_FLOAT32_S);
    // The default bends by 1e-3 towards the band edge and lets the phase of odd ratios drift.
    const soxr_quality_spec_t quality =
        soxr_quality_spec(SOXR_VHQ, SOXR_ROLLOFF_NONE | SOXR_HI_PREC_CLOCK);
    const soxr_runtime_spec_t oneThread = soxr_runtime_spec(1);
    soxr_error_t error = nullptr;
    converter.reset(soxr_create(source.sampleRate(), sampleRate,
                                static_cast<unsigned>(source.numChannels()), &error, &planarFloats,
                                &quality, &oneThread));
    if (error != nullptr || !converter) fail(source.sampleRate(), sampleRate, error);
    for (int channel = 0; channel < source.numChannels(); ++channel)
        input[static_cast<size_t>(channel)].resize(chunkFrames);
}

int ResamplingReader::read(std::span<float* const> channels, int maxFrames) {
    assert(static_cast<int>(channels.size()) == numChannels());
    const auto wanted = static_cast<int>(std::min<std::int64_t>(maxFrames, total - position));
    int done = 0;
    while (done < wanted) {
        if (inputUsed == inputFrames && !sourceEnded) refill();
        const int got = convert(channels, done, wanted - done);
        done += got;
        if (sourceEnded && got == 0) break;
    }
    // The converter may round its own length the other way.
    for (float* channel : channels)
        std::fill(channel + done, channel + wanted, 0.0f);
    position += wanted;
    return wanted;
}

void ResamplingReader::refill() {
    std::array<float*, 2> into{input[0].data(), input[1].data()};
    const auto numUsed = static_cast<size_t>(numChannels());
    inputFrames = source.read(std::span(into).first(numUsed), chunkFrames);
    inputUsed = 0;
    sourceEnded = inputFrames == 0;
    for (size_t channel = 0; channel < numUsed; ++channel)
        for (float& sample : input[channel])
            if (!std::isfinite(sample)) sample = 0.0f;
}

int ResamplingReader::convert(std::span<float* const> channels, int offset, int numFrames) {
    std::array<const float*, 2> from{};
    std::array<float*, 2> to{};
    for (size_t channel = 0; channel < channels.size(); ++channel) {
        from[channel] = input[channel].data() + inputUsed;
        to[channel] = channels[channel] + offset;
    }
    size_t used = 0;
    size_t made = 0;
    // No input at all tells the converter that the end has come and the tail is wanted.
    const soxr_error_t error = soxr_process(converter.get(), sourceEnded ? nullptr : from.data(),
                                            static_cast<size_t>(inputFrames - inputUsed), &used,
                                            to.data(), static_cast<size_t>(numFrames), &made);
    if (error != nullptr) fail(source.sampleRate(), rate, error);
    inputUsed += static_cast<int>(used);
    return static_cast<int>(made);
}

}  // namespace cinder
