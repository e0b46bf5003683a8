#pragma once

#include "wave/AlignedBuffer.h"
#include "wave/DynamicMaxBlockSizeListener.h"

namespace cinder::wave {

class Environment;

/// One block of samples of a signal.
/// Shape   as many samples as its environment's maximum block size, or a fixed number where it
///         stands on its own (oversampled scratch blocks, delay lines)
template <typename T>
class BasicBlock : public DynamicMaxBlockSizeListener, public AlignedBuffer<T> {
public:
    explicit BasicBlock(Environment* environment);
    /// A block of its own size, which takes part in no environment.
    explicit BasicBlock(std::int32_t size) : AlignedBuffer<T>(size), environment(nullptr) {}

    void maxBlockSizeChanged() override;
    virtual ~BasicBlock();

protected:
    Environment* environment;
};

extern template class BasicBlock<float>;
extern template class BasicBlock<double>;

/// A block that holds one constant.
class ConstValueBlock final : public BasicBlock<float> {
public:
    ConstValueBlock(Environment* environment, float value);

    void maxBlockSizeChanged() override;

private:
    float value;
};

}  // namespace cinder::wave
