#pragma once

#include <memory>
#include <vector>

#include "core/Property.h"
#include "wave/FloatParameterBus.h"

namespace cinder {

/// Combines any number of inputs, each with a gain of its own. With c an input times its gain and y
/// the running result, the first connected input sets y and every further one combines with it.
/// Shape   one channel; an input with a constant gain of 0 is not pulled in a plain sum
/// Range   gains in the limits that the mixer was given, 0..1 at first
/// State   that of the gains; the last ratio for `RatioHeld`
class Mixer final : public wave::Source, public PropertyOwner {
public:
    enum class Operation : std::int32_t {
        Sum = 0,           ///< c, then y + c
        Difference = 1,    ///< c, then y - c
        Peak = 2,          ///< |input| * gain, then the larger of y and |c|
        Product = 3,       ///< c, then y * c
        RatioLimited = 4,  ///< |input| * gain, then y / |c| in 0..1, and 0 if c is 0
        RatioFloored = 5,  ///< |input| * gain, then y / |c|, both at least 1e-9
        RatioHeld = 6,     ///< |input| * gain, then y / |c|, the last block's end where |c| <= 1e-9
        Maximum = 7,       ///< c, then the larger
        Minimum = 8,       ///< c, then the smaller
    };

    struct Input {
        Input(wave::Environment* environment, float minimum, float maximum)
            : gain(environment, 1.0f, minimum, maximum) {}
        wave::FloatParameterBus gain;
        wave::Producer* input = nullptr;  // not owned
    };

    Mixer(wave::Environment* environment, int numInputs);

    Input& input(int index) { return *inputs[static_cast<std::size_t>(index)]; }
    void connect(int index, wave::Producer* producer);
    /// The limits of the gains that are added from now on.
    void setGainLimits(float minimum, float maximum);

    void render(wave::BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override;
    void propertyChanged(AbstractProperty* property) override;

    Property<int> inputCount;
    Property<Operation> operation{Operation::Sum, this};

private:
    void resizeInputs();
    void updateFastSum();
    void renderFastSum(float* out, int numSamples) noexcept CINDER_REALTIME;
    void renderGeneral(float* out, int numSamples) noexcept CINDER_REALTIME;
    void combine(const float* in, const float* gain, float* out, int numSamples,
                 bool isFirst) noexcept CINDER_REALTIME;

    static constexpr int mostFastInputs = 16;

    std::vector<std::unique_ptr<Input>> inputs;
    float gainMaximum = 1.0f;
    float gainMinimum = 0.0f;
    float lastRatio = 1.0f;
    bool fastSum = false;
};

}  // namespace cinder
