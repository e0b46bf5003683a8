#pragma once

#include "wave/Producer.h"

namespace cinder::wave {

/// Passes its input's block on, without a copy. The status stays its own.
class Forwarder final : public Filter {
public:
    explicit Forwarder(Environment* environment) : Filter(environment, true) {}

protected:
    void process(BasicBlock<float>* in, BasicBlock<float>*, int,
                 unsigned) noexcept CINDER_REALTIME override {
        passOn(in);
    }
};

/// Offers the input of another consumer as a producer, status included.
class InputForwarder final : public Producer {
public:
    InputForwarder(Environment* environment, Consumer* consumer)
        : Producer(environment, true), consumer(consumer) {}

    void render(BasicBlock<float>*, int numSamples, unsigned) noexcept CINDER_REALTIME override {
        Producer* const input = consumer->getInput();
        passOn(input->pull(numSamples));
        status = input->getStatus();
    }

private:
    Consumer* consumer;
};

}  // namespace cinder::wave
