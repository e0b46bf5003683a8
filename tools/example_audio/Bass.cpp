#include "example_audio/Filters.h"
#include "example_audio/Instruments.h"
#include "example_audio/Oscillators.h"

#include <cmath>
#include <string_view>

namespace cinder::example {

namespace {

/// One bar. In the pattern a step is a note (R the root, 5 the fifth, 7 the seventh, O the octave,
/// small letters r and o the same but soft), '-' holds it, '/' slides to the next, '.' is a rest.
struct Bar {
    int root;
    std::string_view pattern;
};
constexpr Bar bars[barsPerLoop] = {
    {45, "R--r..O.R-.5.7o."},
    {41, "R--r..O.R-.5/-O."},
    {48, "R--r..o.R-.5.rO."},
    {43, "R--r..O.R-7.5-.."},  // a rest at the end, so that the loop closes in silence
};

constexpr double glideSeconds = 0.012, slideSeconds = 0.06, slideSemitones = 5.0;
constexpr double attack = 0.004, release = 0.030;
constexpr double restingHz = 240.0;  // the filter without its envelope
constexpr double sweepOctaves = 3.3, accentOctaves = 0.9, sweepSeconds = 0.17;
constexpr double subGain = 0.75;
constexpr double heldLevel = 0.45, heldSeconds = 0.35;  // where a plucked note settles, and when

constexpr double chorusMilliseconds = 9.0, chorusDepth = 2.5;
constexpr double chorusFromHz = 350.0, chorusGain = 0.45;

struct Step {
    bool isNote, isSounding, slides, isSoft;
    int note;
};

Step stepAt(int index) {
    const Bar& bar = bars[index / stepsPerBar];
    const char mark = bar.pattern[static_cast<size_t>(index % stepsPerBar)];
    Step step{true, true, false, false, bar.root};
    switch (mark) {
        case 'R':
            break;
        case 'r':
            step.isSoft = true;
            break;
        case '5':
            step.note += 7;
            break;
        case '7':
            step.note += 10;
            break;
        case 'o':
            step.isSoft = true;
            [[fallthrough]];
        case 'O':
            step.note += 12;
            break;
        case '/':
            step.slides = true;
            [[fallthrough]];
        case '-':
            step.isNote = false;
            break;
        default:
            step.isNote = step.isSounding = false;
    }
    return step;
}

/// The line itself: a saw and a square an octave below, through a filter that opens at each note.
Sound line(int rate, size_t length) {
    Sound sound(length);
    Saw saw;
    Square sub;
    StateVariableFilter filter;
    Glide glide(bars[0].root, glideSeconds, rate), slide(bars[0].root, slideSeconds, rate);
    const double rise = 1.0 - std::exp(-1.0 / (attack * rate));
    const double fall = 1.0 - std::exp(-1.0 / (release * rate));
    const double sweepDecay = std::exp(-1.0 / (sweepSeconds * rate));
    const double pluckDecay = std::exp(-1.0 / (heldSeconds * rate));
    double note = bars[0].root, accent = 1.0, pluck = 0.0, level = 0.0, sweep = 0.0;
    bool slides = false, sounds = false;
    const auto stepSamples = static_cast<size_t>(std::lround(stepSeconds * rate));
    for (size_t n = 0; n < length; ++n) {
        if (n % stepSamples == 0) {
            const Step step = stepAt(static_cast<int>(n / stepSamples));
            if (step.slides) note += slideSemitones;
            if (step.slides || step.isNote) slides = step.slides;
            if (step.isNote) {
                note = step.note;
                accent = step.isSoft ? 0.0 : 1.0;
                sweep = sweepOctaves + accentOctaves * accent;
                pluck = (1.0 - heldLevel) * (0.7 + 0.3 * accent);
            }
            sounds = step.isSounding;
        }
        const double wantedLevel = sounds ? heldLevel + pluck : 0.0;
        level += (wantedLevel > level ? rise : fall) * (wantedLevel - level);
        const double quick = glide.next(note), slow = slide.next(note);
        const double increment = hzOfNote(slides ? slow : quick) / rate;
        const double x = 0.6 * saw.next(increment) + subGain * sub.next(0.5 * increment);
        filter.set(restingHz * std::exp2(sweep), 1.3, rate);
        sweep *= sweepDecay;
        pluck *= pluckDecay;
        sound[n] = level * filter.next(x).low;
    }
    return sound;
}

/// What makes it wide: a wavering copy of the upper part, in opposite phase on both sides, so that
/// it cancels in mono and leaves the low end in the middle.
Sound sideOf(const Sound& mono, int rate) {
    Sound side(mono.size());
    StateVariableFilter filter;
    filter.set(chorusFromHz, 0.7, rate);
    for (size_t n = 0; n < side.size(); ++n) {
        const double turn = 6.0 * static_cast<double>(n) / static_cast<double>(side.size());
        const double milliseconds =
            chorusMilliseconds + chorusDepth * std::sin(2.0 * std::numbers::pi * turn);
        const double back = milliseconds / 1000.0 * rate;
        const auto whole = static_cast<size_t>(back);
        const double part = back - std::floor(back);
        const auto at = [&](size_t delay) { return mono[(n + mono.size() - delay) % mono.size()]; };
        const double delayed = (1.0 - part) * at(whole) + part * at(whole + 1);
        side[n] = chorusGain * filter.next(delayed).high;
    }
    return side;
}

}  // namespace

Loop makeBass(int rate) {
    Loop bass(rate);
    const Sound mono = line(rate, bass.size());
    const Sound side = sideOf(mono, rate);
    for (size_t n = 0; n < bass.size(); ++n) {
        bass.left[n] = mono[n] + side[n];
        bass.right[n] = mono[n] - side[n];
    }
    return bass;
}

}  // namespace cinder::example
