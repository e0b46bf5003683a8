#include "wave/BasicBlock.h"

#include <algorithm>

#include "wave/Environment.h"

namespace cinder::wave {

template <typename T>
BasicBlock<T>::BasicBlock(Environment* environment)
    : AlignedBuffer<T>(environment->getMaxBlockSize()), environment(environment) {
    environment->addDynamicMaxBlockSizeListener(this);
}

template <typename T>
void BasicBlock<T>::maxBlockSizeChanged() {
    this->resize(environment->getMaxBlockSize());
}

template <typename T>
BasicBlock<T>::~BasicBlock() {
    if (environment) environment->removeDynamicMaxBlockSizeListener(this);
}

template class BasicBlock<float>;
template class BasicBlock<double>;

ConstValueBlock::ConstValueBlock(Environment* environment, float value)
    : BasicBlock<float>(environment), value(value) {
    std::fill_n(data(), size(), value);
}

void ConstValueBlock::maxBlockSizeChanged() {
    BasicBlock<float>::maxBlockSizeChanged();
    std::fill_n(data(), size(), value);
}

}  // namespace cinder::wave
