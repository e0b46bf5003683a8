#pragma once

#include <memory>
#include <vector>

#include "wave/Producer.h"

namespace cinder::wave {

/// One render, several outputs. The first pull of any output renders all of them.
class MultiProducer : public Component {
public:
    class Output final : public Producer {
    public:
        explicit Output(MultiProducer* owner)
            : Producer(owner->getEnvironment(), true), owner(owner) {}

        void render(BasicBlock<float>* block, int numSamples,
                    unsigned flags) noexcept CINDER_REALTIME override;
        void reset() noexcept CINDER_REALTIME override { owner->reset(); }

    private:
        friend class MultiProducer;
        MultiProducer* owner;
    };

    explicit MultiProducer(Environment* environment) : Component(environment) {}
    virtual ~MultiProducer() = default;
    MultiProducer(const MultiProducer&) = delete;
    MultiProducer& operator=(const MultiProducer&) = delete;

    /// Fills the blocks it is given, or puts others in their places to hand them on. [audio]
    virtual void render(BasicBlock<float>** blocks, int numSamples,
                        unsigned flags) noexcept CINDER_REALTIME = 0;
    virtual void reset() noexcept CINDER_REALTIME {}

    int getNumOutputs() const { return static_cast<int>(outputs.size()); }
    Output* getOutput(int index) const { return outputs[static_cast<std::size_t>(index)].get(); }

protected:
    /// From the constructor of the derived class.
    void createOutputs(int numOutputs);
    void setOutputConstant(int index, bool isConstant) noexcept CINDER_REALTIME {
        outputs[static_cast<std::size_t>(index)]->setConstant(isConstant);
    }
    /// The first output stands in the environment's list for all of them.
    void makeResettable() { outputs.front()->makeResettable(); }

private:
    void renderOutputs(int numSamples, unsigned flags) noexcept CINDER_REALTIME;

    std::vector<std::unique_ptr<BasicBlock<float>>> blocks;
    std::vector<std::unique_ptr<Output>> outputs;
    std::vector<BasicBlock<float>*> workBlocks;
};

}  // namespace cinder::wave
