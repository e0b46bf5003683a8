#include "modulation/sources/midi/MidiModSource.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <vector>

#include "midi/AbstractChannelEventReceiver.h"
#include "modulation/sources/midi/MidiModSourceCache.h"
#include "support/StageRig.h"

namespace {

using namespace cinder;
using namespace cinder::test;

using Cache = MidiModSource::Cache;

double positive(ResponseCurve curve, double a) {
    switch (curve) {
        case ResponseCurve::Linear:
            return a;
        case ResponseCurve::Exp:
            return a <= 0.1 ? a * 0.23988324 : std::pow(10.0, (a - 1.0) * 36.0 / 20.0);
        case ResponseCurve::Log:
            return std::log(10.0 * a + 1.0) * 0.4170323914242463;
        case ResponseCurve::Sqr:
            return a * a;
        case ResponseCurve::Sqrt:
            return std::sqrt(a);
        case ResponseCurve::Sine:
            return (std::sin((a - 0.5) * 3.14159265358979) + 1.0) * 0.5;
    }
    return 0.0;
}

double curveAt(ResponseCurve curve, double x) {
    return x < 0.0 ? -positive(curve, -x) : positive(curve, x);
}

struct Rig {
    Rig() {
        receiver.addListener(&cache);
        environment.beginBlock();
        environment.render(64, 0);
    }
    MidiModSource& add(MidiInput input, ResponseCurve curve, int controller = 0) {
        sources.push_back(std::make_unique<MidiModSource>(&environment, &cache));
        MidiModSource& source = *sources.back();
        source.controllerNumber = controller;
        source.responseCurve = curve;
        source.midiInput = input;
        return source;
    }
    float settled(MidiModSource& source) {
        return play(environment, source, 8 * 4096, 256).back();  // the longest ramp and more
    }

    wave::Environment environment;
    Cache cache;
    AbstractChannelEventReceiver receiver;
    std::vector<std::unique_ptr<MidiModSource>> sources;
};

constexpr ResponseCurve curves[] = {ResponseCurve::Linear, ResponseCurve::Exp,
                                    ResponseCurve::Log,    ResponseCurve::Sqr,
                                    ResponseCurve::Sqrt,   ResponseCurve::Sine};
constexpr MidiInput inputs[] = {MidiInput::ModWheel,      MidiInput::PitchBend,
                                MidiInput::Velocity,      MidiInput::Aftertouch,
                                MidiInput::KeyboardTrack, MidiInput::Controller};

}  // namespace

TEST_CASE("MidiModSource: every input through every curve") {
    for (const ResponseCurve curve : curves)
        for (const int data : {0, 1, 12, 13, 48, 64, 127}) {
            Rig rig;
            for (const MidiInput input : inputs)
                rig.add(input, curve, 7);
            const double x = data / 127.0;
            const auto sent = static_cast<float>(x);
            rig.receiver.controller(1, data, sent);
            rig.receiver.controller(7, data, sent);
            rig.receiver.controller(8, 99, 0.78f);
            rig.receiver.pitchBend(sent - 0.5f);
            rig.receiver.noteOn(data, sent);
            rig.receiver.noteOff(data, 0.3f);
            rig.receiver.channelPressure(0.3f);
            rig.receiver.polyPressure(60, sent);
            const auto f = [=](double value) { return curveAt(curve, value); };
            const double expected[] = {f(x), f(2.0 * x - 1.0),         2.0 * f(x) - 1.0,
                                       f(x), f(data / 120.0) - f(0.4), f(x)};
            for (std::size_t i = 0; i < std::size(inputs); ++i) {
                INFO("input " << i << ", curve " << static_cast<int>(curve) << ", data " << data);
                CHECK(static_cast<double>(rig.settled(*rig.sources[i])) ==
                      doctest::Approx(std::min(1.0, expected[i])).epsilon(2e-6));
                CHECK(rig.sources[i]->isConstant());
            }
        }
}

TEST_CASE("MidiModSource: a new input counts at once, a new curve or number with the next event") {
    Rig rig;
    rig.receiver.controller(7, 100, 0.8f);
    rig.receiver.noteOn(108, 0.25f);
    MidiModSource& source = rig.add(MidiInput::Controller, ResponseCurve::Sqr, 7);
    CHECK(rig.settled(source) == doctest::Approx(0.64));
    source.responseCurve = ResponseCurve::Linear;
    source.controllerNumber = 8;
    CHECK(rig.settled(source) == doctest::Approx(0.64));
    source.midiInput = MidiInput::KeyboardTrack;
    CHECK(rig.settled(source) == doctest::Approx(0.5));
    source.midiInput = MidiInput::Velocity;
    CHECK(rig.settled(source) == doctest::Approx(-0.5));
    source.midiInput = MidiInput::Controller;  // one that has never moved
    CHECK(rig.settled(source) == 0.0f);
    rig.receiver.controller(8, 0, 0.3f);
    CHECK(rig.settled(source) == doctest::Approx(0.3));
}

TEST_CASE("MidiModSource: notes jump where they may, everything else has its ramp") {
    Rig rig;
    rig.receiver.noteOn(60, 0.5f);
    MidiModSource& smooth = rig.add(MidiInput::Velocity, ResponseCurve::Linear);
    MidiModSource& sharp = rig.add(MidiInput::Velocity, ResponseCurve::Linear);
    sharp.setNoteRampMs(0.0f);
    MidiModSource& wheel = rig.add(MidiInput::ModWheel, ResponseCurve::Linear);
    wheel.setNoteRampMs(0.0f);
    const auto cycle = [&](int n) {
        rig.environment.beginBlock();
        for (const auto& source : rig.sources)
            source->pull(n);
        rig.environment.render(n, 0);
    };
    cycle(64);
    rig.receiver.noteOn(60, 1.0f);
    rig.cache.modulationWheel(1.0f);
    cycle(128);
    CHECK(sharp.getOutput()->data()[0] == 1.0f);
    CHECK(sharp.isConstant());
    for (const MidiModSource* source : {&smooth, &wheel}) {
        CHECK(source->getOutput()->data()[0] == 0.0f);
        CHECK((source->getOutput()->data()[127] > 0.05f && !source->isConstant()));
    }
    CHECK(smooth.getSourceValue() == 0.5f);  // the bar moves along
    cycle(256);
    cycle(1);
    CHECK(smooth.getSourceValue() > 0.6f);
}

TEST_CASE("MidiModSource: what the source bar shows") {
    Rig rig;
    rig.receiver.noteOn(48, 0.5f);
    rig.receiver.pitchBend(0.0f);
    CHECK(rig.add(MidiInput::PitchBend, ResponseCurve::Linear).getSourceValue() == 0.5f);
    CHECK(rig.add(MidiInput::Velocity, ResponseCurve::Linear).getSourceValue() == 0.5f);
    MidiModSource& wheel = rig.add(MidiInput::ModWheel, ResponseCurve::Linear);
    rig.cache.modulationWheel(0.3f);  // nobody pulls it, so there is no ramp to wait for
    CHECK(wheel.getSourceValue() == 0.3f);
    for (const ResponseCurve curve : curves) {
        MidiModSource& note = rig.add(MidiInput::KeyboardTrack, curve);
        CHECK(std::abs(rig.settled(note)) < 1e-6f);
        rig.receiver.noteOn(1, 0.5f);
        rig.settled(note);
        CHECK(note.getSourceValue() == doctest::Approx(0.0));
        rig.receiver.noteOn(120, 0.5f);
        rig.settled(note);
        CHECK(note.getSourceValue() == doctest::Approx(1.0));
        rig.receiver.noteOn(48, 0.5f);
    }
}

TEST_CASE("MidiModSource: numbers that are no input's and values that are no numbers") {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    Rig rig;
    const auto report = guarded([&] {
        for (const int number : {-1, 128, 132, 1 << 30, -(1 << 30)})
            rig.cache.controller(number, 0, 1.0f);
    });
    CHECK_MESSAGE(report.isClean(), report);
    for (int i = -2; i < Cache::numValues + 2; ++i)
        CHECK(rig.cache.valueAt(i) == 0.0f);
    for (const MidiInput input : inputs)
        for (const ResponseCurve curve : curves) {
            MidiModSource& source = rig.add(input, curve, -7);
            for (const float bad : {nan, infinity, -infinity, -3e38f, 3e38f}) {
                rig.cache.noteOn(std::numeric_limits<int>::min(), bad);
                rig.cache.pitchBend(bad);
                rig.cache.modulationWheel(bad);
                rig.cache.channelPressure(bad);
                CHECK(std::abs(rig.settled(source)) <= 1.0f);
            }
        }
    MidiModSource& strange = rig.add(static_cast<MidiInput>(99), static_cast<ResponseCurve>(-1));
    CHECK(rig.settled(strange) == 0.0f);
    rig.sources.clear();
    rig.receiver.noteOn(60, 1.0f);  // nobody follows any more
}
