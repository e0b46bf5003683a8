#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "analysis/RealtimeSources.h"
#include "analysis/spectrum/FourierPlan.h"
#include "analysis/spectrum/FourierTransform.h"
#include "core/IntervalTimer.h"
#include "core/Property.h"
#include "wave/BasicBlock.h"

namespace cinder {

/// Spectra of audio sources, computed when a reader asks: N samples every N / 4, windowed.
///
///     value[k] = 2 / sum(w) |sum w[n] x[n] exp(-2 pi i k n / N)|, the largest of the channels and
///                of all hops since the last look
///
/// so a sine of amplitude a reads a at its bin, and a constant twice itself at bin 0.
///
/// Shape   two channels a measurement; of a source with more, the first two. All sources move on
///         together, in frames of one size; by as many frames as the one with the fewest has
/// Range   N a power of two from 4 to 2^20
/// State   the last samples, as many as the N of the construction; what has not filled a hop waits
///         for the next look. A sample that is not a number counts as 0. When no audio came for
///         the silence time-out, the past is forgotten: old audio is not joined to new
/// Errors  none; nothing moves while a measurement has no source
class RealTimeFrequencyAnalyzer {
public:
    using Transform = FourierTransform;
    class SpectrumMeasurement;

    static constexpr int defaultSize = 2048;

    /// Without a timer no time passes, as when audio comes from a file: all of it belongs together.
    explicit RealTimeFrequencyAnalyzer(
        int size = defaultSize, std::unique_ptr<IntervalTimer> timer = IntervalTimer::create());
    ~RealTimeFrequencyAnalyzer();
    RealTimeFrequencyAnalyzer(const RealTimeFrequencyAnalyzer&) = delete;
    RealTimeFrequencyAnalyzer& operator=(const RealTimeFrequencyAnalyzer&) = delete;

    /// Owned by the analyzer, which has one from the start. All must be there before the first
    /// look. [ui]
    SpectrumMeasurement* createMeasurement();
    SpectrumMeasurement* getMeasurement(int index = 0) const;

    /// After so many milliseconds without audio a display may call it silence.
    static std::uint32_t getSilenceTimeout(int analysisSize);

    /// The analysis size, used as the next power of two; never above that of the construction,
    /// which fixes the ring. [ui]
    LimitedProperty<int> fftSize;

private:
    /// How far the frames of this look have been read.
    struct Intake {
        int frameSize = 0;
        int frameCount = 0;
        int frame = 0;
        int offset = 0;
    };

    static constexpr int channelsPerMeasurement = 2;

    void lock();
    void unlock() { --lockCount; }
    void look();
    void preparePlan();
    Intake openIntake() const;
    void noteArrival();
    void analyse(Intake intake);
    bool fillHop(Intake& intake);
    void copyRun(const Intake& intake, int count);
    void analyseHop(bool isFirst);
    void transformSlot(std::size_t slot);
    static void storeMagnitudes(const FourierPlan& plan, const float* spectrum, float* values,
                                bool isFirst);

    const int ringSize;
    FourierPlan plan;
    std::vector<std::unique_ptr<Transform>> transforms;             // slot by slot
    std::vector<std::unique_ptr<wave::BasicBlock<float>>> history;  // rings, slot by slot
    bool historyFilled = false;                                     // the ring has been round once
    int lockCount = 0;
    std::vector<std::unique_ptr<SpectrumMeasurement>> measurements;
    int position = 0;  // in the rings
    std::unique_ptr<IntervalTimer> timer;
};

/// The spectrum of one source. The first lock of any measurement of an analyzer computes all of
/// them; the values stay until the next look.
class RealTimeFrequencyAnalyzer::SpectrumMeasurement final : public SpectrumSource {
public:
    explicit SpectrumMeasurement(RealTimeFrequencyAnalyzer* analyzer);

    /// Not owned; null stops the analyzer. [ui]
    void setSource(AudioSource* newSource) { source = newSource; }

    void lock() override { analyzer->lock(); }
    void unlock() override { analyzer->unlock(); }
    const float* getValues() const override { return values.data(); }
    std::int32_t getSize() const override { return values.size(); }
    std::int32_t getFrameId() const override { return frameId; }

private:
    friend class RealTimeFrequencyAnalyzer;

    RealTimeFrequencyAnalyzer* analyzer;
    AudioSource* source = nullptr;
    wave::BasicBlock<float> values;
    std::int32_t frameId = 0;
};

}  // namespace cinder
