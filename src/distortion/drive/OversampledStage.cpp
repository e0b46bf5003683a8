#include "distortion/drive/OversampledStage.h"

#include <span>

namespace cinder {

OversampledStage::Converters::Converters(sr::IIRConverterStyle* style)
    : decimator(style),
      interpolator(style),
      oversampledBlock(style->getEnvironment()->getMaxBlockSize() * style->getMaxFactor()) {}

OversampledStage::OversampledStage(wave::Environment* environment,
                                   sr::IIRConverterStyle* converterStyle)
    : Filter(environment), converterStyle(converterStyle) {
    if (converterStyle) converters.emplace(converterStyle);
    makeResettable();
}

OversampledStage::~OversampledStage() {
    setPartner(nullptr);
}

void OversampledStage::reset() noexcept CINDER_REALTIME {
    hasPast = false;
    startsFromFirst = false;
    if (!converters) return;
    converters->interpolator.reset();
    converters->decimator.reset();
}

void OversampledStage::settle(float first) noexcept CINDER_REALTIME {
    startsFromFirst = false;
    converters->interpolator.settle(first);
    shape(&first, 1);
    converters->decimator.settle(first);
}

void OversampledStage::setPartner(OversampledStage* newPartner) {
    if (newPartner == partner) return;
    for (OversampledStage* side : {this, newPartner}) {
        if (!side || !side->partner) continue;
        side->setLink(false);
        side->partner->partner = nullptr;
        side->partner = nullptr;
    }
    if (newPartner) newPartner->partner = this;
    partner = newPartner;
}

void OversampledStage::setLink(bool isLinked) noexcept CINDER_REALTIME {
    if (!partner) return;
    linked = isLinked;
    partner->linked = isLinked;
}

/// A partner that was rendered in this cycle already, before the two were linked, keeps its output.
bool OversampledStage::runsAsPair() const noexcept CINDER_REALTIME {
    return linked && partner->input && partner->converterStyle == converterStyle &&
           partner->getLastBlockId() != environment->getBlockId();
}

/// Lets the controls go on, as a block would.
bool OversampledStage::restsInSilence(int numSamples) noexcept CINDER_REALTIME {
    if (!input->isSilent()) return false;
    const bool isConverting = converterStyle && converterStyle->getFactor() >= 2;
    if (isConverting && !startsFromFirst &&
        !(converters->interpolator.isAtRest() && converters->decimator.isAtRest()))
        return false;
    float zero = 0.0f;
    shape(&zero, 1);
    if (zero != 0.0f) return false;
    enter(environment->getZeroBlock()->data(), ownBlock->data(), numSamples);
    return true;
}

void OversampledStage::rest() noexcept CINDER_REALTIME {
    if (converterStyle && converterStyle->getFactor() >= 2) {
        converters->interpolator.reset();
        converters->decimator.reset();
        hasPast = true;
        startsFromFirst = false;
    }
    passOn(environment->getZeroBlock());
    setConstant(true);
}

void OversampledStage::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                               int numSamples, unsigned) noexcept CINDER_REALTIME {
    const int factor = converterStyle ? converterStyle->getFactor() : 1;
    const bool isPair = factor >= 2 && runsAsPair();
    wave::BasicBlock<float>* const otherIn = isPair ? partner->input->pull(numSamples) : nullptr;
    if (restsInSilence(numSamples) && (!isPair || partner->restsInSilence(numSamples))) {
        if (isPair) partner->rest();
        return rest();
    }
    setConstant(false);
    if (factor < 2) {
        enter(in->data(), out->data(), numSamples);
        shape(out->data(), numSamples);
        leave(out->data(), numSamples);
        return;
    }

    struct Side {
        OversampledStage* stage;
        wave::BasicBlock<float>* in;
        float* out;
        float* raised;
    };
    Side sides[2] = {{this, in, out->data(), converters->oversampledBlock.data()}, {}};
    if (isPair)
        sides[1] = {partner, otherIn, partner->ownBlock->data(),
                    partner->converters->oversampledBlock.data()};
    const std::span<const Side> running(sides, isPair ? 2 : 1);

    sr::IIRInterpolator::Job up[2];
    sr::IIRDecimator::Job down[2];
    for (std::size_t i = 0; const Side& side : running) {
        side.stage->enter(side.in->data(), side.out, numSamples);
        if (side.stage->startsFromFirst) side.stage->settle(side.out[0]);
        side.stage->hasPast = true;
        up[i] = {&side.stage->converters->interpolator, side.out, side.raised};
        down[i++] = {&side.stage->converters->decimator, side.raised, side.out};
    }
    sr::IIRInterpolator::processGroup({up, running.size()}, numSamples);
    for (const Side& side : running)
        side.stage->shape(side.raised, factor * numSamples);
    sr::IIRDecimator::processGroup({down, running.size()}, numSamples);
    for (const Side& side : running)
        side.stage->leave(side.out, numSamples);
    if (!isPair) return;
    partner->passOn(partner->ownBlock.get());
    partner->setConstant(false);
}

}  // namespace cinder
