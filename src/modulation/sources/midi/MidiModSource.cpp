#include "modulation/sources/midi/MidiModSource.h"

#include "modulation/sources/midi/MidiModSourceCache.h"

namespace cinder {

namespace {

constexpr float noteScale = 0.008333334f;  // 1 / 120
constexpr float neutralNote = 0.4f;        // 48 / 120
constexpr float largeStep = 0.5f;          // what the automatic ramp measures steps by

}  // namespace

MidiModSource::MidiModSource(wave::Environment* environment, Cache* cache)
    : Source(environment, true), cache(cache), value(environment, 0.0f) {
    value.setRange(-1.0f, 1.0f, largeStep);
    cache->addFollower(this);
}

MidiModSource::~MidiModSource() {
    cache->removeFollower(this);
}

void MidiModSource::propertyChanged(AbstractProperty* property) {
    if (property == &responseCurve) curve = responseFunctionOf(responseCurve);
    if (property == &midiInput) {
        const int index =
            midiInput == MidiInput::Controller ? controllerNumber.get() : Cache::indexOf(midiInput);
        update(index, cache->valueAt(index));
    }
    show();
}

void MidiModSource::update(int index, float newValue) noexcept CINDER_REALTIME {
    const bool isController = index < Cache::numControllers;
    const MidiInput input = isController ? MidiInput::Controller
                                         : static_cast<MidiInput>(index - Cache::numControllers);
    if (input != midiInput || (isController && index != controllerNumber)) return;
    constexpr float automatic = wave::FloatParameter::automaticRamp;
    switch (input) {
        case MidiInput::PitchBend:
            value.setValue(curve(2.0f * newValue), automatic);
            break;
        case MidiInput::Velocity:
            value.setValue(2.0f * curve(newValue) - 1.0f, noteRampMs);
            break;
        case MidiInput::KeyboardTrack:
            value.setValue(curve(newValue * noteScale) - curve(neutralNote), noteRampMs);
            break;
        default:
            value.setValue(curve(newValue), automatic);
    }
    show();
}

void MidiModSource::render(wave::BasicBlock<float>*, int numSamples,
                           unsigned) noexcept CINDER_REALTIME {
    bool isConstant = false;
    passOn(value.follow(numSamples, &isConstant));
    const bool stands = isConstant && this->isConstant();
    setConstant(isConstant);
    if (!stands) show();
}

float MidiModSource::barValue() const noexcept CINDER_REALTIME {
    const float v = currentValue();
    switch (midiInput) {
        case MidiInput::PitchBend:
        case MidiInput::Velocity:
            return (v + 1.0f) * 0.5f;
        case MidiInput::KeyboardTrack: {
            const float lowest = curve(noteScale) - curve(neutralNote);
            const float highest = curve(1.0f) - curve(neutralNote);
            return (v - lowest) / (highest - lowest);
        }
        default:
            return v;
    }
}

/// A source that no slot reads is not followed: its last block is an old one.
float MidiModSource::currentValue() const noexcept CINDER_REALTIME {
    const bool isFollowed = getLastBlockId() == environment->getBlockId();
    return isFollowed && value.isRamping() ? getOutput()->data()[0] : value.getTarget();
}

}  // namespace cinder
