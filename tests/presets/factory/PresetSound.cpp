#include "presets/factory/PresetSound.h"

#include "params/AbstractPluginParameter.h"
#include "processor/CinderProcessor.h"
#include "support/Spectrum.h"

#include "example_audio/Finish.h"
#include "example_audio/Instruments.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <numeric>
#include <string>

namespace cinder::test {

namespace {

constexpr int blockSize = 512;
constexpr float beatsPerMinute = 100.0f;
constexpr std::size_t barLength = presetRate * 24 / 10, silenceLength = presetRate;
constexpr std::uint32_t seed = 1;

constexpr struct {
    std::string_view name;
    example::Loop (*make)(int rate);
} loops[] = {{"drums", example::makeDrums},   {"chord", example::makeChord},
             {"bass", example::makeBass},     {"voice", example::makeVoice},
             {"guitar", example::makeGuitar}, {"mix", example::makeMix}};

/// At a step of a sixteenth, 0.15 s.
struct Message {
    int step;
    MidiEvent event;
};
constexpr std::uint8_t on = 0x90, off = 0x80, control = 0xB0, pressure = 0xD0, bend = 0xE0;
constexpr std::uint8_t modWheel = 1, volume = 7;
constexpr Message midiLine[] = {
    {0, {control, volume, 100}},
    {0, {on, 45, 100}},
    {3, {off, 45, 0}},
    {4, {on, 57, 60}},
    {5, {off, 57, 0}},
    {6, {on, 60, 80}},
    {8, {control, modWheel, 40}},
    {9, {off, 60, 0}},
    {10, {on, 64, 110}},
    {12, {bend, 0, 96}},
    {13, {off, 64, 0}},
    {13, {bend, 0, 64}},
    {14, {on, 52, 50}},
    {15, {off, 52, 0}},
    {16, {on, 41, 120}},
    {18, {pressure, 90}},
    {19, {off, 41, 0}},
    {19, {pressure, 0}},
    {20, {on, 53, 70}},
    {20, {control, modWheel, 90}},
    {21, {off, 53, 0}},
    {22, {on, 65, 90}},
    {24, {control, modWheel, 127}},
    {25, {off, 65, 0}},
    {26, {on, 60, 127}},
    {28, {pressure, 127}},
    {29, {off, 60, 0}},
    {30, {on, 48, 40}},
    {31, {off, 48, 0}},
};

Channels make(std::string_view name) {
    const auto* const loop =
        std::ranges::find(loops, name, [](const auto& row) { return row.name; });
    REQUIRE(loop != std::end(loops));
    Channels dry = example::finished(loop->make(presetRate), 2);
    for (auto& channel : dry) {
        channel.resize(audibleLength());
        // The cut makes no click of its own.
        constexpr std::size_t fade = presetRate / 100;
        for (std::size_t i = 0; i < fade; ++i)
            channel[channel.size() - 1 - i] *= static_cast<float>(i) / static_cast<float>(fade);
        channel.resize(audibleLength() + silenceLength);
    }
    return dry;
}

constexpr std::size_t frameLength = 4096;  // of which a tenth of a second is the middle
constexpr std::size_t frameHop = presetRate / 10;
constexpr std::size_t numOctaves = 10;
constexpr double lowestHz = 31.25 / std::numbers::sqrt2;
constexpr double floorDb = 50.0;

/// Adds the octaves of a frame: left, right, and what both have in common and what not. The spectra
/// come from one transform.
void addFrame(const Channels& sound, std::size_t at, Picture& picture) {
    std::vector<std::complex<double>> x(frameLength);
    for (std::size_t i = 0; i < frameLength; ++i) {
        const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / frameLength;
        const double window = 0.5 - 0.5 * std::cos(turn);
        x[i] = window * std::complex<double>(static_cast<double>(sound[0][at + i]),
                                             static_cast<double>(sound[1][at + i]));
    }
    fourierTransform(x);
    std::array<std::array<double, numOctaves>, 4> powers{};
    for (std::size_t k = 1; k < frameLength / 2; ++k) {
        const double hz = static_cast<double>(k) * presetRate / frameLength;
        const double octave = std::floor(std::log2(hz / lowestHz));
        if (octave < 0.0 || octave >= static_cast<double>(numOctaves)) continue;
        const auto row = static_cast<std::size_t>(octave);
        const std::complex<double> left = x[k] + std::conj(x[frameLength - k]);
        const std::complex<double> right =
            (x[k] - std::conj(x[frameLength - k])) * std::complex<double>(0.0, -1.0);
        powers[0][row] += std::norm(left);
        powers[1][row] += std::norm(right);
        powers[2][row] += std::norm(left + right);
        powers[3][row] += std::norm(left - right);
    }
    for (const auto& octaves : powers)
        for (const double power : octaves)
            picture.push_back(10.0 * std::log10(power + 1e-12));
}

}  // namespace

std::size_t audibleLength() {
    return 2 * barLength;
}

const Channels& dryAudio(std::string_view name) {
    static std::map<std::string, Channels, std::less<>> made;
    auto found = made.find(name);
    if (found == made.end()) found = made.emplace(name, make(name)).first;
    return found->second;
}

Channels renderPreset(std::span<const float> values, const Channels& dry) {
    CinderProcessor processor(stereoLayout, seed);
    processor.getEnvironment()->setSampleRate(presetRate);
    for (std::size_t id = 0; id < values.size(); ++id)
        processor.parameter(static_cast<int>(id))
            ->setValue(values[id], AbstractPluginParameter::hostKnows);
    processor.reset();
    Channels wet(2, std::vector<float>(dry[0].size()));
    const Message* next = std::begin(midiLine);
    for (std::size_t at = 0; at < dry[0].size(); at += blockSize) {
        const auto count = static_cast<int>(std::min<std::size_t>(blockSize, dry[0].size() - at));
        for (; next != std::end(midiLine); ++next) {
            const auto frame = static_cast<std::size_t>(next->step) * barLength / 16;
            if (frame >= at + static_cast<std::size_t>(count)) break;
            processor.enqueueMidiEvent(next->event, static_cast<std::int32_t>(frame - at));
        }
        processor.setTransport(beatsPerMinute,
                               static_cast<float>(at) / presetRate * beatsPerMinute / 60.0f);
        const float* const in[] = {dry[0].data() + at, dry[1].data() + at};
        float* const out[] = {wet[0].data() + at, wet[1].data() + at};
        processor.process(in, 2, out, 2, count);
    }
    return wet;
}

Picture pictureOf(const Channels& sound) {
    Picture picture;
    for (std::size_t at = 0; at + frameLength <= audibleLength(); at += frameHop)
        addFrame(sound, at, picture);
    const double lowest = *std::ranges::max_element(picture) - floorDb;
    for (double& level : picture)
        level = std::max(level, lowest);
    return picture;
}

double distanceOf(const Picture& a, const Picture& b) {
    const auto size = static_cast<double>(a.size());
    double sum = 0.0, squares = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sum += a[i] - b[i];
        squares += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return std::sqrt(std::max(0.0, squares / size - (sum / size) * (sum / size)));
}

}  // namespace cinder::test
