#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "analysis/CachedDiscreteFrequencyResponseSource.h"
#include "core/Property.h"
#include "core/UpdatedObject.h"

namespace cinder {

/// What the band splits of all channels have in common: how many bands there are, the tree of
/// crossovers that makes them, and what each band lets through in theory.
///
/// The crossovers in use, in ascending order of frequency, form a binary tree with the middle one
/// as its root; the bands are its leaves, from the lowest to the highest:
///   bands  root  low subtree             high subtree
///     2      0   -                       -
///     3      1   0                       -
///     4      1   0                       2
///     5      2   1 with low child 0      3
///     6      2   1 with low child 0      4 with low child 3
///
/// Range   1..6 bands. Frequencies are neither sorted nor kept apart: out of order the tree runs,
///         but its sum is no longer flat
/// State   the tree, and the responses that have been asked for; one thread changes it, that of
///         the splits
class CrossoverMultiBandModel final : public PropertyOwner, public UpdatedObject {
public:
    static constexpr int maxBands = 6;
    static constexpr int maxCrossovers = maxBands - 1;

    enum class ProcessingMode : std::int32_t {
        Analog = 0,  ///< the response of the analog filters
        Warped = 1,  ///< with the frequency axis of the digital ones
    };
    enum Side { Low = 0, High = 1 };
    static constexpr int noCrossover = -1;

    /// Where something hangs in the tree.
    struct Place {
        int parent = noCrossover;
        Side side = Low;
        bool operator==(const Place&) const = default;
    };

    class Crossover;

    /// The low-pass response of a crossover, the magnitude of the real filter. That of the
    /// high-pass is 1 minus it.
    ///   analog (f / fc)^p, p = slope / 6; warped (tan(w / 2) / tan(wc / 2))^N; H = 1 / (1 + ...)
    /// and for a warped one of order 1 the complex 1 / (1 + j tan(w / 2) / tan(wc / 2)).
    class CrossoverResponseSource final : public CachedDiscreteFrequencyResponseSource {
    public:
        explicit CrossoverResponseSource(Crossover* crossover);

    protected:
        Response computeResponse(int index) override;

    private:
        Crossover* crossover;
    };

    class Crossover final : public PropertyOwner {
    public:
        Crossover(CrossoverMultiBandModel* model, int index);

        void propertyChanged(AbstractProperty* property) override;
        int getIndex() const { return index; }
        const Place& getPlace() const { return place; }
        int getSubtreeSize(Side side) const { return subtreeSizes[side]; }
        CrossoverResponseSource& getResponseSource() { return *responseSource; }

        Property<float> frequency{9.965784f, this};  ///< log2 of Hz
        Property<float> slope{24.0f, this};          ///< dB per octave

    private:
        friend class CrossoverMultiBandModel;
        friend class CrossoverResponseSource;

        void update();
        FrequencyResponseSource::Response responseAt(float hz) const;

        CrossoverMultiBandModel* model;  // not owned
        int index;
        Place place;
        int subtreeSizes[2] = {0, 0};
        double inverseHz = 0.0;
        double inverseTangent = 0.0;
        std::unique_ptr<CrossoverResponseSource> responseSource;
    };

    /// A leaf of the tree; its response is the product along the path to the root.
    class Band final : public DiscreteFrequencyResponseSource, public PropertyOwner {
    public:
        Band(CrossoverMultiBandModel* model, int index);

        Response getResponseAt(int index) override;
        void propertyChanged(AbstractProperty* property) override;
        int getIndex() const { return index; }
        const Place& getPlace() const { return place; }

        Property<bool> active{true, this};

    private:
        friend class CrossoverMultiBandModel;

        CrossoverMultiBandModel* model;  // not owned
        int index;
        Place place;
    };

    CrossoverMultiBandModel();

    void propertyChanged(AbstractProperty* property) override;
    Crossover& getCrossover(int i) const { return *crossovers[static_cast<std::size_t>(i)]; }
    Band& getBand(int i) const { return *bands[static_cast<std::size_t>(i)]; }
    /// Index of the root crossover.
    int getRoot() const { return root; }
    DiscreteFrequencyResponseSource::Mapping& getMapping() { return mapping; }

    /// Fired when anything has changed, once for an update bracket; the argument is the model.
    NotifyEvent& changed() { return deferredEvent(changedEvent); }

    Property<float> sampleRate{44100.0f, this};
    LimitedProperty<int> bandCount{1, 1, maxBands, this};
    Property<ProcessingMode> processingMode{ProcessingMode::Analog, this};

private:
    void notify() { deferEvent(changedEvent, this); }
    void mappingChanged(NotifyEvent::Argument);
    void updateCrossovers();
    void buildTree();
    void placeSubtree(int start, int count, Place place);

    std::size_t changedEvent;
    DiscreteFrequencyResponseSource::Mapping mapping;
    std::array<std::unique_ptr<Crossover>, maxCrossovers> crossovers;
    std::array<std::unique_ptr<Band>, maxBands> bands;
    int root = noCrossover;
    int numPlacedBands = 0;  // while the tree is built
};

}  // namespace cinder
