#pragma once

#include "analysis/spectrum/RealTimeFrequencyAnalyzer.h"
#include "cinder/plot/Figure.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cinder {

/// What the product's own analyzer sees of two streams, over their whole length: of each bin the
/// root of the mean square, and the highest.
/// Shape   one or two channels of which the louder one counts; pieces of any length, of either
///         stream in turn. The last hop is filled up with silence
/// State   audio of one stream that the other has no partner for yet; sums in double
class SpectrumRecorder {
public:
    static constexpr int size = 8192;

    explicit SpectrumRecorder(int numChannels);
    SpectrumRecorder(const SpectrumRecorder&) = delete;
    SpectrumRecorder& operator=(const SpectrumRecorder&) = delete;

    void addInput(std::span<const float* const> channels, int numFrames);
    void addOutput(std::span<const float* const> channels, int numFrames);
    /// Nothing more will come.
    void finish();

    /// A picture of both, in dB of a sine's peak.
    Figure figure(const std::string& title, double sampleRate) const;

private:
    static constexpr int hop = size / 4;

    /// Audio from a file as the analyzer takes it, a hop at a time.
    class Stream final : public AudioSource {
    public:
        explicit Stream(int numChannels) : channels(static_cast<std::size_t>(numChannels)) {}

        void add(std::span<const float* const> samples, int numFrames);
        void fillUp();
        void dropFrame();
        bool isEmpty() const { return channels[0].empty(); }

        void lock() override {}
        void unlock() override {}
        std::int32_t getFrameSize() const override { return hop; }
        const float* getFrameData(std::int32_t frame, std::int32_t channel) const override;
        std::int32_t getFrameCount() const override;
        std::int32_t getChannelCount() const override {
            return static_cast<std::int32_t>(channels.size());
        }

    private:
        std::vector<std::vector<float>> channels;
    };

    /// Bin by bin.
    struct Seen {
        std::vector<double> sumOfSquares = std::vector<double>(size / 2 + 1);
        std::vector<float> highest = std::vector<float>(size / 2 + 1);
    };

    void look();
    std::vector<Series> series(const Seen& seen, const std::string& name, Colour colour,
                               double sampleRate) const;

    RealTimeFrequencyAnalyzer analyzer{size, nullptr};
    Stream input, output;
    Seen seenInput, seenOutput;
    int numHops = 0;
};

}  // namespace cinder
