#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

#include "analysis/AudioSourceProxy.h"
#include "analysis/LevelSourceProxy.h"
#include "analysis/SpectrumSourceProxy.h"
#include "processor/frame/TestProcessor.h"

namespace cinder::test {
namespace {

std::string locks;

struct Audio final : AudioSource {
    void lock() override { locks += "A"; }
    void unlock() override { locks += "a"; }
    std::int32_t getFrameSize() const override { return 2; }
    const float* getFrameData(std::int32_t frame, std::int32_t channel) const override {
        return &samples[(frame * 2 + channel) * 2];
    }
    std::int32_t getFrameCount() const override { return 3; }
    std::int32_t getChannelCount() const override { return 2; }
    float samples[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
};

struct Levels final : LevelSource {
    std::uint32_t getStatus() const override { return 0x80000001; }
    float getValue(std::int32_t index) const override { return static_cast<float>(index) * 0.5f; }
    void resetFirst() override {}
    void resetSecond() override {}
};

struct Spectrum final : SpectrumSource {
    void lock() override { locks += "S"; }
    void unlock() override { locks += "s"; }
    const float* getValues() const override { return isEmpty ? nullptr : values; }
    std::int32_t getSize() const override { return 4; }
    std::int32_t getFrameId() const override { return 77; }
    bool isEmpty = false;
    float values[4] = {0.25f, 0.5f, 0.75f, 1.0f};
};

TEST_CASE("Real-time data: the proxies get what the sources have, under the sources' locks") {
    TestProcessor processor;
    Audio audio;
    Levels levels;
    Spectrum spectrum, empty;
    empty.isEmpty = true;
    processor.audioSources = {&audio};
    processor.levelSources = {&levels};
    processor.spectrumSources = {&spectrum, &empty};
    locks.clear();
    std::stringstream stream;
    BinaryDataWriter writer(stream);
    processor.writeRealtimeData(writer);
    CHECK(locks == "ASSssa");

    BinaryDataReader reader(stream);
    AudioSourceProxy audioProxy;
    LevelSourceProxy levelProxy;
    SpectrumSourceProxy spectrumProxy, emptyProxy;
    CHECK((audioProxy.read(reader) && levelProxy.read(reader) && spectrumProxy.read(reader) &&
           emptyProxy.read(reader)));
    CHECK(stream.peek() == std::char_traits<char>::eof());

    audioProxy.lock();
    REQUIRE(audioProxy.getFrameCount() == 3);
    CHECK(audioProxy.getFrameData(2, 1)[1] == 12.0f);
    audioProxy.unlock();
    CHECK(levelProxy.getValue(4) == 2.0f);
    REQUIRE(spectrumProxy.getSize() == 4);
    CHECK(spectrumProxy.getValues()[3] == 1.0f);
    CHECK(emptyProxy.getValues() == nullptr);
}

TEST_CASE("Real-time data: blocked MIDI reaches the interface, not the decoder") {
    TestProcessor processor(stereoLayout, GenericPluginBase::keepsMidiQueue);
    const auto process = [&] { processGuarded(processor, nullptr, 0, nullptr, 0, 64); };
    processor.enqueueMidiEvent({0x90, 60, 100}, 0);
    process();
    CHECK(processor.numNotesOn == 1);
    const int numNotesOff = processor.numNotesOff;
    processor.receiveMidi.setValue(1.0f, 0);
    processor.enqueueMidiEvent({0x90, 61, 101}, 0);
    process();
    CHECK(processor.numNotesOn == 1);
    CHECK(processor.numNotesOff == numNotesOff + 1);  // what sounds is released

    std::ostringstream stream;
    BinaryDataWriter writer(stream);
    processor.writeRealtimeData(writer);
    CHECK(stream.str() == std::string("\1\x90\x3c\x64\1\x90\x3d\x65\0", 9));

    // Nobody reads: the queue keeps what it has room for.
    for (int i = 0; i < 100; ++i)
        processor.enqueueMidiEvent({0xb0, 7, static_cast<std::uint8_t>(i)}, 0);
    stream.str("");
    processor.writeRealtimeData(writer);
    CHECK(stream.str().size() == 30 * 4 + 1);
}

TEST_CASE("Transport: an own clock runs while the host's position stands still") {
    TestProcessor processor;
    processor.getEnvironment()->setSampleRate(48000.0f);
    const auto process = [&](int n) { processGuarded(processor, nullptr, 0, nullptr, 0, n); };
    processor.setTransport(120.0f, 10.0f);
    CHECK(processor.beats == 10.0f);
    process(12000);  // a quarter of a second
    processor.setTransport(120.0f, 10.0f);
    CHECK(processor.getSongPosition() == doctest::Approx(10.5).epsilon(1e-12));
    CHECK(processor.tempo == 120.0f);
    process(12000);
    processor.setTransport(120.0f, 10.0001f);  // any movement of the host overrides
    CHECK(processor.beats == 10.0001f);

    processor.setTransport(120.0f, 255.75f);
    process(24000);
    processor.setTransport(120.0f, 255.75f);
    CHECK(processor.getSongPosition() == doctest::Approx(0.75).epsilon(1e-12));
    processor.setTransport(120.0f, -4.0f);  // pre-roll
    process(0);
    processor.setTransport(120.0f, -4.0f);
    CHECK(processor.getSongPosition() == 252.0);

    process(64);
    processor.setTransport(std::numeric_limits<float>::quiet_NaN(), 8.0f);
    processor.setTransport(120.0f, std::numeric_limits<float>::infinity());
    processor.setTransport(3e38f, -4.0f);
    CHECK(processor.getSongPosition() == 252.0);
    processor.reset();
    CHECK(processor.getSongPosition() == 0.0);
}

}  // namespace
}  // namespace cinder::test
