#include "example_audio/Loop.h"

#include <cmath>
#include <numbers>

namespace cinder::example {

Loop::Loop(int rate) : rate(rate) {
    left.resize(static_cast<size_t>(std::lround(stepsPerLoop * stepSeconds * rate)));
    right.resize(left.size());
}

size_t Loop::sampleAt(double step) const {
    return static_cast<size_t>(std::lround(step * stepSeconds * rate)) % size();
}

void Loop::add(size_t at, const Sound& sound, double gain, double pan) {
    const double angle = (pan + 1.0) * std::numbers::pi / 4.0;
    const double leftGain = gain * std::cos(angle) * std::numbers::sqrt2;
    const double rightGain = gain * std::sin(angle) * std::numbers::sqrt2;
    for (size_t i = 0; i < sound.size(); ++i) {
        const size_t n = (at + i) % size();
        left[n] += leftGain * sound[i];
        right[n] += rightGain * sound[i];
    }
}

void Loop::add(const Loop& other, double gain) {
    for (size_t n = 0; n < size(); ++n) {
        left[n] += gain * other.left[n];
        right[n] += gain * other.right[n];
    }
}

double gainOfDb(double db) {
    return std::pow(10.0, db / 20.0);
}

double hzOfNote(double note) {
    return 440.0 * std::exp2((note - 69.0) / 12.0);
}

}  // namespace cinder::example
