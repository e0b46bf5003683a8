#include "analysis/spectrum/RealTimeFrequencyAnalyzer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "core/simd/Sanitise.h"

namespace cinder {

RealTimeFrequencyAnalyzer::RealTimeFrequencyAnalyzer(int size, std::unique_ptr<IntervalTimer> timer)
    : fftSize(size, FourierPlan::smallestSize, FourierPlan::sizeFor(size)),
      ringSize(fftSize.getUpperLimit()),
      plan(ringSize),
      timer(std::move(timer)) {
    createMeasurement();
}

RealTimeFrequencyAnalyzer::~RealTimeFrequencyAnalyzer() = default;

RealTimeFrequencyAnalyzer::SpectrumMeasurement* RealTimeFrequencyAnalyzer::createMeasurement() {
    measurements.push_back(std::make_unique<SpectrumMeasurement>(this));
    for (int i = 0; i < channelsPerMeasurement; ++i) {
        transforms.push_back(std::make_unique<Transform>(&plan));
        history.push_back(std::make_unique<wave::BasicBlock<float>>(ringSize));
    }
    return measurements.back().get();
}

RealTimeFrequencyAnalyzer::SpectrumMeasurement* RealTimeFrequencyAnalyzer::getMeasurement(
    int index) const {
    return measurements[static_cast<std::size_t>(index)].get();
}

/// Three times as long as the ring of a display takes to fill at 44.1 kHz, half a second at most.
std::uint32_t RealTimeFrequencyAnalyzer::getSilenceTimeout(int analysisSize) {
    constexpr std::int64_t shortestRing = 8192, referenceRate = 44100;
    const std::int64_t ring = std::max<std::int64_t>(analysisSize, shortestRing);
    return static_cast<std::uint32_t>(
        std::clamp<std::int64_t>(ring * 1000 / referenceRate, 20, 500) * 3);
}

void RealTimeFrequencyAnalyzer::lock() {
    if (lockCount++ == 0) look();
}

void RealTimeFrequencyAnalyzer::look() {
    for (const auto& measurement : measurements)
        if (!measurement->source) return;
    for (const auto& measurement : measurements)
        measurement->source->lock();
    preparePlan();
    const Intake intake = openIntake();
    if (intake.frameCount > 0) {
        noteArrival();
        analyse(intake);
    }
    for (const auto& measurement : measurements)
        measurement->source->unlock();
}

void RealTimeFrequencyAnalyzer::preparePlan() {
    const int size = FourierPlan::sizeFor(fftSize);
    if (size == plan.getSize()) return;
    plan = FourierPlan(size);
    for (const auto& transform : transforms)
        transform->setPlan(&plan);
    for (const auto& measurement : measurements) {
        measurement->values.resize(size);
        std::fill_n(measurement->values.data(), size, 0.0f);
    }
}

RealTimeFrequencyAnalyzer::Intake RealTimeFrequencyAnalyzer::openIntake() const {
    const AudioSource& first = *measurements.front()->source;
    Intake intake{first.getFrameSize(), first.getFrameCount()};
    for (const auto& measurement : measurements) {
        const AudioSource& source = *measurement->source;
        const bool fits = intake.frameSize > 0 && source.getFrameSize() == intake.frameSize;
        intake.frameCount = fits ? std::min(intake.frameCount, int{source.getFrameCount()}) : 0;
    }
    return intake;
}

void RealTimeFrequencyAnalyzer::noteArrival() {
    if (!timer) return;
    if (timer->elapsed() > getSilenceTimeout(plan.getSize())) {
        historyFilled = false;
        position = 0;
    }
    timer->reset();
}

void RealTimeFrequencyAnalyzer::analyse(Intake intake) {
    for (bool isFirst = true; fillHop(intake); isFirst = false) {
        analyseHop(isFirst);
        if (position < ringSize) continue;
        historyFilled = true;
        position = 0;
    }
}

/// Copies audio up to the next multiple of a hop, or as much as there is. A hop divides the ring,
/// so no run goes round its end.
bool RealTimeFrequencyAnalyzer::fillHop(Intake& intake) {
    const int hop = plan.getSize() / 4;
    for (int need = hop - position % hop; need > 0;) {
        if (intake.frame == intake.frameCount) return false;
        const int count = std::min(need, intake.frameSize - intake.offset);
        copyRun(intake, count);
        position += count;
        need -= count;
        intake.offset += count;
        if (intake.offset < intake.frameSize) continue;
        intake.offset = 0;
        ++intake.frame;
    }
    return true;
}

void RealTimeFrequencyAnalyzer::copyRun(const Intake& intake, int count) {
    std::size_t slot = 0;
    for (const auto& measurement : measurements)
        for (int channel = 0; channel < channelsPerMeasurement; ++channel) {
            const AudioSource& source = *measurement->source;
            const float* const samples = channel < source.getChannelCount()
                                             ? source.getFrameData(intake.frame, channel)
                                             : nullptr;
            float* const ring = history[slot++]->data() + position;
            // One bad sample would blank every bin for as long as the ring holds it.
            if (samples)
                simd::sanitise(samples + intake.offset, ring, count);
            else
                std::fill_n(ring, count, 0.0f);
        }
}

void RealTimeFrequencyAnalyzer::analyseHop(bool isFirst) {
    std::size_t slot = 0;
    for (const auto& measurement : measurements) {
        measurement->frameId =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(measurement->frameId) + 1u);
        for (int channel = 0; channel < channelsPerMeasurement; ++channel, ++slot) {
            // A channel that the source hasn't got is silent, and can't raise a maximum.
            if (channel > 0 && channel >= measurement->source->getChannelCount()) continue;
            transformSlot(slot);
            storeMagnitudes(plan, transforms[slot]->getResult(), measurement->values.data(),
                            isFirst && channel == 0);
        }
    }
}

/// The last N samples in the order of time. Before the ring has been round once, what lies before
/// its start is silence.
void RealTimeFrequencyAnalyzer::transformSlot(std::size_t slot) {
    const int size = plan.getSize();
    const int wrapped = std::max(size - position, 0);
    const float* const ring = history[slot]->data();
    const float* const shape = plan.getWindow();
    float* const in = transforms[slot]->begin();
    for (int i = 0; i < wrapped; ++i)
        in[i] = historyFilled ? ring[ringSize - wrapped + i] * shape[i] : 0.0f;
    for (int i = wrapped; i < size; ++i)
        in[i] = ring[position - size + i] * shape[i];
    transforms[slot]->run(plan.getTotalUnits());
}

void RealTimeFrequencyAnalyzer::storeMagnitudes(const FourierPlan& plan, const float* spectrum,
                                                float* values, bool isFirst) {
    const int half = plan.getSize() / 2;
    const float scale = plan.getWindowScale();
    const float* const im = spectrum + half;
    const auto store = [&](int k, float magnitude) {
        values[k] = isFirst ? magnitude : std::max(values[k], magnitude);
    };
    store(0, std::abs(spectrum[0]) * scale);
    for (int k = 1; k < half; ++k)
        store(k, std::sqrt(spectrum[k] * spectrum[k] + im[k] * im[k]) * scale);
    store(half, std::abs(spectrum[half]) * scale);
}

RealTimeFrequencyAnalyzer::SpectrumMeasurement::SpectrumMeasurement(
    RealTimeFrequencyAnalyzer* analyzer)
    : analyzer(analyzer), values(analyzer->plan.getSize()) {}

}  // namespace cinder
