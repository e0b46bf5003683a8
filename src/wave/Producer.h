#pragma once

#include <cstdint>
#include <memory>

#include "core/Realtime.h"
#include "wave/BasicBlock.h"
#include "wave/Environment.h"

namespace cinder::wave {

/// Whatever lives on an environment.
class Component {
public:
    explicit Component(Environment* environment) : environment(environment) {}
    Environment* getEnvironment() const { return environment; }

protected:
    ~Component() = default;
    Environment* environment;
};

class Producer;

/// Whatever takes a signal from another object. The input is wired before audio runs, not owned.
class Consumer {
public:
    void setInput(Producer* producer) { input = producer; }
    Producer* getInput() const { return input; }

protected:
    ~Consumer() = default;
    Producer* input = nullptr;
};

/// Anything with an output block.
///
/// A consumer pulls. The first pull of a cycle renders, every other one gets the same block, so
/// fan-out costs nothing. `render` may put any block in place of its own as `output` (its input, or
/// silence), so a consumer reads what the pull answers and assumes nothing about it.
class Producer : public Component {
public:
    /// Status bit: every sample of the output equals the first. With a first sample of 0 this is
    /// the graph's one notion of silence.
    static constexpr std::uint32_t constantBlock = 1;

    explicit Producer(Environment* environment, bool noOwnBlock = false);
    virtual ~Producer();
    Producer(const Producer&) = delete;
    Producer& operator=(const Producer&) = delete;

    virtual void produce(BasicBlock<float>* block, int numSamples,
                         unsigned flags) noexcept CINDER_REALTIME {
        render(block, numSamples, flags);
    }
    /// Renders one block; called at most once a cycle by way of `pull`, besides the visits of a
    /// sink. [audio]
    virtual void render(BasicBlock<float>* block, int numSamples,
                        unsigned flags) noexcept CINDER_REALTIME = 0;
    /// Clears the state that past samples have left. [audio]
    virtual void reset() noexcept CINDER_REALTIME {}

    /// The output of the present cycle. [audio]
    BasicBlock<float>* pull(int numSamples) noexcept CINDER_REALTIME {
        if (lastBlockId != environment->getBlockId()) {
            output = ownBlock.get();
            render(ownBlock.get(), numSamples, 0);
            lastBlockId = environment->getBlockId();
        }
        return output;
    }

    /// Makes this a sink, which runs in every cycle. Priority 0: first, and behind the pulls
    /// whether pulled or not. 1 and above: only if nobody has pulled it.
    void setRenderPriority(unsigned priority) noexcept CINDER_REALTIME;
    /// An inactive producer is no sink and keeps its state over a reset; one that comes back starts
    /// clean. [audio]
    void setActive(bool nowActive) noexcept CINDER_REALTIME;
    void resetIfActive() noexcept CINDER_REALTIME {
        if (active) reset();
    }
    /// The environment's part of a cycle for a sink. [audio]
    void visitAsSink(int numSamples) noexcept CINDER_REALTIME;

    BasicBlock<float>* getOutput() const { return output; }
    std::uint32_t getStatus() const { return status; }
    bool isConstant() const { return (status & constantBlock) != 0; }
    /// Whether the output is known to be all 0: by what the status says, or as the block of
    /// silence, which keeps its name where a forwarder says nothing.
    bool isSilent() const noexcept CINDER_REALTIME {
        return output == environment->getZeroBlock() || (isConstant() && (*output)[0] == 0.0f);
    }
    unsigned getRenderPriority() const { return renderPriority; }
    bool isActive() const { return active; }
    std::uint32_t getLastBlockId() const { return lastBlockId; }

protected:
    /// For constructors of producers with state.
    void makeResettable();
    /// What `render` ends with when it hands on a block that is not its own.
    void passOn(BasicBlock<float>* block) noexcept CINDER_REALTIME {
        output = block;
        lastBlockId = environment->getBlockId();
    }
    void setConstant(bool isConstant) noexcept CINDER_REALTIME {
        status = isConstant ? status | constantBlock : status & ~constantBlock;
    }

    std::unique_ptr<BasicBlock<float>> ownBlock;  // null where render brings its own
    std::uint32_t status = 0;

private:
    friend class MultiProducer;

    std::uint32_t renderPriority = 0;
    bool active = true;
    bool isSink = false;
    bool isResettable = false;
    std::uint32_t lastBlockId = 0;
    BasicBlock<float>* output;  // not owned
};

/// A producer without an audio input.
class Source : public Producer {
public:
    using Producer::Producer;
};

/// A producer with one input.
class FilterBase : public Producer, public Consumer {
public:
    using Producer::Producer;
};

/// A filter that pulls its input, then processes it.
class Filter : public FilterBase {
public:
    using FilterBase::FilterBase;

    void render(BasicBlock<float>* block, int numSamples,
                unsigned flags) noexcept CINDER_REALTIME override {
        BasicBlock<float>* const in = input->pull(numSamples);
        process(in, block, numSamples, flags);
    }

protected:
    /// A stage that lets its input through ends with `passOn(in)` and copies nothing.
    virtual void process(BasicBlock<float>* in, BasicBlock<float>* out, int numSamples,
                         unsigned flags) noexcept CINDER_REALTIME = 0;
};

}  // namespace cinder::wave
