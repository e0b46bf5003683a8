#include "example_audio/Reverb.h"

#include "example_audio/Filters.h"

#include <array>
#include <cmath>

namespace cinder::example {

namespace {

constexpr size_t numLines = 8;
constexpr std::array<double, numLines> lineMilliseconds = {23.9, 29.7, 31.3, 37.1,
                                                           41.9, 43.7, 53.3, 59.9};

class DelayLine {
public:
    DelayLine(double seconds, double decaySeconds, double dampingHz, int rate)
        : samples(static_cast<size_t>(std::lround(seconds * rate))),
          gain(std::pow(10.0, -3.0 * seconds / decaySeconds)),
          damping(0.0, 1.0 / (2.0 * std::numbers::pi * dampingHz), rate) {}

    double read() { return gain * damping.next(samples[position]); }

    void write(double x) {
        samples[position] = x;
        position = (position + 1) % samples.size();
    }

private:
    Sound samples;
    size_t position = 0;
    double gain;
    Glide damping;
};

using Lanes = std::array<double, numLines>;

void hadamard(Lanes& x) {
    for (size_t half = 1; half < numLines; half *= 2)
        for (size_t i = 0; i < numLines; ++i)
            if ((i & half) == 0) {
                const double a = x[i];
                const double b = x[i + half];
                x[i] = a + b;
                x[i + half] = a - b;
            }
    for (double& value : x)
        value /= std::sqrt(static_cast<double>(numLines));
}

}  // namespace

Loop reverb(const Loop& send, const ReverbRecipe& recipe) {
    std::vector<DelayLine> lines;
    lines.reserve(numLines);
    for (const double milliseconds : lineMilliseconds)
        lines.emplace_back(recipe.size * milliseconds / 1000.0, recipe.decaySeconds,
                           recipe.dampingHz, send.rate);
    std::array<StateVariableFilter, 2> lowCut;
    for (auto& filter : lowCut)
        filter.set(recipe.lowCutHz, 0.7, send.rate);

    Loop wet(send.rate);
    const auto preDelay = static_cast<size_t>(std::lround(recipe.preDelaySeconds * send.rate));
    // The first round fills the room, the second is what is heard when the loop comes again.
    for (int round = 0; round < 2; ++round)
        for (size_t n = 0; n < send.size(); ++n) {
            const size_t from = (n + send.size() - preDelay) % send.size();
            const double inputs[] = {lowCut[0].next(send.left[from]).high,
                                     lowCut[1].next(send.right[from]).high};
            Lanes lanes{};
            for (size_t line = 0; line < numLines; ++line)
                lanes[line] = lines[line].read();
            wet.left[n] = 0.5 * (lanes[0] - lanes[2] + lanes[4] - lanes[6]);
            wet.right[n] = 0.5 * (lanes[1] - lanes[3] + lanes[5] - lanes[7]);
            hadamard(lanes);
            for (size_t line = 0; line < numLines; ++line)
                lines[line].write(lanes[line] + inputs[line % 2]);
        }
    return wet;
}

}  // namespace cinder::example
