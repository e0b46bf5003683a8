#include "distortion/tone/FilterChain.h"

#include <algorithm>
#include <cmath>

namespace cinder {

FilterChain::FilterChain(wave::Environment* environment, wave::Producer* input, int capacity)
    : Source(environment),
      input(input),
      steps(static_cast<std::size_t>(capacity * AnalogFilterPrototype::maxSections)),
      movers(static_cast<std::size_t>(capacity)),
      foreignGains(movers.size()),
      setsPerMover(static_cast<std::size_t>(environment->getMaxBlockSize() / EQFilter::fineStep)),
      laidOut(movers.size() * setsPerMover) {
    for (int i = 0; i < capacity; ++i) {
        filters.push_back(std::make_unique<EQFilter>(environment));
        filters.back()->setInput(i == 0 ? input : filters[static_cast<std::size_t>(i) - 1].get());
        filters.back()->setRest(this);
    }
}

FilterChain::~FilterChain() {
    end();
    for (const auto& filter : filters)
        filter->setRest(nullptr);
    if (linked) linked->linked = nullptr;
}

void FilterChain::addFilter(const FilterRow& row) noexcept CINDER_REALTIME {
    if (count == getCapacity()) return;
    end();
    constexpr float jump = 0.0f;
    EQFilter& filter = (*this)[count++];
    filter.frequency.getParameter().setValue(std::log2(row.hz), jump);
    filter.gain.getParameter().setValue(row.gainDb, jump);
    filter.q.getParameter().setValue(qForShape(row.shape, row.q), jump);
    filter.shape = row.shape;
    filter.slope = row.slope;
    filter.reset();
}

void FilterChain::render(wave::BasicBlock<float>*, int numSamples,
                         unsigned) noexcept CINDER_REALTIME {
    if (count == 0) {
        wave::BasicBlock<float>* const in = input->pull(numSamples);
        return handOn(in, input->isConstant());
    }
    if (restsOn(numSamples)) return runRow(numSamples);
    if (renderAsRow(numSamples)) return;
    wave::Producer& last = (*this)[count - 1];
    wave::BasicBlock<float>* const block = last.pull(numSamples);
    handOn(block, last.isConstant());
}

void FilterChain::handOn(wave::BasicBlock<float>* block, bool isConstant) noexcept CINDER_REALTIME {
    passOn(block);
    setConstant(isConstant);
}

/// False if one of the filters is at something that it has to do by itself.
bool FilterChain::collectSteps(int numSamples) noexcept CINDER_REALTIME {
    numSteps = 0;
    numMovers = 0;
    for (int i = 0; i < count; ++i) {
        EQFilter& filter = (*this)[i];
        const EQFilter::Standing standing = filter.standing(numSamples);
        if (standing == EQFilter::Standing::Alone) return false;
        if (standing == EQFilter::Standing::Dry) continue;
        if (standing == EQFilter::Standing::Moving) movers[numMovers++] = {&filter, numSteps};
        for (int s = 0; s < filter.getNumSections(); ++s)
            steps[numSteps++] = {
                &filter.getCoefficients(s), 0, {&filter.stateOf(s), &(*linked)[i].stateOf(s)}};
    }
    return true;
}

/// Whether silence comes in, and nothing is left in the filters that could be heard.
bool FilterChain::restsInSilence() const noexcept CINDER_REALTIME {
    if (!input->isSilent() || !linked->input->isSilent()) return false;
    return std::all_of(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(numSteps),
                       [](const BiquadStep& step) {
                           return isAtRest(*step.states[0]) && isAtRest(*step.states[1]);
                       });
}

void FilterChain::layOutMovers(int numSamples) noexcept CINDER_REALTIME {
    for (std::size_t i = 0; i < numMovers; ++i) {
        BiquadCoefficients* const sets = laidOut.data() + i * setsPerMover;
        movers[i].filter->layOut(numSamples, sets);
        steps[movers[i].step].coefficients = sets;
        steps[movers[i].step].stride = 1;
    }
}

/// Behind a block that ran as a row, none of it moving.
void FilterChain::tryToRest(int numSamples) noexcept CINDER_REALTIME {
    numForeignGains = 0;
    for (int i = 0; i < count; ++i) {
        EQFilter& filter = (*this)[i];
        if (!filter.canRest()) return;
        if (filter.hasForeignGain()) foreignGains[numForeignGains++] = &filter;
    }
    leads = true;
    linked->leads = false;
    const auto blockEnd = environment->getPosition() + static_cast<std::uint64_t>(numSamples);
    for (FilterChain* side : {this, linked})
        side->begin(blockEnd);
}

/// Neither a filter of this chain nor one of the linked chain, which rests with it, has had
/// anything happen to it.
bool FilterChain::restsOn(int numSamples) noexcept CINDER_REALTIME {
    if (!isResting()) return false;
    const auto keepsGain = [numSamples](EQFilter* filter) { return filter->keepsGain(numSamples); };
    const auto firstGain = foreignGains.begin();
    if (!leads || !std::all_of(firstGain, firstGain + static_cast<std::ptrdiff_t>(numForeignGains),
                               keepsGain)) {
        end();
        return false;
    }
    const std::uint64_t position = environment->getPosition();
    return goesOn(position, numSamples) && linked->goesOn(position, numSamples);
}

void FilterChain::ended(std::uint64_t position) noexcept CINDER_REALTIME {
    for (int i = 0; i < count; ++i)
        (*this)[i].passedAsPair(position);
    linked->end();
}

bool FilterChain::renderAsRow(int numSamples) noexcept CINDER_REALTIME {
    if (!linked || linked->count != count || !collectSteps(numSamples)) return false;
    runRow(numSamples);
    for (int i = 0; i < count; ++i) {
        const bool isDry = BiquadProcessor::isNear((*this)[i].getWetFactor(), 0.0f);
        (*this)[i].passBlockAsPair(isDry, numSamples);
    }
    if (numMovers == 0) tryToRest(numSamples);
    return true;
}

void FilterChain::runRow(int numSamples) noexcept CINDER_REALTIME {
    const wave::BasicBlock<float>* const in[] = {input->pull(numSamples),
                                                 linked->input->pull(numSamples)};
    layOutMovers(numSamples);
    const bool isDry = numSteps == 0 || restsInSilence();
    if (isDry) {
        for (std::size_t s = 0; s < numSteps; ++s)
            for (BiquadState* state : steps[s].states)
                *state = {};
    } else {
        const BiquadLane lanes[] = {{in[0]->data(), ownBlock->data(), nullptr},
                                    {in[1]->data(), linked->ownBlock->data(), nullptr}};
        biquadKernels->steps(lanes, steps.data(), static_cast<int>(numSteps),
                             numMovers > 0 ? EQFilter::fineStep : numSamples, numSamples);
    }
    for (FilterChain* side : {this, linked}) {
        side->handOn(isDry ? side->input->getOutput() : side->ownBlock.get(),
                     isDry && (side->input->isConstant() || side->input->isSilent()));
    }
}

void FilterChain::link(FilterChain& other) {
    linked = &other;
    other.linked = this;
    const int numPairs = std::min(getCapacity(), other.getCapacity());
    for (int i = 0; i < numPairs; ++i) {
        (*this)[i].setPartner(&other[i]);
        (*this)[i].link(EQFilter::LinkMode::Shared);
    }
}

}  // namespace cinder
