#include "dsp/filters/BiquadFilter.h"

namespace cinder {

BiquadFilter::BiquadFilter(wave::Environment* environment, int maxSections,
                           BiquadProcessor::Carried carried)
    : Filter(environment), processor(environment, maxSections, carried) {
    makeResettable();
}

BiquadFilter::~BiquadFilter() {
    setPartner(nullptr);
}

void BiquadFilter::reset() noexcept CINDER_REALTIME {
    endRest();
    processor.reset();
}

void BiquadFilter::propertyChanged(AbstractProperty* property) {
    endRest();
    if (property != &enabled) return;
    catchUp();  // a fade begins now, not where the last block ended
    processor.setEnabled(enabled);
}

void BiquadFilter::setPartner(BiquadFilter* newPartner) {
    if (newPartner == partner) return;
    for (BiquadFilter* side : {this, newPartner}) {
        if (!side || !side->partner) continue;
        side->setLink(LinkMode::None);
        side->partner->partner = nullptr;
        side->partner = nullptr;
    }
    if (newPartner) newPartner->partner = this;
    partner = newPartner;
}

void BiquadFilter::link(LinkMode mode) noexcept CINDER_REALTIME {
    if (partner) setLink(mode);
}

void BiquadFilter::unlink() noexcept CINDER_REALTIME {
    if (partner) setLink(LinkMode::None);
}

void BiquadFilter::setLink(LinkMode mode) noexcept CINDER_REALTIME {
    for (BiquadFilter* side : {this, partner}) {
        side->endRest();
        side->linkMode = mode;
        side->rejoins = false;
    }
}

void BiquadFilter::process(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                           int numSamples, unsigned) noexcept CINDER_REALTIME {
    endRest();
    reviewLink();
    enterBlock(numSamples);
    if (runsAsPair(numSamples)) return processPair(in, out, numSamples);
    if (processor.isDry()) {
        processor.skipBlock(numSamples);
        return finish(false, in, out);
    }
    computeCoefficients(numSamples, processor);
    if (const int count = processor.getNumSections();
        input->isSilent() && processor.restsAtZero(count)) {
        processor.rest(count, numSamples);
        return finish(false, in, out);
    }
    const BiquadProcessor::Channel channel = {&processor, in->data(), out->data()};
    finish(BiquadProcessor::process({&channel, 1}, true, numSamples), in, out);
}

void BiquadFilter::processPair(wave::BasicBlock<float>* in, wave::BasicBlock<float>* out,
                               int numSamples) noexcept CINDER_REALTIME {
    BiquadFilter& other = *partner;
    const bool isShared = linkMode == LinkMode::Shared;
    wave::BasicBlock<float>* const otherIn = other.input->pull(numSamples);
    wave::BasicBlock<float>* const otherOut = other.ownBlock.get();
    computeCoefficients(numSamples, processor);
    if (!isShared) other.computeCoefficients(numSamples, other.processor);
    if (restsWithPartner(numSamples)) {
        finish(false, in, out);
        return other.finish(false, otherIn, otherOut);
    }

    using Channel = BiquadProcessor::Channel;
    const Channel channels[] = {{&processor, in->data(), out->data()},
                                {&other.processor, otherIn->data(), otherOut->data()}};
    if (isShared || processor.getNumSections() == other.processor.getNumSections()) {
        const bool wereFiltered = BiquadProcessor::process(channels, isShared, numSamples);
        finish(wereFiltered, in, out);
        other.finish(wereFiltered, otherIn, otherOut);
    } else {
        finish(BiquadProcessor::process({&channels[0], 1}, true, numSamples), in, out);
        other.finish(BiquadProcessor::process({&channels[1], 1}, true, numSamples), otherIn,
                     otherOut);
    }
}

bool BiquadFilter::restsWithPartner(int numSamples) noexcept CINDER_REALTIME {
    if (!input->isSilent() || !partner->input->isSilent()) return false;
    const int count = processor.getNumSections();
    const int other = linkMode == LinkMode::Shared ? count : partner->processor.getNumSections();
    if (!processor.restsAtZero(count) || !partner->processor.restsAtZero(other)) return false;
    processor.rest(count, numSamples);
    partner->processor.rest(other, numSamples);
    return true;
}

void BiquadFilter::finish(bool wasFiltered, wave::BasicBlock<float>* in,
                          wave::BasicBlock<float>* out) noexcept CINDER_REALTIME {
    passOn(wasFiltered ? out : in);
    setConstant(!wasFiltered && (input->isConstant() || input->isSilent()));
}

void BiquadFilter::reviewLink() noexcept CINDER_REALTIME {
    if (!partner) return;
    if (linkMode == LinkMode::Shared && enabled != partner->enabled) {
        unlink();
        rejoins = partner->rejoins = true;
    } else if (rejoins && !partner->wasRenderedInThisCycle() && processor.isWet() &&
               partner->processor.isWet()) {
        link(LinkMode::Shared);
    }
}

/// The first call of a cycle counts: a linked partner enters its block with this one.
void BiquadFilter::enterBlock(int numSamples) noexcept CINDER_REALTIME {
    const std::uint64_t position = environment->getPosition();
    if (position < blockEnd) return;
    catchUp();
    blockEnd = position + static_cast<std::uint64_t>(numSamples);
}

void BiquadFilter::catchUp() noexcept CINDER_REALTIME {
    const std::uint64_t position = environment->getPosition();
    if (position <= blockEnd) return;
    processor.missSamples(position - blockEnd);
    blockEnd = position;
}

bool BiquadFilter::standsAsPair() const noexcept CINDER_REALTIME {
    if (linkMode != LinkMode::Shared) return false;
    const std::uint64_t position = environment->getPosition();
    const auto stands = [position](const BiquadFilter& side) {
        return side.enabled && side.processor.isWet() && side.blockEnd == position &&
               !side.wasRenderedInThisCycle();
    };
    return stands(*this) && stands(*partner);
}

bool BiquadFilter::runsOn() const noexcept CINDER_REALTIME {
    return processor.getRestart() == BiquadProcessor::Restart::None &&
           partner->processor.getRestart() == BiquadProcessor::Restart::None;
}

void BiquadFilter::passBlockAsPair(bool isDry, int numSamples) noexcept CINDER_REALTIME {
    for (BiquadFilter* side : {this, partner}) {
        side->blockEnd = environment->getPosition() + static_cast<std::uint64_t>(numSamples);
        if (isDry) side->processor.skipBlock(numSamples);
    }
}

bool BiquadFilter::wasRenderedInThisCycle() const noexcept CINDER_REALTIME {
    return getLastBlockId() == environment->getBlockId();
}

/// A side that is switched off costs nothing, with one exception: where each side has coefficients
/// of its own, both run as long as one of them has to.
bool BiquadFilter::runsAsPair(int numSamples) noexcept CINDER_REALTIME {
    if (linkMode == LinkMode::None || !partner->input || partner->wasRenderedInThisCycle())
        return false;
    if (linkMode == LinkMode::Shared && processor.isDry()) return false;
    partner->enterBlock(numSamples);
    if (!partner->processor.isDry()) return true;
    if (linkMode == LinkMode::Separate && !processor.isDry()) return true;
    // It has entered a block that it may not be pulled for.
    partner->processor.restartSoftly();
    return false;
}

}  // namespace cinder
