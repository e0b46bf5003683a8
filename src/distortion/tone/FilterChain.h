#pragma once

#include <memory>
#include <vector>

#include "distortion/tone/FilterRow.h"
#include "dsp/filters/BiquadKernels.h"
#include "dsp/filters/EQFilter.h"

namespace cinder {

/// A row of equalisers of which the first few are in use, one behind the other.
/// Shape   one channel; `capacity` filters are there from the start, and what goes beyond them is
///         left out. With none in use the output is the input itself. Where two chains are linked
///         the sections of all their filters run in one pass, unless one of them fades or restarts;
///         as long as nothing happens to any of them none is looked at
/// State   that of the filters; those out of use keep theirs, and are reset when they come back.
///         The bits are those of filters that pull one another
class FilterChain final : public wave::Source, private wave::Rest {
public:
    FilterChain(wave::Environment* environment, wave::Producer* input, int capacity);
    ~FilterChain() override;

    /// Takes all filters out of use. [audio]
    void clear() noexcept CINDER_REALTIME {
        end();
        count = 0;
    }
    /// Puts one more to use, with settings that jump. [audio]
    void addFilter(const FilterRow& row) noexcept CINDER_REALTIME;
    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    /// Lets the filters that stand in the same place in both chains run as pairs with one set of
    /// coefficients. Both chains are filled alike from then on.
    void link(FilterChain& other);

    int getCount() const { return count; }
    int getCapacity() const { return static_cast<int>(filters.size()); }
    EQFilter& operator[](int index) { return *filters[static_cast<std::size_t>(index)]; }

private:
    /// A filter of the row whose coefficients change within the block. It has one section.
    struct Mover {
        EQFilter* filter;
        std::size_t step;
    };

    void ended(std::uint64_t position) noexcept CINDER_REALTIME override;
    void tryToRest(int numSamples) noexcept CINDER_REALTIME;
    bool restsOn(int numSamples) noexcept CINDER_REALTIME;
    bool collectSteps(int numSamples) noexcept CINDER_REALTIME;
    void layOutMovers(int numSamples) noexcept CINDER_REALTIME;
    bool restsInSilence() const noexcept CINDER_REALTIME;
    bool renderAsRow(int numSamples) noexcept CINDER_REALTIME;
    void runRow(int numSamples) noexcept CINDER_REALTIME;
    void handOn(wave::BasicBlock<float>* block, bool isConstant) noexcept CINDER_REALTIME;

    wave::Producer* input;          // not owned
    FilterChain* linked = nullptr;  // likewise
    std::vector<std::unique_ptr<EQFilter>> filters;
    std::vector<BiquadStep> steps;  // work space
    std::size_t numSteps = 0;
    std::vector<Mover> movers;  // likewise
    std::size_t numMovers = 0;
    std::vector<EQFilter*> foreignGains;  // likewise: filters that others move
    std::size_t numForeignGains = 0;
    bool leads = false;  // while both chains rest: this one runs the row
    std::size_t setsPerMover;
    std::vector<BiquadCoefficients> laidOut;  // for each mover, those of its step
    int count = 0;
};

}  // namespace cinder
