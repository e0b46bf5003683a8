#include "cinder/OfflineRender.h"

#include "cinder/audio/AudioReader.h"
#include "params/AbstractPluginParameter.h"
#include "processor/frame/GenericPluginProcessor.h"

#include <algorithm>

namespace cinder {

namespace {

/// Files are read and written in pieces of as many whole blocks as this holds, and one at least: a
/// system call for every block of one sample would take longer than all the rest.
constexpr int pieceFrames = 4096;

/// Where each channel of a piece goes on, `offset` frames from its start.
template <typename Pointer, typename Piece>
std::vector<Pointer> pointersInto(Piece& piece, int offset) {
    std::vector<Pointer> pointers;
    pointers.reserve(piece.size());
    for (auto& channel : piece)
        pointers.push_back(channel.data() + offset);
    return pointers;
}

}  // namespace

OfflineRender::OfflineRender(AudioReader& source, GenericPluginProcessor& processor,
                             std::span<const float> parameterValues, int blockSize)
    : source(source),
      processor(processor),
      blockSize(blockSize),
      pieceSize(blockSize * std::max(1, pieceFrames / blockSize)) {
    prepare(parameterValues);
    latencySamples = processor.getLatency();
    framesLeft = source.numFrames() + latencySamples;
    const auto numChannels = static_cast<std::size_t>(source.numChannels());
    inputs.assign(numChannels, std::vector<float>(static_cast<std::size_t>(pieceSize)));
    outputs = inputs;
}

/// What a host does before it plays. The reset applies the values, and nothing ramps.
void OfflineRender::prepare(std::span<const float> parameterValues) {
    processor.getEnvironment()->setSampleRate(static_cast<float>(source.sampleRate()));
    for (std::size_t id = 0; id < parameterValues.size(); ++id)
        processor.getParameter(static_cast<int>(id))
            ->setValue(parameterValues[id], AbstractPluginParameter::hostKnows);
    processor.reset();
}

/// Audio as long as there is some, silence behind it. Answers the frames of the piece.
int OfflineRender::fillPiece() {
    const auto count = static_cast<int>(std::min<std::int64_t>(pieceSize, framesLeft));
    const int got = source.read(pointersInto<float*>(inputs, 0), count);
    for (auto& channel : inputs)
        std::fill(channel.begin() + got, channel.begin() + count, 0.0f);
    framesLeft -= count;
    return count;
}

void OfflineRender::processPiece(int numFrames) {
    const int numChannels = source.numChannels();
    for (int done = 0; done < numFrames; done += blockSize) {
        const auto in = pointersInto<const float*>(inputs, done);
        const auto out = pointersInto<float*>(outputs, done);
        processor.process(in.data(), numChannels, out.data(), numChannels,
                          std::min(blockSize, numFrames - done));
    }
}

void OfflineRender::run(const Sink& sink) {
    for (int toDrop = latencySamples; framesLeft > 0;) {
        const int count = fillPiece();
        processPiece(count);
        const int dropped = std::min(toDrop, count);
        toDrop -= dropped;
        if (count > dropped) sink(pointersInto<const float*>(outputs, dropped), count - dropped);
    }
}

}  // namespace cinder
