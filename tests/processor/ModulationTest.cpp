#include "processor/ProcessorRig.h"

#include <doctest/doctest.h>

#include "modulation/slots/SlotOperations.h"
#include "modulation/vocabulary/ModulationSources.h"
#include "modulation/vocabulary/ModulationTargets.h"

namespace cinder {
namespace {

using namespace test;

int sourceNamed(const std::string& name) {
    for (int i = 0; i < numModulationSources; ++i)
        if (nameOfSource(i) == name) return i;
    return -1;
}

void connect(const ProcessorRig& rig, int slot, const std::string& source,
             const std::string& target, float level = 1.0f) {
    const std::string name = "Slot " + std::to_string(slot);
    rig.set(name + " Source", source);
    rig.set(name + " Target", target);
    rig.parameter(name + " Level").setValue(level, 0);
}

/// A plug-in that lets a constant through, so that gains can be read off.
struct GainRig : ProcessorRig {
    GainRig() {
        set("Band 1 Style", "Clean Tape");
        set("Output Gain", "-12");
    }
    std::vector<float> play(int numSamples, int blockSize = 512) {
        return ProcessorRig::play(
            Channels(2, std::vector<float>(static_cast<std::size_t>(numSamples), 0.05f)),
            blockSize)[0];
    }
};

int firstMove(const std::vector<float>& samples) {
    for (std::size_t i = 1; i < samples.size(); ++i)
        if (std::abs(samples[i] - samples[0]) > 2e-4f) return static_cast<int>(i);
    return -1;
}

MidiEvent note(int number, int velocity) {
    return {0x90, static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(velocity), 0};
}

}  // namespace

TEST_CASE("Modulation: an XY axis moves what its slot is aimed at, and the bar shows it") {
    GainRig rig;
    rig.play(9600);
    const float before = rig.play(480).back();
    connect(rig, 1, "XY 2 Ver", "Output Gain", 0.5f);
    rig.set("XY Controller 2 Ver", "0.02");
    rig.play(24000);
    // 0.16 of the depth of 63 times 0.02 on top of a gain of 0.25.
    CHECK(rig.play(480).back() / before ==
          doctest::Approx(1.0 + 0.02 * 0.16 * 63.079887 / 0.2511886).epsilon(0.01));
    CHECK(rig.processor->getSourceValue(sourceNamed("XY 2 Ver")) == doctest::Approx(0.51));
}

TEST_CASE("Modulation: a note starts an envelope at its sample, whatever the block") {
    for (const int blockSize : {2048, 512, 100}) {
        GainRig rig;
        rig.set("Num Active EGs", "1");
        rig.set("EG 1 Triggering", "MIDI");
        connect(rig, 1, "EG 1", "Output Gain", 0.5f);
        rig.play(24000);
        const int offset = blockSize - 37;
        rig.processor->enqueueMidiEvent(note(60, 100), offset);
        const int moved = firstMove(rig.play(4096, blockSize));
        INFO("block " << blockSize << ", moved at " << moved);
        CHECK(moved >= offset);
        CHECK(moved <= offset + 4);
        rig.processor->enqueueMidiEvent(note(60, 0), 0);
        rig.play(24000);
        CHECK(rig.processor->getSourceValue(sourceNamed("EG 1")) == 0.0f);
    }
}

TEST_CASE("Modulation: what notes hold and let go, on any channel") {
    ProcessorRig rig;
    rig.set("Num Active EGs", "2");
    rig.set("EG 1 Triggering", "MIDI");
    rig.set("Num Active MIDI Sources", "1");
    rig.set("MIDI Source 1 Input", "Velocity");
    const Channels loud(2, std::vector<float>(4800, 0.9f));  // which opens the other envelope
    const auto after = [&](std::uint8_t status, std::uint8_t number, std::uint8_t velocity) {
        rig.processor->enqueueMidiEvent({status, number, velocity, 0}, 0);
        rig.play(loud);
        rig.play(loud);
        const auto isOpen = [&](const char* source) {
            return rig.processor->getSourceValue(sourceNamed(source)) > 0.5f;
        };
        return std::pair(isOpen("EG 1"), isOpen("EG 2"));
    };
    CHECK(after(0x95, 60, 127) == std::pair(true, true));
    CHECK(rig.processor->getSourceValue(sourceNamed("MIDI 1")) == doctest::Approx(1.0f));
    CHECK(after(0x90, 62, 100) == std::pair(true, true));
    CHECK(after(0x85, 60, 0) == std::pair(true, true));    // one is still down
    CHECK(after(0x90, 0, 100) == std::pair(false, true));  // note 0: none is, for those on MIDI
    CHECK(after(0x90, 64, 100) == std::pair(true, true));
    CHECK(after(0x80, 64, 0) == std::pair(false, false));  // the last one lets all of them go
}

TEST_CASE("Modulation: a snapped oscillator plays semitones, so its depth is a whole octave") {
    ProcessorRig rig;
    connect(rig, 1, "XLFO 1", "Band 1 Feedback Frequency");
    const auto depth = [&](float snap) {
        rig.parameter("XLFO 1 Snap").setValue(snap, 0);
        rig.play(silence(64));
        const ModulationMatrix& matrix = *rig.processor->getMatrix();
        return matrix.getTarget(matrix.getSlot(0).levelTarget).scale;
    };
    CHECK(depth(0.0f) == 10.0f);
    CHECK(depth(1.0f) == 1.0f);
    CHECK(depth(0.0f) == 10.0f);
}

TEST_CASE("Modulation: an envelope starts from the level of the input or of the side chain") {
    for (const char* trigger : {"Normal Input", "Side Chain"}) {
        INFO(trigger);
        ProcessorRig rig;
        rig.set("Num Active EGs", "1");
        rig.set("EG 1 Triggering", trigger);
        rig.set("EG 1 Threshold", "-12");
        const bool fromSide = std::string(trigger) == "Side Chain";
        Channels in = silence(9600, 4);
        rig.play(in);
        CHECK(rig.processor->getSourceValue(sourceNamed("EG 1")) == 0.0f);
        for (std::size_t c = 0; c < 4; ++c)
            std::fill(in[c].begin(), in[c].end(), (c < 2) == fromSide ? 0.0f : 0.5f);
        rig.play(in);
        CHECK(rig.processor->getSourceValue(sourceNamed("EG 1")) == doctest::Approx(1.0));
    }
}

TEST_CASE("Modulation: an XLFO follows the song, and a follower the level") {
    ProcessorRig rig;
    rig.set("Num Active XLFOs", "1");
    rig.set("XLFO 1 Sync Mode", "1");
    rig.set("XLFO 1 Step 1 Value", "-1");
    rig.set("XLFO 1 Step 2 Value", "1");
    rig.set("Num Active EFs", "1");
    const int xlfo = sourceNamed("XLFO 1");
    // A bar of four quarter notes: the first half is step 1.
    for (const auto& [position, value] : {std::pair{0.1f, 0.0f},
                                          {1.9f, 0.0f},
                                          {2.1f, 1.0f},
                                          {3.9f, 1.0f},
                                          {4.1f, 0.0f},
                                          {102.1f, 1.0f}}) {
        INFO("position " << position);
        rig.processor->setTransport(120.0f, position);
        rig.play(Channels(2, std::vector<float>(64, 0.1f)), 64);
        CHECK(rig.processor->getSourceValue(xlfo) == doctest::Approx(value));
    }
    rig.play(Channels(2, std::vector<float>(48000, 0.1f)));
    CHECK(rig.processor->getSourceValue(sourceNamed("EF 1")) == doctest::Approx(40.0 / 60.0));
}

TEST_CASE("Modulation: sources that nobody has added do not run") {
    ProcessorRig rig;
    rig.set("XLFO 3 Step 1 Value", "1");
    rig.play(silence(4800));
    const float off = rig.processor->getSourceValue(sourceNamed("XLFO 3"));
    rig.set("Num Active XLFOs", "3");
    rig.play(silence(512));
    CHECK(rig.processor->getSourceValue(sourceNamed("XLFO 3")) != off);
}

}  // namespace cinder
