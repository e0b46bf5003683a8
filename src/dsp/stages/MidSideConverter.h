#pragma once

#include "core/Property.h"
#include "wave/MultiProducer.h"

namespace cinder {

/// Left and right to mid and side, or back. Encoded and decoded again a signal is itself.
/// Shape   two inputs a and b, two outputs
/// State   none
class MidSideConverter final : public wave::MultiProducer {
public:
    enum class Conversion : std::int32_t {
        None = 0,    ///< a, b: the blocks are handed on
        Encode = 1,  ///< (a + b) / 2, (b - a) / 2
        Decode = 2,  ///< a - b, a + b
    };

    explicit MidSideConverter(wave::Environment* environment) : MultiProducer(environment) {
        createOutputs(2);
    }

    void setInput(int index, wave::Producer* producer) { inputs[index] = producer; }

    void render(wave::BasicBlock<float>** blocks, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;

    Property<Conversion> conversion{Conversion::None};

private:
    wave::Producer* inputs[2] = {};  // not owned
};

}  // namespace cinder
