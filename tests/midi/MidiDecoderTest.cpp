#include "midi/MidiDecoder.h"

#include <doctest/doctest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "midi/DefaultEventReceiver.h"

namespace cinder {
namespace {

/// Writes each call down as one word.
struct Log final : MidiListener {
    void channelPressure(float value) noexcept override { add("pressure", value); }
    void polyPressure(int note, float value) noexcept override { add("poly", note, value); }
    void controller(int number, int value, float) noexcept override { add("cc", number, value); }
    void modulationWheel(float value) noexcept override { add("wheel", value); }
    void noteOff(int note, float velocity) noexcept override { add("off", note, velocity); }
    void noteOn(int note, float velocity) noexcept override { add("on", note, velocity); }
    void pitchBend(float value) noexcept override { add("bend", value); }

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
    std::string text;
};

struct Receiver final : AbstractChannelEventReceiver {
    explicit Receiver(Log& log) : log(log) { addListener(&log); }
    void programChange(int bank, int program) noexcept override {
        log.add("program", bank, program);
    }
    Log& log;
};

struct Fixture {
    Log all, third;
    Receiver onAll{all}, onThird{third};
    AbstractMusicEventReceiver receiver;
    MidiDecoder decoder{&receiver};
    Fixture() {
        receiver.slot(AbstractMusicEventReceiver::allChannels) = &onAll;
        receiver.slot(3) = &onThird;
    }
    std::string heard(MidiEvent event) {
        all.text.clear();
        decoder.receiveMidiMessage(event);
        return all.text;
    }
};

TEST_CASE("MidiDecoder: each message becomes its call, and listeners hear it") {
    const struct {
        MidiEvent event;
        const char* call;
    } rows[] = {
        {{0x80, 60, 127}, "off 60 1;"},
        {{0x95, 60, 127}, "on 60 1;"},
        {{0x9f, 60, 0}, "off 60 0;"},
        {{0xa0, 61, 127}, "poly 61 1;"},
        {{0xb0, 7, 64}, "cc 7 64;"},
        {{0xb0, 1, 127}, "cc 1 127;wheel 1;"},
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
    for (const auto& row : rows) {
        INFO("status " << int{row.event.status} << " data " << int{row.event.data1});
        CHECK(fixture.heard(row.event) == row.call);
    }
}

TEST_CASE("MidiDecoder: slot 0 hears every channel, slot n channel n, each with its own bank") {
    Fixture fixture;
    fixture.heard({0xb2, 0, 1});   // third channel: bank 1, coarse
    fixture.heard({0xb2, 32, 5});  // and fine
    CHECK(fixture.heard({0xc2, 9}) == "program 133 9;");
    fixture.heard({0xb7, 0, 2});  // another channel moves the bank of slot 0 alone
    CHECK(fixture.heard({0xc7, 1}) == "program 261 1;");
    CHECK(fixture.heard({0xc2, 2}) == "program 261 2;");
    CHECK(fixture.third.text == "program 133 9;program 133 2;");
}

TEST_CASE("MidiDecoder: raw listeners see everything, the reset listener a system reset") {
    struct Raw final : RawMidiListener, SystemResetListener {
        void rawMessage(std::uint8_t status, std::uint8_t, std::uint8_t) noexcept override {
            seen += static_cast<char>(status);
        }
        void systemReset() noexcept override { seen += 'r'; }
        std::string seen;
    } raw;
    Fixture fixture;
    fixture.receiver.rawListener = &raw;
    fixture.receiver.resetListener = &raw;
    for (const MidiEvent event : {MidiEvent{0x12}, {0x90}, {0xf8}, {0xff}})
        fixture.decoder.receiveMidiMessage(event);
    CHECK(raw.seen == "\x12\x90\xf8\xffr");
}

TEST_CASE("DefaultEventReceiver: stands in one slot, which its channel names") {
    Log log;
    DefaultEventReceiver receiver(std::make_unique<Receiver>(log));
    MidiDecoder decoder(&receiver);
    const auto hears = [&](int channel) {
        log.text.clear();
        decoder.receiveMidiMessage({static_cast<std::uint8_t>(0xd0 + channel - 1), 1});
        return !log.text.empty();
    };
    CHECK((hears(1) && hears(16)));
    receiver.channel = 99;
    CHECK((hears(16) && !hears(15)));
    receiver.channel = -1;
    CHECK(hears(7));
}

}  // namespace
}  // namespace cinder
