#include "midi/MidiDecoder.h"

#include <doctest/doctest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "midi/DefaultEventReceiver.h"

namespace cinder {
namespace {

/// Writes each call down as one word.
class Log final : public AbstractChannelEventReceiver {
public:
    explicit Log(std::string& text) : text(text) {}
    void channelPressure(float value) noexcept override { add("pressure", value); }
    void polyPressure(int note, float value) noexcept override { add("poly", note, value); }
    void controller(int number, int value, float) noexcept override { add("cc", number, value); }
    void noteOff(int note, float velocity) noexcept override { add("off", note, velocity); }
    void noteOn(int note, float velocity) noexcept override { add("on", note, velocity); }
    void pitchBend(float value) noexcept override { add("bend", value); }
    void programChange(int bank, int program) noexcept override { add("program", bank, program); }

private:
    template <typename... Values>
    void add(const char* name, Values... values) {
        text += name;
        const auto append = [this](double value) {
            char number[32];
            std::snprintf(number, sizeof number, " %.5g", value);
            text += number;
        };
        (append(static_cast<double>(values)), ...);
        text += ";";
    }
    std::string& text;
};

struct Fixture {
    std::string all, third;
    Log onAll{all}, onThird{third};
    AbstractMusicEventReceiver receiver;
    MidiDecoder decoder{&receiver};
    Fixture() {
        receiver.slot(AbstractMusicEventReceiver::allChannels) = &onAll;
        receiver.slot(3) = &onThird;
    }
    std::string heard(MidiEvent event) {
        all.clear();
        decoder.receiveMidiMessage(event);
        return all;
    }
};

TEST_CASE("MidiDecoder: each message becomes its call") {
    struct Row {
        MidiEvent event;
        const char* call;
    };
    const Row rows[] = {
        {{0x80, 60, 127}, "off 60 1;"},
        {{0x95, 60, 127}, "on 60 1;"},
        {{0x9f, 60, 0}, "off 60 0;"},
        {{0xa0, 61, 127}, "poly 61 1;"},
        {{0xb0, 7, 64}, "cc 7 64;"},
        {{0xb0, 123, 5}, "off 0 0;"},
        {{0xd0, 127}, "pressure 1;"},
        {{0xe0, 0, 0}, "bend -0.5;"},
        {{0xe0, 127, 127}, "bend 0.5;"},
        {{0xe0, 0, 0x40}, "bend 3.0518e-05;"},
        {{0x7f, 1, 2}, ""},  // no status
        {{0xf8, 1, 2}, ""},  // clock
        {{0xff, 1, 2}, ""},  // system reset without a listener
    };
    Fixture fixture;
    for (const Row& row : rows) {
        INFO("status " << int{row.event.status} << " data " << int{row.event.data1});
        CHECK(fixture.heard(row.event) == row.call);
    }
}

TEST_CASE("MidiDecoder: slot 0 hears every channel, slot n channel n, each with its own bank") {
    Fixture fixture;
    CHECK(fixture.heard({0xb2, 0, 1}).empty());   // third channel: bank 1, coarse
    CHECK(fixture.heard({0xb2, 32, 5}).empty());  // and fine
    CHECK(fixture.third.empty());
    CHECK(fixture.heard({0xc2, 9}) == "program 133 9;");
    CHECK(fixture.third == "program 133 9;");
    fixture.third.clear();
    fixture.heard({0xb7, 0, 2});  // another channel moves the bank of slot 0 alone
    CHECK(fixture.heard({0xc7, 1}) == "program 261 1;");
    CHECK(fixture.third.empty());
    CHECK(fixture.heard({0xc2, 2}) == "program 261 2;");
    CHECK(fixture.third == "program 133 2;");
}

TEST_CASE("MidiDecoder: raw listeners see everything, the reset listener a system reset") {
    struct Raw final : RawMidiListener, SystemResetListener {
        void rawMessage(std::uint8_t status, std::uint8_t, std::uint8_t) noexcept override {
            seen.push_back(status);
        }
        void systemReset() noexcept override { ++resets; }
        std::vector<int> seen;
        int resets = 0;
    } raw;
    Fixture fixture;
    fixture.receiver.rawListener = &raw;
    fixture.receiver.resetListener = &raw;
    for (const int status : {0x12, 0x90, 0xf8, 0xff})
        fixture.decoder.receiveMidiMessage({static_cast<std::uint8_t>(status), 1, 1});
    CHECK(raw.seen == std::vector<int>{0x12, 0x90, 0xf8, 0xff});
    CHECK(raw.resets == 1);
}

TEST_CASE("DefaultEventReceiver: stands in one slot, which its channel names") {
    std::string text;
    DefaultEventReceiver receiver(std::make_unique<Log>(text));
    MidiDecoder decoder(&receiver);
    const auto hears = [&](int channel) {
        text.clear();
        decoder.receiveMidiMessage({static_cast<std::uint8_t>(0xd0 + channel - 1), 1});
        return !text.empty();
    };
    CHECK(hears(1));
    CHECK(hears(16));
    receiver.channel = 16;
    CHECK(hears(16));
    CHECK_FALSE(hears(15));
    receiver.channel = 99;
    CHECK(hears(16));
    receiver.channel = -1;
    CHECK(hears(7));
}

struct Listener final : MidiListener {
    void channelPressure(float) noexcept override { heard += "p"; }
    void polyPressure(int, float) noexcept override { heard += "P"; }
    void controller(int, int, float) noexcept override { heard += "c"; }
    void modulationWheel(float) noexcept override { heard += "w"; }
    void noteOff(int, float) noexcept override { heard += "o"; }
    void noteOn(int, float) noexcept override { heard += "O"; }
    void pitchBend(float) noexcept override { heard += "b"; }
    std::string heard;
};

TEST_CASE("AbstractChannelEventReceiver: listeners hear everything, the wheel twice") {
    AbstractChannelEventReceiver receiver;
    Listener listener;
    receiver.addListener(&listener);
    receiver.channelPressure(0.5f);
    receiver.polyPressure(60, 0.5f);
    receiver.controller(2, 64, 0.5f);
    receiver.controller(1, 64, 0.5f);
    receiver.noteOff(60, 0.5f);
    receiver.noteOn(60, 0.5f);
    receiver.pitchBend(0.1f);
    receiver.programChange(0, 0);
    CHECK(listener.heard == "pPccwoOb");
}

}  // namespace
}  // namespace cinder
