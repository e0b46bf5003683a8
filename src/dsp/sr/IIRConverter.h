#pragma once

#include <span>

#include "dsp/sr/ConverterBase.h"
#include "dsp/sr/GroupConversion.h"
#include "dsp/sr/IIRConverterStyle.h"

namespace cinder::sr {

/// What both directions have in common: the style and the state of the filters.
/// State   for each pair of sections x1 and y1 of A, then of B, in the order in which the block
///         runs through the pairs. A change of factor leaves the numbers where they are, and the
///         stages then in force go on from them; cleared by reset()
class IIRConverter : public ConverterBase {
public:
    explicit IIRConverter(IIRConverterStyle* style);

    void reset() noexcept CINDER_REALTIME override;
    /// Goes on as if `value` had come in for ever. [audio]
    virtual void settle(float value) noexcept CINDER_REALTIME;

    /// Whether silence in is silence out: nothing of the past is above -600 dBFS. [audio]
    virtual bool isAtRest() const noexcept CINDER_REALTIME;

    IIRConverterStyle* getStyle() const { return style; }

protected:
    static bool isNothing(float value) noexcept CINDER_REALTIME {
        return value >= -1e-30f && value <= 1e-30f;
    }

    /// A block's way through a converter of one direction.
    template <class Converter>
    struct JobOf {
        Converter* converter;
        const float* input;
        float* output;
    };

    template <class Converter>
    static bool processJobs(std::span<const JobOf<Converter>> jobs, int count,
                            ConvertChannels* convert) noexcept CINDER_REALTIME {
        if (jobs.empty()) return false;
        const auto stages = jobs.front().converter->style->getStages();
        if (stages.empty()) return false;
        Channel channels[maxGroup];
        std::size_t pending = 0;
        for (const auto& job : jobs) {
            channels[pending++] = job.converter->channel(job.input, job.output);
            if (pending < maxGroup && &job != &jobs.back()) continue;
            convert(stages, {channels, pending}, count);
            pending = 0;
        }
        return true;
    }

    IIRConverterStyle* style;  // not owned
    wave::BasicBlock<float> state;
};

}  // namespace cinder::sr
