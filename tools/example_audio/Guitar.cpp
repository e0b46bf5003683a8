#include "example_audio/Filters.h"
#include "example_audio/Instruments.h"
#include "example_audio/Random.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>

namespace cinder::example {

namespace {

using std::numbers::pi;

/// What both hands do at a step: the notes from low to high, 0 for none. Damped is with the edge of
/// the hand on the strings, at the bridge.
struct Stroke {
    int step;
    double length, velocity;
    bool isDamped, isUp;
    std::array<int, 6> notes;
};
constexpr Stroke strokes[] = {
    // Am
    {0, 2.8, 1.00, false, false, {45, 52, 57}},
    {3, 0.9, 0.60, true, false, {45}},
    {4, 0.9, 0.70, true, false, {45}},
    {5, 0.9, 0.55, true, true, {45}},
    {6, 1.9, 0.90, false, false, {45, 52, 57, 60, 64}},
    {8, 0.9, 0.70, true, false, {45}},
    {9, 0.9, 0.55, true, true, {45}},
    {10, 1.5, 0.80, false, false, {57, 60}},
    {12, 0.9, 0.75, false, false, {60}},
    {13, 1.0, 0.65, false, true, {62}},
    {14, 2.2, 0.80, false, false, {64}},
    // F
    {16, 2.8, 0.95, false, false, {41, 48, 53}},
    {19, 0.9, 0.60, true, false, {41}},
    {20, 0.9, 0.70, true, false, {41}},
    {21, 0.9, 0.55, true, true, {41}},
    {22, 1.9, 0.90, false, false, {41, 48, 53, 57, 60, 65}},
    {24, 0.9, 0.70, true, false, {41}},
    {25, 0.9, 0.55, true, true, {41}},
    {26, 1.6, 0.80, false, false, {53, 57, 60}},
    {28, 1.6, 0.70, false, true, {57, 60, 65}},
    {30, 1.6, 0.80, false, false, {57, 60, 64}},
    // C, in broken chords
    {32, 7.5, 0.85, false, false, {48}},
    {33, 6.5, 0.60, false, false, {55}},
    {34, 5.5, 0.60, false, false, {60}},
    {35, 4.5, 0.70, false, true, {64}},
    {36, 3.5, 0.60, false, true, {67}},
    {37, 2.5, 0.55, false, true, {64}},
    {38, 1.5, 0.60, false, false, {60}},
    {40, 3.8, 0.90, false, false, {48, 52, 55, 60, 64}},
    {44, 1.4, 0.70, false, true, {55, 60, 64}},
    {46, 1.6, 0.80, false, false, {55, 59, 62}},
    // G, and a run home
    {48, 2.8, 1.00, false, false, {43, 50, 55}},
    {51, 0.9, 0.60, true, false, {43}},
    {52, 0.9, 0.70, true, false, {43}},
    {53, 0.9, 0.55, true, true, {43}},
    {54, 2.6, 0.90, false, false, {43, 47, 50, 55, 59, 67}},
    {57, 0.9, 0.70, false, true, {67}},
    {58, 0.9, 0.75, false, false, {64}},
    {59, 0.9, 0.65, false, true, {62}},
    {60, 0.9, 0.75, false, false, {59}},
    {61, 0.9, 0.65, false, true, {57}},
    {62, 0.9, 0.80, false, false, {55}},
    {63, 0.8, 0.60, false, true, {52}},
};

constexpr double pluckedAt = 0.13, pickupAt = 0.21;  // of the string's length
constexpr double damping = 0.06;                     // of a string that is let go, in seconds
constexpr double openDecay = 1.6, dampedDecay = 0.16;
constexpr double dullingHz = 1100.0;   // where a string rings for half as long
constexpr double stiffness = 0.00006;  // how far partials are out of tune
constexpr double strumSteps = 0.06;    // from string to string
constexpr double highestHz = 7000.0;
constexpr double coilHz = 3400.0, coilQ = 1.6;  // the pickup's resonance, with its cable
constexpr double pickNoise = 0.05, pickSeconds = 0.004;

/// A string that is pulled aside and let go: its partials, as the pickup sees their speed, each of
/// which dies the faster the higher it is. Soft strokes leave out the high ones.
Sound stringNote(int rate, int note, const Stroke& stroke, Random& random) {
    const double held = stroke.length * stepSeconds;
    Sound sound(static_cast<size_t>((held + 6.0 * damping) * rate));
    const double hz = hzOfNote(note);
    const double brightHz = (stroke.isDamped ? 900.0 : 2600.0) * (0.5 + stroke.velocity);
    for (int n = 1; n * hz < highestHz; ++n) {
        const double partialHz = n * hz * std::sqrt(1.0 + stiffness * n * n);
        const double octaves = std::max(0.0, std::log2(partialHz / brightHz));
        const double amplitude = std::sin(n * pi * pluckedAt) * std::sin(n * pi * pickupAt) / n *
                                 std::exp2(-1.5 * octaves);
        const double dulling = 1.0 + std::pow(partialHz / dullingHz, 1.5);
        const double decay = (stroke.isDamped ? dampedDecay : openDecay) / dulling;
        auto turning = std::polar(amplitude, 2.0 * pi * random.unit());
        const auto turn = std::polar(std::exp(-1.0 / (decay * rate)), 2.0 * pi * partialHz / rate);
        for (double& x : sound) {
            x += turning.imag();
            turning *= turn;
        }
    }
    for (size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / rate;
        sound[i] += pickNoise * random.noise() * std::exp(-t / pickSeconds);
        const double release = t < held ? 1.0 : std::exp(-(t - held) / damping);
        sound[i] *= stroke.velocity * release * std::min(1.0, t / 0.0012);
    }
    return sound;
}

/// The coil, from which a guitar has its bite and above which it has nothing.
void passPickup(Sound& sound, int rate) {
    StateVariableFilter filter;
    filter.set(coilHz, coilQ, rate);
    for (const double x : sound)
        filter.next(x);  // as if the loop had run before
    for (double& x : sound)
        x = filter.next(x).low;
}

}  // namespace

Loop makeGuitar(int rate) {
    Loop guitar(rate);
    Random random(6);
    for (const Stroke& stroke : strokes) {
        const auto numStrings =
            static_cast<size_t>(std::ranges::find(stroke.notes, 0) - stroke.notes.begin());
        for (size_t string = 0; string < numStrings; ++string) {
            const size_t order = stroke.isUp ? numStrings - 1 - string : string;
            const double at = stroke.step + strumSteps * static_cast<double>(order);
            // Each string has a pickup of its own, a little aside of the next.
            const double pan = 0.11 * static_cast<double>(string) - 0.2;
            guitar.add(guitar.sampleAt(at), stringNote(rate, stroke.notes[string], stroke, random),
                       0.5, pan);
        }
    }
    passPickup(guitar.left, rate);
    passPickup(guitar.right, rate);
    return guitar;
}

}  // namespace cinder::example
