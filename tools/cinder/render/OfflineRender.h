#pragma once

#include "cinder/render/HostEvents.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace cinder {

class AudioReader;
class DirectPluginAdapter;

/// Plays a reader through an instance as a host would: block by block, with its transport running
/// from 0 and what it sends at its place. The latency is taken out: the first `latency` frames that
/// come back are dropped, and as many frames of silence follow, so that what leaves is in step with
/// what went in.
/// Shape   channels of the reader; host blocks of `blockSize`, cut where a parameter moves
/// State   that of the readers and the instance; memory for one piece, a few thousand frames
/// Errors  those of the readers and of the sink; the processing itself has none
class OfflineRender {
public:
    struct Setup {
        int blockSize = 512;
        double beatsPerMinute = 120.0;
        std::int64_t tailFrames = 0;       // of silence behind the audio
        AudioReader* sideChain = nullptr;  // silent when it has ended
        bool takesLatencyOut = true;
    };
    /// Takes a piece of what has come back, at least one frame.
    using Sink = std::function<void(std::span<const float* const> channels, int numFrames)>;

    /// Gives the instance the reader's rate and what stands at its start, and clears it.
    OfflineRender(AudioReader& source, DirectPluginAdapter& instance, HostEvents& events,
                  const Setup& setup);

    void run(const Sink& sink);

    int latency() const { return latencySamples; }
    /// That will leave.
    std::int64_t numFrames() const;

private:
    using Piece = std::vector<std::vector<float>>;  // by channel

    void prepare();
    int fillPiece();
    void processPiece(int numFrames);
    void processCall(int offset, int numFrames);

    AudioReader& source;
    DirectPluginAdapter& instance;
    HostEvents& events;
    const Setup setup;
    const int pieceSize;
    int latencySamples = 0;
    std::int64_t position = 0;    // of the piece
    std::int64_t framesLeft = 0;  // to go in, the silence included
    Piece inputs;                 // the side chain's behind the main ones
    Piece outputs;
};

}  // namespace cinder
