#pragma once

#include <algorithm>
#include <cstdint>

#include "dsp/filters/BiquadProcessor.h"
#include "wave/Rest.h"

namespace cinder {

/// A filter of second-order sections that can be switched off and on, and run in pairs. A derived
/// class says what the coefficients are, and hands on the property changes that are not its own.
/// Shape   one channel. Switched off, or in silence once it has rung out, it hands its input on and
///         costs nothing. The filters of two channels that are partners and linked run as two
///         lanes: the one pulled first in a cycle pulls the other's input as well, and the other's
///         output is ready when it is pulled
/// State   that of its processor; a filter that has missed a block restarts softly
class BiquadFilter : public wave::Filter, public PropertyOwner {
public:
    enum class LinkMode : std::int32_t {
        None = 0,
        /// The one that is pulled first computes the coefficients for both. The pair comes apart
        /// while only one of them is enabled, and finds together again when both are all wet.
        Shared = 1,
        /// Each has coefficients of its own.
        Separate = 2,
    };

    /// Controls that move are looked at this often at least, and every scheduleStep in fast sweeps.
    static constexpr int fineStep = 32;

    BiquadFilter(wave::Environment* environment, int maxSections,
                 BiquadProcessor::Carried carried = BiquadProcessor::Carried::Samples);
    ~BiquadFilter() override;

    /// Clears the state; ends a fade. [audio]
    void reset() noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    /// Makes the two each other's partner, and sets their former ones free; null for none.
    void setPartner(BiquadFilter* newPartner);
    BiquadFilter* getPartner() const { return partner; }
    /// Both sides. Without a partner nothing happens. [audio]
    virtual void link(LinkMode mode) noexcept CINDER_REALTIME;
    virtual void unlink() noexcept CINDER_REALTIME;
    LinkMode getLinkMode() const { return linkMode; }

    Property<bool> enabled{true, this};

    // For a row of filters that runs the sections of all of them in one pass.

    /// The rest of a row that leaves this filter alone, ended by whatever happens to it. Not owned.
    void setRest(wave::Rest* newRest) { rest = newRest; }
    /// This filter and its partner, sections and all, have gone through everything up to
    /// `position` by way of the row. [audio]
    void passedAsPair(std::uint64_t position) noexcept CINDER_REALTIME {
        blockEnd = partner->blockEnd = position;
    }
    /// This filter and its partner have gone through a block by way of the row: `isDry` if their
    /// inputs were handed on. [audio]
    void passBlockAsPair(bool isDry, int numSamples) noexcept CINDER_REALTIME;
    /// [audio]
    BiquadState& stateOf(int section) { return processor.stateOf(section); }

protected:
    /// Linked with a partner, both all wet, in time, and not rendered in this cycle yet. [audio]
    bool standsAsPair() const noexcept CINDER_REALTIME;
    /// Neither side's sections have to start anew. [audio]
    bool runsOn() const noexcept CINDER_REALTIME;
    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME override;
    /// Sets the number of sections and schedules coefficients for the next `numSamples`.
    virtual void computeCoefficients(int numSamples,
                                     BiquadProcessor& target) noexcept CINDER_REALTIME = 0;

    /// For a filter whose controls move within the block. Every few samples, if anything moves that
    /// is looked at so often, asks `isDue(position, finely)` whether the coefficients in force no
    /// longer do, by a coarse measure, or at every 32nd sample by a fine one; then calls
    /// `design(position)`. In between calls `schedule(count)` for the samples that the coefficients
    /// in force are for.
    template <class IsDue, class Design, class AppendRun>
    static void followControls(int numSamples, bool canMoveCoarsely, IsDue isDue, Design design,
                               AppendRun schedule) noexcept CINDER_REALTIME {
        const int step = canMoveCoarsely ? BiquadProcessor::scheduleStep : fineStep;
        int pending = 0;
        for (int i = 0; i < numSamples; i += step) {
            if (isDue(i, i % fineStep == 0)) {
                if (pending > 0) schedule(pending);
                pending = 0;
                design(i);
            }
            pending += std::min(step, numSamples - i);
        }
        if (pending > 0) schedule(pending);
    }

    BiquadProcessor processor;

private:
    void endRest() noexcept CINDER_REALTIME {
        if (rest) rest->end();
    }
    void reviewLink() noexcept CINDER_REALTIME;
    void setLink(LinkMode mode) noexcept CINDER_REALTIME;
    void enterBlock(int numSamples) noexcept CINDER_REALTIME;
    void catchUp() noexcept CINDER_REALTIME;
    bool wasRenderedInThisCycle() const noexcept CINDER_REALTIME;
    bool runsAsPair(int numSamples) noexcept CINDER_REALTIME;
    void processPair(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                     int numSamples) noexcept CINDER_REALTIME;
    bool restsWithPartner(int numSamples) noexcept CINDER_REALTIME;
    void finish(bool wasFiltered, wave::BasicBlock<float>* in,
                wave::BasicBlock<float>* out) noexcept CINDER_REALTIME;

    BiquadFilter* partner = nullptr;  // not owned
    wave::Rest* rest = nullptr;       // likewise
    LinkMode linkMode = LinkMode::None;
    bool rejoins = false;        // came apart by itself, and links again by itself
    std::uint64_t blockEnd = 0;  // position behind the last block
};

}  // namespace cinder
