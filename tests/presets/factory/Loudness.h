#pragma once

#include <span>
#include <vector>

namespace cinder::test {

/// How loud a recording of 48 kHz is, in LUFS: the K-weighted power of all channels in blocks of
/// 0.4 s, four of which begin in every 0.4 s, without the silent ones (-70) and then without those
/// 10 below the mean of the rest. -infinity where nothing is left.
/// Source  ITU-R BS.1770-4, annex 1
double loudnessOf(std::span<const std::vector<float>> channels);

}  // namespace cinder::test
