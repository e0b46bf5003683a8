#include "example_audio/Filters.h"
#include "example_audio/Instruments.h"
#include "example_audio/Oscillators.h"
#include "example_audio/Random.h"
#include "example_audio/Reverb.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cinder::example {

namespace {

using std::numbers::pi;

/// One bar of harmony: notes from low to high, close to those of the bars beside it.
using Chord = std::array<int, 5>;
constexpr std::array<Chord, barsPerLoop> progression = {{
    {57, 60, 64, 67, 71},  // Am9
    {57, 60, 64, 65, 67},  // Fmaj9, its root in the bass
    {55, 59, 60, 62, 64},  // Cmaj9
    {55, 59, 62, 64, 69},  // G6/9
}};

/// Where the stabs fall in the bars: step, length in steps, velocity.
struct Stab {
    int step;
    double length, velocity;
};
constexpr Stab stabs[] = {
    {0, 2.2, 0.80},  {3, 1.0, 0.60},  {6, 2.5, 0.90},  {11, 0.8, 0.55}, {14, 1.6, 0.75},
    {16, 2.2, 0.75}, {19, 1.0, 0.60}, {22, 2.5, 0.90}, {28, 1.2, 0.65}, {30, 0.8, 0.80},
    {32, 2.2, 0.80}, {35, 1.0, 0.60}, {38, 2.5, 0.95}, {43, 0.8, 0.55}, {46, 1.6, 0.75},
    {48, 2.2, 0.80}, {51, 1.0, 0.65}, {54, 3.5, 1.00}, {60, 1.0, 0.70}, {62, 1.2, 0.50},
};

constexpr double detuneCents[] = {-8.0, 0.0, 7.0};
constexpr double padAttack = 0.10, padRelease = 0.22;      // seconds
constexpr double padDarkHz = 500.0, padBrightHz = 3600.0;  // the sweep, once in a loop
constexpr size_t sweepInterval = 16;                       // samples
constexpr double stabRelease = 0.09;
constexpr ReverbRecipe hall = {1.3, 2.2, 4200.0, 200.0, 0.018};

/// Saws out of tune with one another, in a slow filter sweep that meets itself at the loop's end.
Sound padNote(int rate, int bar, int note, Random& random) {
    const double held = stepsPerBar * stepSeconds;
    Sound sound(static_cast<size_t>((held + 6.0 * padRelease) * rate));
    std::array<Saw, std::size(detuneCents)> saws;
    for (Saw& saw : saws)
        saw = Saw(random.unit());
    std::array<double, std::size(detuneCents)> increments{};
    for (size_t voice = 0; voice < saws.size(); ++voice)
        increments[voice] = hzOfNote(note + detuneCents[voice] / 100.0) / rate;
    StateVariableFilter filter;
    for (size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / rate;
        double x = 0.0;
        for (size_t voice = 0; voice < saws.size(); ++voice)
            x += saws[voice].next(increments[voice]);
        if (i % sweepInterval == 0) {
            const double turn = (bar + t / held) / barsPerLoop;
            const double sweep = 0.5 - 0.5 * std::cos(2.0 * pi * turn);
            filter.set(padDarkHz * std::pow(padBrightHz / padDarkHz, sweep), 0.9, rate);
        }
        const double level =
            t < held ? 1.0 - std::exp(-t / padAttack) : std::exp(-(t - held) / padRelease);
        sound[i] = level * filter.next(x).low;
    }
    return sound;
}

/// An electric piano: a sine bent by another of the same pitch, and the short ping of its tine.
Sound stabNote(int rate, int note, double seconds, double velocity) {
    Sound sound(static_cast<size_t>((seconds + 6.0 * stabRelease) * rate));
    const double hz = hzOfNote(note);
    for (size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / rate;
        const double phase = 2.0 * pi * hz * t;
        const double bend = 2.4 * velocity * std::exp(-t / 0.22) + 0.25;
        const double tine = 0.8 * velocity * std::exp(-t / 0.035) * std::sin(14.0 * phase);
        const double body = std::sin(phase + bend * std::sin(phase) + tine);
        const double release = t < seconds ? 1.0 : std::exp(-(t - seconds) / stabRelease);
        sound[i] = body * velocity * release * std::exp(-t / 0.9) * std::min(1.0, t / 0.0015);
    }
    return sound;
}

/// Where in the room a note of a chord sits: low notes in the middle, the others to both sides.
double panOf(size_t voice) {
    constexpr std::array<double, std::tuple_size_v<Chord>> pans = {0.0, -0.3, 0.3, -0.6, 0.6};
    return pans[voice];
}

}  // namespace

Loop makeChord(int rate) {
    Loop chord(rate);
    Random random(2);
    for (int bar = 0; bar < barsPerLoop; ++bar)
        for (size_t voice = 0; voice < progression[0].size(); ++voice) {
            const int note = progression[static_cast<size_t>(bar)][voice];
            chord.add(chord.sampleAt(bar * stepsPerBar), padNote(rate, bar, note, random), 0.10,
                      panOf(voice));
        }
    for (const Stab& stab : stabs) {
        const Chord& notes = progression[static_cast<size_t>(stab.step / stepsPerBar)];
        for (size_t voice = 0; voice < notes.size(); ++voice) {
            // A hand never falls on all keys at once.
            const double roll = 0.05 * static_cast<double>(voice);
            const Sound sound =
                stabNote(rate, notes[voice] + 12, stab.length * stepSeconds, stab.velocity);
            chord.add(chord.sampleAt(stab.step + roll), sound, 0.22, -0.8 * panOf(voice));
        }
    }
    chord.add(reverb(chord, hall), 0.12);
    return chord;
}

}  // namespace cinder::example
