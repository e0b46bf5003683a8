#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace cinder::test {

using Channels = std::vector<std::vector<float>>;

inline constexpr int presetRate = 48000;

/// Two bars of a loop of the example audio, 4.8 s, and the silence behind them in which a sound has
/// to come to rest.
/// Errors  fails the test for a name that no loop has
const Channels& dryAudio(std::string_view name);
std::size_t audibleLength();  ///< of it, without the silence

/// What the product makes of it, from the values of its parameters in the order of their ids. It
/// plays in blocks of 512 at the loop's 100 beats a minute, and whoever listens to MIDI hears a
/// line over both bars, with wheels and pressure.
Channels renderPreset(std::span<const float> values, const Channels& dry);

/// How a recording sounds: levels of its octaves in every tenth of a second, in dB, of left, right,
/// their sum and their difference. Nothing counts as lower than 50 dB below the loudest of them.
using Picture = std::vector<double>;
Picture pictureOf(const Channels& sound);

/// RMS of the differences between two pictures, in dB, when they are made equally loud.
double distanceOf(const Picture& a, const Picture& b);

}  // namespace cinder::test
