#pragma once

#include <cstddef>
#include <vector>

#include "analysis/FrequencyResponseSource.h"
#include "core/NotifyEvent.h"
#include "core/Property.h"

namespace cinder {

/// Responses at the points of a grid of frequencies, which several sources share.
/// Shape   points 0..steps; one outside is answered by the same formula
/// State   none of its own; the grid keeps the frequencies that a sweep has asked for
class DiscreteFrequencyResponseSource : public FrequencyResponseSource {
public:
    /// The grid: lowFrequency + i * step, or lowFrequency * exp(i * step).
    /// Range   steps from 1; a logarithmic grid wants frequencies above 0
    /// State   the frequencies from point 0 to as far as they have been asked for in order, so
    ///         that a second sweep computes nothing; forgotten when a property changes
    class Mapping final : public PropertyOwner {
    public:
        Mapping() { update(); }
        Mapping(const Mapping&) = delete;
        Mapping& operator=(const Mapping&) = delete;

        /// In Hz. [ui]
        float getFrequency(int index);
        /// The nearest point, halves away from 0, whether on the grid or beyond it. [ui]
        int getIndex(float hz) const;
        /// Never less than there are points.
        std::size_t getTableSize() const { return frequencies.size(); }

        void propertyChanged(AbstractProperty* property) override;

        Property<bool> logarithmic{false, this};
        Property<float> highFrequency{20000.0f, this};
        LimitedProperty<int> steps{255, 1, 65535, this};
        Property<float> lowFrequency{20.0f, this};
        /// Fired behind every change of a property; the argument is the mapping.
        NotifyEvent changed;

    private:
        void update();

        float step = 0.0f;
        std::size_t frequencyCount = 0;  // valid ones, from the first
        std::vector<float> frequencies;
    };

    explicit DiscreteFrequencyResponseSource(Mapping* mapping) : mapping(mapping) {}

    /// At the grid point nearest to the frequency. [ui]
    Response getResponse(float hz) override { return getResponseAt(mapping->getIndex(hz)); }
    /// At a grid point. This is the one that derived classes give. [ui]
    virtual Response getResponseAt(int /*index*/) { return 1.0f; }
    /// At `count` points from `first` on. [ui]
    virtual void getResponses(int first, Response* out, int count);
    /// re^2 + im^2. [ui]
    virtual float getPower(int index) { return std::norm(getResponseAt(index)); }
    virtual void getPowers(int first, float* out, int count);

    Mapping* getMapping() const { return mapping; }

private:
    Mapping* mapping;  // not owned
};

}  // namespace cinder
