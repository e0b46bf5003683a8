#include "dsp/filters/crossover/MultiBand.h"

#include <algorithm>

namespace cinder {

namespace {

constexpr double fadeSeconds = 0.02;

using Response = CrossoverFilter::Response;

}  // namespace

MultiBand::Crossover::Split::Split(wave::Environment* environment)
    : branches{
          Branch{CrossoverFilter(environment, Response::LowPass), wave::Forwarder(environment)},
          Branch{CrossoverFilter(environment, Response::HighPass), wave::Forwarder(environment)}} {
    // A channel alone runs them as two lanes: they hear the same.
    auto& [low, high] = branches;
    low.filter.setPartner(&high.filter);
    low.filter.link(BiquadFilter::LinkMode::Separate);
}

MultiBand::Crossover::Crossover(wave::Environment* environment)
    : frequency(environment, 10.0f, 0.0f, 15.0f),
      sharedFrequency(environment, &frequency),
      splits{Split(environment), Split(environment)} {
    for (Split& split : splits)
        for (Branch& branch : split.branches) {
            branch.filter.frequency.setSource(&sharedFrequency);
            branch.output.setInput(&branch.filter);
        }
}

void MultiBand::Crossover::propertyChanged(AbstractProperty*) {
    for (Split& split : splits) {
        for (Branch& branch : split.branches)
            branch.filter.slope = slope;
        for (int i = 0; i < split.numAllPasses; ++i)
            split.allPasses[static_cast<std::size_t>(i)]->slope = slope;
    }
}

MultiBand::MultiBand(wave::Environment* environment, CrossoverMultiBandModel* model)
    : MultiProducer(environment), model(model), input(environment) {
    createOutputs(maxBands);
    for (auto& crossover : crossovers) {
        crossover = std::make_unique<Crossover>(environment);
        for (Crossover::Split& split : crossover->splits)
            for (Crossover::Branch& branch : split.branches)
                branch.filter.setInput(&input);
    }
    for (Tree& tree : trees)
        for (auto& allPass : tree.allPasses) {
            allPass = std::make_unique<CrossoverFilter>(environment, Response::AllPass);
            allPass->setInput(&input);
        }
    model->changed().addHandler(NotifyEvent::makeHandler(this, &MultiBand::modelChanged));
    modelChanged(model);
}

MultiBand::~MultiBand() {
    if (linked) linked->linked = nullptr;
    model->changed().removeHandler(*NotifyEvent::makeHandler(this, &MultiBand::modelChanged));
}

void MultiBand::link(MultiBand& other) {
    using LinkMode = BiquadFilter::LinkMode;
    linked = &other;
    other.linked = this;
    const auto pair = [](CrossoverFilter& a, CrossoverFilter& b) {
        a.setPartner(&b);
        a.link(LinkMode::Shared);
    };
    for (std::size_t t = 0; t < trees.size(); ++t) {
        for (std::size_t i = 0; i < crossovers.size(); ++i)
            for (std::size_t side : {0, 1})
                pair(crossovers[i]->splits[t].branches[side].filter,
                     other.crossovers[i]->splits[t].branches[side].filter);
        for (std::size_t i = 0; i < trees[t].allPasses.size(); ++i)
            pair(*trees[t].allPasses[i], *other.trees[t].allPasses[i]);
    }
    // From here on the trees of both take turns together.
    for (MultiBand* channel : {this, &other}) {
        channel->active = 0;
        channel->fadeLeft = 0;
        channel->wire(0);
    }
}

void MultiBand::modelChanged(NotifyEvent::Argument) {
    followBandCount();
    applyModel();
}

void MultiBand::applyModel() noexcept CINDER_REALTIME {
    for (int i = 0; i < model->bandCount - 1; ++i) {
        const Model::Crossover& from = model->getCrossover(i);
        getCrossover(i).frequency.assign(from.frequency);
        getCrossover(i).slope = rowOfSlope(from.slope).slope;
    }
}

/// Whether what comes next follows what has been rendered.
bool MultiBand::isContinuous() const noexcept CINDER_REALTIME {
    const std::uint64_t position = environment->getPosition();
    return blockEnd == position && position > environment->getResetPosition();
}

/// A linked channel does the same at the same time: its filters run when those of this one are
/// pulled, so they have to stand in the same places.
void MultiBand::followBandCount() noexcept CINDER_REALTIME {
    if (!isContinuous()) fadeLeft = 0;
    if (fadeLeft > 0 || trees[active].bandCount == model->bandCount) return;
    rewire();
    if (linked) linked->rewire();
}

void MultiBand::rewire() noexcept CINDER_REALTIME {
    active = 1 - active;
    wire(active);
    fadeLength = static_cast<int>(fadeSeconds * static_cast<double>(environment->getSampleRate()));
    fadeLeft = isContinuous() ? fadeLength : 0;
}

void MultiBand::wire(std::size_t t) noexcept CINDER_REALTIME {
    Tree& tree = trees[t];
    tree.bandCount = model->bandCount;
    tree.numUsed = 0;
    tree.bands = {};
    tree.bands[0] = &input;
    for (auto& crossover : crossovers) {
        Crossover::Split& split = crossover->splits[t];
        split.numAllPasses = 0;
        for (Crossover::Branch& branch : split.branches)
            branch.output.setInput(&branch.filter);
    }
    for (int i = 0; i < tree.bandCount - 1; ++i)
        wireCrossover(t, i);
    for (int band = 0; band < tree.bandCount; ++band) {
        const Model::Place place = model->getBand(band).getPlace();
        if (place.parent == Model::noCrossover) continue;
        tree.bands[static_cast<std::size_t>(band)] =
            &getCrossover(place.parent).splits[t].branches[place.side].output;
    }
}

void MultiBand::wireCrossover(std::size_t t, int index) noexcept CINDER_REALTIME {
    const Model::Crossover& inModel = model->getCrossover(index);
    const Model::Place place = inModel.getPlace();
    const int numLower = inModel.getSubtreeSize(Model::Low);
    const int numHigher = inModel.getSubtreeSize(Model::High);
    wave::Producer* source = &input;
    if (place.parent != Model::noCrossover)
        source = &getCrossover(place.parent).splits[t].branches[place.side].output;

    auto& [low, high] = getCrossover(index).splits[t].branches;
    for (Crossover::Branch* branch : {&low, &high}) {
        branch->filter.setInput(source);
        branch->filter.restartSoftly();
    }
    low.output.setInput(compensate(t, index + 1, numHigher, &low.filter));
    high.output.setInput(compensate(t, index - numLower, numLower, &high.filter));
}

/// Appends the all-passes of `count` crossovers from number `first` on.
wave::Producer* MultiBand::compensate(std::size_t t, int first, int count,
                                      wave::Producer* chain) noexcept CINDER_REALTIME {
    for (int i = first; i < first + count; ++i) {
        Crossover& crossover = getCrossover(i);
        Crossover::Split& split = crossover.splits[t];
        CrossoverFilter& allPass =
            *trees[t].allPasses[static_cast<std::size_t>(trees[t].numUsed++)];
        allPass.setInput(chain);
        allPass.restartSoftly();
        allPass.frequency.setSource(&crossover.sharedFrequency);
        allPass.slope = crossover.slope;
        split.allPasses[static_cast<std::size_t>(split.numAllPasses++)] = &allPass;
        chain = &allPass;
    }
    return chain;
}

void MultiBand::render(wave::BasicBlock<float>** blocks, int numSamples,
                       unsigned) noexcept CINDER_REALTIME {
    followBandCount();
    blockEnd = environment->getPosition() + static_cast<std::uint64_t>(numSamples);
    // All of them move on with time, even where the filters of the linked channel read their own.
    for (int i = 0; i < trees[active].bandCount - 1; ++i)
        getCrossover(i).sharedFrequency.pull(numSamples);
    for (int band = 0; band < maxBands; ++band) {
        if (isFading())
            fadeBand(band, blocks[band], numSamples);
        else
            handOnBand(band, blocks[band], numSamples);
    }
    fadeLeft -= std::min(fadeLeft, numSamples);
}

wave::BasicBlock<float>* MultiBand::pullBand(const Tree& tree, int band,
                                             int numSamples) const noexcept CINDER_REALTIME {
    wave::Producer* const producer = tree.bands[static_cast<std::size_t>(band)];
    return producer ? producer->pull(numSamples) : environment->getZeroBlock();
}

void MultiBand::handOnBand(int band, wave::BasicBlock<float>*& block,
                           int numSamples) noexcept CINDER_REALTIME {
    const Tree& tree = trees[active];
    block = pullBand(tree, band, numSamples);
    // A forwarder does not tell what its input says.
    const bool isInput = band == 0 && tree.bandCount == 1;
    setOutputConstant(
        band, (isInput && input.getInput()->isConstant()) || block == environment->getZeroBlock());
}

/// old + (new - old) * g, with a g of 0 for the first sample of the fade and 1 behind the last.
void MultiBand::fadeBand(int band, wave::BasicBlock<float>*& block,
                         int numSamples) noexcept CINDER_REALTIME {
    const float* const before = pullBand(trees[1 - active], band, numSamples)->data();
    const float* const after = pullBand(trees[active], band, numSamples)->data();
    float* const out = block->data();
    const int count = std::min(fadeLeft, numSamples);
    const float step = 1.0f / static_cast<float>(fadeLength);
    for (int i = 0; i < count; ++i) {
        const float g = static_cast<float>(fadeLength - fadeLeft + i) * step;
        out[i] = before[i] + (after[i] - before[i]) * g;
    }
    std::copy(after + count, after + numSamples, out + count);
    setOutputConstant(band, false);
}

}  // namespace cinder
