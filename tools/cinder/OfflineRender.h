#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace cinder {

class AudioReader;
class GenericPluginProcessor;

/// Plays a reader through a processor as a host would, block by block, and takes the latency out:
/// the first `latency` frames that come back are dropped, and as many frames of silence follow
/// the audio, so that as many frames leave as went in, in step with them.
/// Shape   channels of the reader; host blocks of `blockSize`, the last one shorter
/// State   that of the reader and the processor; memory for one piece, a few thousand frames
/// Errors  those of the reader and of the sink; the processing itself has none
class OfflineRender {
public:
    /// Takes a piece of what has come back, at least one frame.
    using Sink = std::function<void(std::span<const float* const> channels, int numFrames)>;

    /// Gives the processor the reader's rate and each parameter its value, and clears it.
    OfflineRender(AudioReader& source, GenericPluginProcessor& processor,
                  std::span<const float> parameterValues, int blockSize);

    void run(const Sink& sink);

    int latency() const { return latencySamples; }

private:
    using Piece = std::vector<std::vector<float>>;  // by channel

    void prepare(std::span<const float> parameterValues);
    int fillPiece();
    void processPiece(int numFrames);

    AudioReader& source;
    GenericPluginProcessor& processor;
    const int blockSize;
    const int pieceSize;
    int latencySamples = 0;
    std::int64_t framesLeft = 0;  // to go in, the silence included
    Piece inputs;
    Piece outputs;
};

}  // namespace cinder
