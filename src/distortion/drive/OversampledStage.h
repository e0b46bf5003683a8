#pragma once

#include <optional>

#include "dsp/sr/IIRDecimator.h"
#include "dsp/sr/IIRInterpolator.h"
#include "wave/Producer.h"

namespace cinder {

/// A stage whose curve runs at a multiple of the rate: out = leave(down(shape(up(enter(in))))).
/// At factor 1, or without a converter style, out = leave(shape(enter(in))).
///
/// Shape   one channel. The stages of two channels that are partners and linked go through the
///         converters together, which costs what one costs: the one pulled first in a cycle pulls
///         the other's input as well, and the other's output is ready when it is pulled. At factor
///         1 there is nothing to share, and each runs by itself. Silence is handed on once the
///         converters have rung out, if the curve leaves it at 0
/// State   that of the converters; linked or not, the bits are the same. One whose partner alone is
///         pulled goes on through the blocks nobody pulls it for
/// Errors  none
class OversampledStage : public wave::Filter {
public:
    /// The style, if any, has to live as long as the stage.
    OversampledStage(wave::Environment* environment, sr::IIRConverterStyle* converterStyle);
    ~OversampledStage() override;

    void reset() noexcept CINDER_REALTIME override;  ///< [audio]
    /// The next block's first sample is taken for all of the past, whatever there was. [audio]
    void settleOnNext() noexcept CINDER_REALTIME { startsFromFirst = true; }

    /// Makes the two each other's partner, and sets their former ones free; null for none.
    void setPartner(OversampledStage* newPartner);
    OversampledStage* getPartner() const { return partner; }
    /// Both sides. Without a partner nothing happens. [audio]
    void link() noexcept CINDER_REALTIME { setLink(true); }
    void unlink() noexcept CINDER_REALTIME { setLink(false); }
    bool isLinked() const { return linked; }

protected:
    /// The next block's first sample is taken for all of the past, since what the converters hold
    /// is not of the kind that comes next. [audio]
    void startFromFirst() noexcept CINDER_REALTIME { startsFromFirst = hasPast; }

    void process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out, int numSamples,
                 unsigned flags) noexcept CINDER_REALTIME final;

    /// The way in, at the base rate.
    virtual void enter(const float* in, float* out, int numSamples) noexcept CINDER_REALTIME = 0;
    /// The curve, in place, at the raised rate.
    virtual void shape(float* samples, int count) noexcept CINDER_REALTIME = 0;
    /// The way out, in place, at the base rate.
    virtual void leave(float* samples, int numSamples) noexcept CINDER_REALTIME = 0;

private:
    struct Converters {
        explicit Converters(sr::IIRConverterStyle* style);

        sr::IIRDecimator decimator;
        sr::IIRInterpolator interpolator;
        wave::BasicBlock<float> oversampledBlock;
    };

    void setLink(bool isLinked) noexcept CINDER_REALTIME;
    bool runsAsPair() const noexcept CINDER_REALTIME;
    bool restsInSilence(int numSamples) noexcept CINDER_REALTIME;
    void rest() noexcept CINDER_REALTIME;
    void settle(float first) noexcept CINDER_REALTIME;

    sr::IIRConverterStyle* converterStyle;  // not owned, may be null
    OversampledStage* partner = nullptr;    // not owned
    std::optional<Converters> converters;
    bool linked = false;
    bool hasPast = false;  // since the last reset
    bool startsFromFirst = false;
};

}  // namespace cinder
