#include "cinder/bench/ProductRun.h"

#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace cinder {

namespace {

constexpr std::uint32_t seed = 1;
constexpr double secondsOfMusic = 0.5;
constexpr double secondsOfSilence = 8.0;  // noise falls slowly, and what is left is exact
constexpr int settingsPerBlock = 8;
constexpr int numMusicBlocks = 64;

constexpr double twoPi = 6.283185307179586;
constexpr double chordHz[] = {55.0, 220.0, 277.2, 329.6, 1318.5, 5274.0};
constexpr double beatSeconds = 0.125;

/// Chords on a beat, and noise between: some energy in every band, and a level that moves.
std::vector<float> makeMusic(int numSamples, int channel) {
    std::vector<float> samples(static_cast<std::size_t>(numSamples));
    std::uint32_t state = 12345u + static_cast<std::uint32_t>(channel);
    for (int i = 0; i < numSamples; ++i) {
        const double seconds = i / static_cast<double>(ProductRun::sampleRate);
        const double decay = std::exp(-12.0 * std::fmod(seconds, beatSeconds));
        double sum = 0.0;
        for (const double hz : chordHz)
            sum += 0.08 * std::sin(twoPi * hz * seconds + 0.4 * channel);
        state = state * 1664525u + 1013904223u;
        const double noise = static_cast<double>(state >> 8) / 8388608.0 - 1.0;
        samples[static_cast<std::size_t>(i)] = static_cast<float>(decay * sum + 0.02 * noise);
    }
    return samples;
}

}  // namespace

ProductRun::ProductRun(const BenchRow& row, int blockSize)
    : blockSize(blockSize),
      settleSeconds(row.signal == BenchRow::Signal::Silence ? secondsOfSilence : secondsOfMusic),
      processor(stereoLayout, seed) {
    processor.getEnvironment()->setSampleRate(sampleRate);
    for (const BenchRow::Setting& setting : row.settings)
        apply(setting);
    processor.setBypass(row.bypassed, GenericPluginProcessor::hostBypassIndex);
    processor.requestDiscontinuity();
    for (int i = 0; i < numChannels; ++i) {
        const auto channel = static_cast<std::size_t>(i);
        music[channel] = row.signal == BenchRow::Signal::Silence
                             ? std::vector<float>(static_cast<std::size_t>(blockSize))
                             : makeMusic(blockSize * numMusicBlocks, i);
        heard[channel].resize(static_cast<std::size_t>(blockSize));
    }
}

void ProductRun::apply(const BenchRow::Setting& setting) {
    for (int id = 0; id < processor.parameterCount(); ++id) {
        AbstractPluginParameter& parameter = *processor.parameter(id);
        if (parameter.getName() != setting.parameter) continue;
        float value = 0.0f;
        if (!parameter.parseText(setting.text, value)) break;
        parameter.setValue(value, 0);
        return;
    }
    throw std::logic_error(setting.parameter + " = " + setting.text + " is no setting");
}

void ProductRun::settle() {
    for (double frames = settleSeconds * static_cast<double>(sampleRate); frames > 0.0;
         frames -= blockSize)
        playBlock();
}

/// All but the quality, which changes what a block costs for good.
void ProductRun::setRandomly() {
    for (int i = 0; i < settingsPerBlock; ++i) {
        const auto id =
            static_cast<int>((*random)() % static_cast<unsigned>(processor.parameterCount()));
        AbstractPluginParameter& parameter = *processor.parameter(id);
        const float place = static_cast<float>((*random)() % 1024u) / 1023.0f;
        if (parameter.getName() != "High Quality")
            parameter.setValue(parameter.denormalize(place), 0);
    }
}

void ProductRun::playBlock() {
    if (random) setRandomly();
    if (position + heard[0].size() > music[0].size()) position = 0;
    const float* const in[numChannels] = {music[0].data() + position, music[1].data() + position};
    float* const out[numChannels] = {heard[0].data(), heard[1].data()};
    processor.process(in, numChannels, out, numChannels, blockSize);
    position += heard[0].size();
}

}  // namespace cinder
