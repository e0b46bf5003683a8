#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "dsp/filters/crossover/CrossoverFilter.h"
#include "dsp/filters/crossover/CrossoverMultiBandModel.h"
#include "wave/Forwarders.h"
#include "wave/MultiProducer.h"

namespace cinder {

/// All-passes that make up for the crossovers of a tree, each subtree on the other side of its
/// parent. [any]
constexpr int allPassesFor(int numCrossovers) noexcept CINDER_REALTIME {
    if (numCrossovers < 1) return 0;
    const int low = numCrossovers / 2, high = numCrossovers - low - 1;
    return allPassesFor(high) + allPassesFor(low) + numCrossovers - 1;
}

/// Splits one channel into the bands of a model, so that their sum is an all-pass of the input.
///
/// Each crossover of the model's tree sends its low-pass into one subtree and its high-pass into
/// the other. Either subtree then turns the phase by its own crossovers, which the other side makes
/// up for: behind the low-pass stand all-passes of the crossovers in the high subtree, and the
/// other way round. So every band has the phase of every crossover.
///
/// A new band count makes the filters start anew, on other branches. Two trees take turns: the new
/// one starts in the shadow of the old one, and every band fades over to it. A count that comes
/// while bands are fading waits until they have.
///
/// Shape   one channel in, 6 bands out in ascending frequency; those beyond the band count are
///         silent. With one band the input is handed on, and no filter runs
/// Range   any frequencies, of the knobs or of what the buses point to; flat when they ascend
/// State   of the filters of the tree in use, and during a fade of both. Same result for any cut of
///         the block, if a band count comes when the last one has faded in. A count that comes
///         behind a pause or a discontinuity jumps
class MultiBand final : public wave::MultiProducer {
public:
    using Model = CrossoverMultiBandModel;
    static constexpr int maxBands = Model::maxBands;
    static constexpr int maxCrossovers = Model::maxCrossovers;

    static constexpr int maxAllPasses = allPassesFor(maxCrossovers);

    /// The controls of a crossover, which all its filters share, and its filters in both trees.
    class Crossover final : public PropertyOwner {
    public:
        explicit Crossover(wave::Environment* environment);

        void propertyChanged(AbstractProperty* property) override;

        wave::FloatParameterBus frequency;  ///< log2 of Hz
        Property<CrossoverSlope> slope{CrossoverSlope::Db24, this};

    private:
        friend class MultiBand;

        struct Branch {
            CrossoverFilter filter;
            wave::Forwarder output;  // of the filter, or of the last all-pass behind it
        };
        struct Split {
            explicit Split(wave::Environment* environment);
            std::array<Branch, 2> branches;  // low, high
            // What makes up for this crossover elsewhere in the tree; not owned.
            std::array<CrossoverFilter*, maxAllPasses> allPasses = {};
            int numAllPasses = 0;
        };

        wave::FloatParameterBusForwarder sharedFrequency;
        std::array<Split, 2> splits;  // one for each tree
    };

    MultiBand(wave::Environment* environment, CrossoverMultiBandModel* model);
    ~MultiBand() override;

    void setInput(wave::Producer* producer) { input.setInput(producer); }
    Crossover& getCrossover(int i) { return *crossovers[static_cast<std::size_t>(i)]; }
    /// The bands of the tree in use, or fading in.
    int getWiredBandCount() const { return trees[active].bandCount; }
    bool isFading() const { return fadeLeft > 0; }

    /// Makes the splits of two channels on one model run as two lanes: all their filters share the
    /// coefficients of the channel that is pulled first. Both need an input by then. A channel that
    /// is not linked runs the two filters of each crossover as lanes. Before audio runs.
    void link(MultiBand& other);

    void render(wave::BasicBlock<float>** blocks, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

private:
    struct Tree {
        std::array<std::unique_ptr<CrossoverFilter>, maxAllPasses> allPasses;
        int numUsed = 0;  // of them
        int bandCount = 0;
        std::array<wave::Producer*, maxBands> bands = {};  // not owned; null beyond the count
    };

    void modelChanged(NotifyEvent::Argument);
    void applyModel() noexcept CINDER_REALTIME;
    bool isContinuous() const noexcept CINDER_REALTIME;
    void followBandCount() noexcept CINDER_REALTIME;
    void rewire() noexcept CINDER_REALTIME;
    void wire(std::size_t tree) noexcept CINDER_REALTIME;
    void wireCrossover(std::size_t tree, int index) noexcept CINDER_REALTIME;
    wave::Producer* compensate(std::size_t tree, int first, int count,
                               wave::Producer* chain) noexcept CINDER_REALTIME;
    wave::BasicBlock<float>* pullBand(const Tree& tree, int band,
                                      int numSamples) const noexcept CINDER_REALTIME;
    void fadeBand(int band, wave::BasicBlock<float>*& block,
                  int numSamples) noexcept CINDER_REALTIME;
    void handOnBand(int band, wave::BasicBlock<float>*& block,
                    int numSamples) noexcept CINDER_REALTIME;

    CrossoverMultiBandModel* model;  // not owned
    MultiBand* linked = nullptr;     // the other channel, not owned
    wave::Forwarder input;
    std::array<std::unique_ptr<Crossover>, maxCrossovers> crossovers;
    std::array<Tree, 2> trees;
    std::size_t active = 0;
    int fadeLength = 1;
    int fadeLeft = 0;
    std::uint64_t blockEnd = 0;  // position behind the last block
};

}  // namespace cinder
