#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "distortion/drive/BitCrusher.h"
#include "distortion/drive/FunctionTableClipper.h"
#include "distortion/drive/NoiseFilter.h"
#include "distortion/drive/Smudger.h"
#include "distortion/tone/EQStage.h"
#include "dsp/stages/Router.h"

namespace cinder {

/// Which of the nonlinear stages the signal goes through, as the selections of the routers.
struct DistortionPath {
    int smudge, crush, clip;
};
namespace distortion_paths {
inline constexpr DistortionPath clips = {0, 0, 1};
inline constexpr DistortionPath crushes = {0, 1, 1};
inline constexpr DistortionPath smudges = {1, 0, 0};
}  // namespace distortion_paths

/// What a style sets up, besides the curve.
struct DistortionSetup {
    float noiseDb;  // where the input is loud
    DistortionPath path;
    std::span<const FilterRow> pre, post;
};
inline constexpr DistortionSetup neutralSetup = {-110.0f, distortion_paths::clips, {}, {}};

/// The whole distortion of one band in one channel. Each switch is a Router between the signal and
/// the signal by way of a stage:
///
///   in - preEq -+-----------+-+-------------+-+-------------------------+- postEq - toneEq - out
///               +- smudger -+ +- bitCrusher + +- noiseFilter - clipper -+
///
/// Shape   one channel, or two that are linked and share their filters' coefficients and the work
///         of their converters. What a style has no use for costs nothing
/// Range   drive 0..1; tone gains -30..30 dB
/// State   that of the stages. All of them are there from the start, and a change of style installs
///         numbers: the switches fade in 20 ms, filters and curve change at once. A stage that
///         comes back into the path after a while starts anew
class DistortionProcessor final : public wave::FilterBase {
public:
    static constexpr int numTones = EQStage::maxFilters;

    /// Noise that can be foreseen for a seed. Both styles have to live as long as this.
    DistortionProcessor(sr::IIRConverterStyle* converterStyle,
                        const Capacitor::Style* capacitorStyle,
                        std::optional<std::uint32_t> noiseSeed = {});

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    void setClipperStyle(const FunctionTableClipper::Style* style) noexcept CINDER_REALTIME {
        clipper.setStyle(style);
    }
    /// Takes effect with the next block. [audio]
    void setUp(const DistortionSetup& setup) noexcept CINDER_REALTIME;
    /// [audio]
    void resetToNeutral() noexcept CINDER_REALTIME { setUp(neutralSetup); }

    /// Forgets what the converters hold, which a new factor has no use for. [audio]
    void resetConverters() noexcept CINDER_REALTIME { clipper.settleOnNext(); }

    /// Lets this channel and another run as a pair; both have the same style from then on, and the
    /// same tone.
    void link(DistortionProcessor& other);

    /// Bass, middle, treble and presence, in dB.
    wave::FloatParameterBus& toneGain(int index) { return toneEq.gainBus(index); }

    wave::FloatParameterBus drive;

private:
    void startAnew(wave::Producer& stage) noexcept CINDER_REALTIME;

    BitCrusher bitCrusher;
    FunctionTableClipper clipper;
    wave::FloatParameterBusForwarder driveForwarder;
    EQStage preEq, postEq;
    wave::InputForwarder inputForwarder;
    NoiseFilter noiseFilter;
    Router smudgeRouter, crushRouter, clipRouter;
    Smudger smudger;
    EQStage toneEq;
};

}  // namespace cinder
