#include "example_audio/Instruments.h"

#include "example_audio/Filters.h"

#include <cmath>
#include <string_view>

namespace cinder::example {

namespace {

struct Part {
    Loop (*make)(int rate);
    double levelDb;          // RMS
    std::string_view plays;  // a character for each half bar
};

constexpr Part parts[] = {
    {makeDrums, -15.0, "xxxxxxxx"},
    {makeBass, -16.5, "xxxxxxx."},
    {makeChord, -21.5, "xxxxxxxx"},
    {makeVoice, -20.0, "xxxxxxxx"},
};
constexpr double switchSeconds = 0.010;

double rmsOf(const Loop& loop) {
    double sum = 0.0;
    for (size_t n = 0; n < loop.size(); ++n)
        sum += loop.left[n] * loop.left[n] + loop.right[n] * loop.right[n];
    return std::sqrt(sum / (2.0 * static_cast<double>(loop.size())));
}

/// Fades a part in and out as its row says.
void arrange(Loop& loop, std::string_view plays) {
    Glide level(plays.back() == 'x' ? 1.0 : 0.0, switchSeconds, loop.rate);
    for (size_t n = 0; n < loop.size(); ++n) {
        const bool isPlaying = plays[n * plays.size() / loop.size()] == 'x';
        const double gain = level.next(isPlaying ? 1.0 : 0.0);
        loop.left[n] *= gain;
        loop.right[n] *= gain;
    }
}

}  // namespace

Loop makeMix(int rate) {
    Loop mix(rate);
    for (const Part& part : parts) {
        Loop loop = part.make(rate);
        const double gain = gainOfDb(part.levelDb) / rmsOf(loop);
        arrange(loop, part.plays);
        mix.add(loop, gain);
    }
    return mix;
}

}  // namespace cinder::example
