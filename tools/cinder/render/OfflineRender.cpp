#include "cinder/render/OfflineRender.h"

#include "cinder/audio/AudioReader.h"
#include "host/DirectPluginAdapter.h"

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

/// Audio as long as there is some, silence behind it.
void readInto(AudioReader& reader, std::span<float* const> channels, int count) {
    const int got = reader.read(channels, count);
    for (float* const channel : channels)
        std::fill(channel + got, channel + count, 0.0f);
}

}  // namespace

OfflineRender::OfflineRender(AudioReader& source, DirectPluginAdapter& instance, HostEvents& events,
                             const Setup& setup)
    : source(source),
      instance(instance),
      events(events),
      setup(setup),
      pieceSize(setup.blockSize * std::max(1, pieceFrames / setup.blockSize)) {
    prepare();
    latencySamples = instance.getProcessor().getLatency();
    framesLeft = numFrames() + (setup.takesLatencyOut ? latencySamples : 0);
    const std::vector<float> silence(static_cast<std::size_t>(pieceSize));
    const int numSideChannels = setup.sideChain ? setup.sideChain->numChannels() : 0;
    outputs.assign(static_cast<std::size_t>(source.numChannels()), silence);
    inputs.assign(static_cast<std::size_t>(source.numChannels() + numSideChannels), silence);
}

std::int64_t OfflineRender::numFrames() const {
    return source.numFrames() + setup.tailFrames;
}

/// What a host does before it plays. The reset applies the values, and nothing ramps.
void OfflineRender::prepare() {
    instance.setSampleRate(static_cast<float>(source.sampleRate()));
    instance.getProcessor().setSideChainConnected(setup.sideChain != nullptr);
    events.begin(instance);
    instance.getProcessor().reset();
}

/// Answers the frames of the piece.
int OfflineRender::fillPiece() {
    const auto count = static_cast<int>(std::min<std::int64_t>(pieceSize, framesLeft));
    const auto channels = pointersInto<float*>(inputs, 0);
    const std::span all(channels);
    const auto numMain = static_cast<std::size_t>(source.numChannels());
    readInto(source, all.first(numMain), count);
    if (setup.sideChain) readInto(*setup.sideChain, all.subspan(numMain), count);
    framesLeft -= count;
    return count;
}

void OfflineRender::processPiece(int numFrames) {
    for (int done = 0; done < numFrames;) {
        const int blockEnd = std::min(done - done % setup.blockSize + setup.blockSize, numFrames);
        const int count = events.send(instance, position + done, blockEnd - done);
        processCall(done, count);
        done += count;
    }
    position += numFrames;
}

void OfflineRender::processCall(int offset, int numFrames) {
    const auto in = pointersInto<const float*>(inputs, offset);
    const auto out = pointersInto<float*>(outputs, offset);
    const double beats =
        static_cast<double>(position + offset) / source.sampleRate() * setup.beatsPerMinute / 60.0;
    instance.getProcessor().setTransport(static_cast<float>(setup.beatsPerMinute),
                                         static_cast<float>(beats));
    instance.process(in.data(), static_cast<int>(in.size()), out.data(),
                     static_cast<int>(out.size()), numFrames);
    instance.dispatch();
}

void OfflineRender::run(const Sink& sink) {
    for (int toDrop = setup.takesLatencyOut ? latencySamples : 0; framesLeft > 0;) {
        const int count = fillPiece();
        processPiece(count);
        const int dropped = std::min(toDrop, count);
        toDrop -= dropped;
        if (count > dropped) sink(pointersInto<const float*>(outputs, dropped), count - dropped);
    }
}

}  // namespace cinder
