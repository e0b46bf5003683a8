#include "example_audio/Filters.h"
#include "example_audio/Instruments.h"
#include "example_audio/Oscillators.h"
#include "example_audio/Random.h"
#include "example_audio/Reverb.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string_view>

namespace cinder::example {

namespace {

// A throat of 17 cm resonates about every 1000 Hz. The vowel moves the lowest three; without the
// many above, there would be no treble.
constexpr size_t numFormants = 16;
constexpr size_t numMoving = 3;

/// What the mouth does for one sound of speech. Formants of 0 are those of the vowel to come.
struct Phoneme {
    char name;
    std::array<double, numMoving> formants;  // Hz
    double voicing, breath;                  // folds, and air through the formants
    double hiss, hissHz, hissQ;              // noise made at the teeth, past the formants
    double closure, length;  // seconds: lips or tongue shut first, then this; 0 is a vowel
};

constexpr Phoneme phonemes[] = {
    // name  formants Hz          voice  breath  hiss   Hz      Q    closure length
    {'a', {730.0, 1090.0, 2440.0}, 1.00, 0.030, 0.00, 4000.0, 1.0, 0.0, 0.0},
    {'e', {530.0, 1840.0, 2480.0}, 1.00, 0.030, 0.00, 4000.0, 1.0, 0.0, 0.0},
    {'i', {290.0, 2250.0, 3010.0}, 1.00, 0.030, 0.00, 4000.0, 1.0, 0.0, 0.0},
    {'o', {500.0, 850.0, 2410.0}, 1.00, 0.030, 0.00, 4000.0, 1.0, 0.0, 0.0},
    {'u', {310.0, 870.0, 2240.0}, 1.00, 0.030, 0.00, 4000.0, 1.0, 0.0, 0.0},
    {'m', {260.0, 1000.0, 2200.0}, 0.55, 0.000, 0.00, 4000.0, 1.0, 0.0, 0.08},
    {'n', {270.0, 1600.0, 2600.0}, 0.50, 0.000, 0.00, 4000.0, 1.0, 0.0, 0.07},
    {'l', {360.0, 1250.0, 2750.0}, 0.60, 0.010, 0.00, 4000.0, 1.0, 0.0, 0.07},
    {'r', {330.0, 1100.0, 1500.0}, 0.65, 0.010, 0.00, 4000.0, 1.0, 0.0, 0.07},
    {'w', {300.0, 620.0, 2200.0}, 0.65, 0.010, 0.00, 4000.0, 1.0, 0.0, 0.07},
    {'y', {270.0, 2200.0, 3000.0}, 0.70, 0.010, 0.00, 4000.0, 1.0, 0.0, 0.07},
    {'s', {0.0, 0.0, 0.0}, 0.00, 0.010, 0.55, 7200.0, 1.6, 0.0, 0.10},
    {'S', {0.0, 0.0, 0.0}, 0.00, 0.020, 0.60, 3100.0, 1.8, 0.0, 0.10},
    {'h', {0.0, 0.0, 0.0}, 0.05, 0.300, 0.06, 2500.0, 0.7, 0.0, 0.08},
    {'t', {0.0, 0.0, 0.0}, 0.00, 0.060, 1.00, 4600.0, 1.0, 0.045, 0.022},
    {'k', {0.0, 0.0, 0.0}, 0.00, 0.080, 1.00, 1900.0, 1.8, 0.045, 0.030},
    {'d', {300.0, 1700.0, 2600.0}, 0.35, 0.020, 0.70, 3800.0, 1.0, 0.035, 0.014},
};
constexpr Phoneme rest = {'.', {0.0, 0.0, 0.0}, 0.0, 0.0, 0.0, 4000.0, 1.0, 0.0, 0.0};

/// A syllable begins its vowel on the step; consonants come before, as singers place them.
struct Syllable {
    double step, length;  // in steps
    int note;
    std::string_view phonemes;  // consonants, then one or two vowels
};
constexpr Syllable melody[] = {
    {2.0, 2.0, 45, "sa"},  {4.0, 2.0, 48, "ra"},   {6.0, 5.0, 52, "mi"},   {12.0, 1.6, 50, "lo"},
    {14.0, 1.8, 48, "na"}, {16.0, 6.5, 45, "doi"}, {24.0, 1.8, 48, "Se"},  {26.0, 2.0, 50, "ko"},
    {28.0, 3.2, 52, "ta"}, {32.0, 5.5, 55, "ya"},  {38.0, 1.8, 52, "ne"},  {40.0, 3.0, 50, "wo"},
    {44.0, 1.6, 48, "su"}, {46.0, 2.0, 50, "ri"},  {48.0, 5.5, 47, "hai"}, {54.0, 1.8, 45, "ke"},
    {56.0, 5.5, 43, "mo"},
};

constexpr double formantGlide = 0.022, levelGlide = 0.009, hissGlide = 0.0025;  // seconds
constexpr double pitchGlide = 0.035, diphthongFrom = 0.55;                      // of the vowel
constexpr double vibratoHz = 5.3, vibratoSemitones = 0.38, vibratoAfter = 0.22, vibratoRise = 0.25;
constexpr double jitterSemitones = 0.9, jitterSeconds = 0.03;
constexpr double tiltHz = 4500.0;  // the folds never close in an instant
constexpr ReverbRecipe plate = {0.8, 1.3, 5500.0, 250.0, 0.022};

double fixedFormantHz(size_t index) {
    return index == numMoving ? 3250.0 : 1000.0 * static_cast<double>(index) + 400.0;
}

double bandwidthOf(double hz) {
    return 60.0 + 14e-6 * hz * hz;
}

const Phoneme& phonemeOf(char name) {
    const auto* found = std::find_if(std::begin(phonemes), std::end(phonemes),
                                     [&](const Phoneme& p) { return p.name == name; });
    if (found == std::end(phonemes)) throw std::logic_error("no such phoneme");
    return *found;
}

/// From `start` on, the mouth moves towards `mouth` and the voice towards `note`.
struct Event {
    double start;  // seconds
    Phoneme mouth;
    int note;
    bool beginsVowel;
};

std::vector<Event> timeline() {
    std::vector<Event> events;
    for (const Syllable& syllable : melody) {
        const Phoneme& vowel =
            phonemeOf(*std::find_if(syllable.phonemes.begin(), syllable.phonemes.end(),
                                    [](char name) { return phonemeOf(name).length == 0.0; }));
        const double onset = syllable.step * stepSeconds;
        const double length = syllable.length * stepSeconds;
        double start = onset;
        for (const char name : syllable.phonemes)
            start -= phonemeOf(name).closure + phonemeOf(name).length;

        bool isFirstVowel = true;
        for (const char name : syllable.phonemes) {
            Phoneme mouth = phonemeOf(name);
            if (mouth.formants[0] == 0.0) mouth.formants = vowel.formants;
            if (mouth.closure > 0.0) {
                Phoneme closed = rest;
                closed.formants = mouth.formants;
                events.push_back({start, closed, syllable.note, false});
                start += mouth.closure;
            }
            const bool isVowel = mouth.length == 0.0;
            events.push_back({start, mouth, syllable.note, isVowel && isFirstVowel});
            if (isVowel && isFirstVowel) start += diphthongFrom * length;
            isFirstVowel = isFirstVowel && !isVowel;
            start += mouth.length;
        }
        Phoneme silence = rest;
        silence.formants = phonemeOf(syllable.phonemes.back()).formants;
        events.push_back({onset + length, silence, syllable.note, false});
    }
    // Where a consonant begins before the last syllable has ended, it cuts it short.
    std::stable_sort(events.begin(), events.end(),
                     [](const Event& a, const Event& b) { return a.start < b.start; });
    return events;
}

/// The singer: follows the events and breathes.
class Singer {
public:
    Singer(int rate, const Event& first)
        : rate(rate),
          random(4),
          mouth(first.mouth),
          note(first.note),
          pitch(first.note, pitchGlide, rate),
          jitter(0.0, jitterSeconds, rate),
          voicing(0.0, levelGlide, rate),
          breath(0.0, levelGlide, rate),
          hiss(0.0, hissGlide, rate),
          tilt(0.0, 1.0 / (2.0 * std::numbers::pi * tiltHz), rate) {
        for (const double hz : mouth.formants)
            formants.emplace_back(hz, formantGlide, rate);
        for (size_t i = numMoving; i < numFormants; ++i)
            resonators[i].set(fixedFormantHz(i), bandwidthOf(fixedFormantHz(i)), rate);
    }

    void follow(const Event& event) {
        mouth = event.mouth;
        note = event.note;
        if (event.beginsVowel) secondsHeld = 0.0;
        noise.set(mouth.hissHz, mouth.hissQ, rate);
    }

    double next() {
        secondsHeld += 1.0 / rate;
        const double increment = hzOfNote(nextNote()) / rate;
        const double air = random.noise();
        // Breath passes only while the folds are apart.
        const double breathing = folds.areOpen() ? 1.0 : 0.35;
        const double source = tilt.next(voicing.next(mouth.voicing) * folds.next(increment)) +
                              breath.next(mouth.breath) * breathing * air;
        for (size_t i = 0; i < numMoving; ++i) {
            const double hz = formants[i].next(mouth.formants[i]);
            resonators[i].set(hz, bandwidthOf(hz), rate);
        }
        double y = source;
        for (Resonator& resonator : resonators)
            y = resonator.next(y);
        return y + hiss.next(mouth.hiss) * noise.next(random.noise()).band;
    }

private:
    double nextNote() {
        vibratoPhase = wrapped(vibratoPhase + vibratoHz / rate);
        const double depth =
            vibratoSemitones * std::clamp((secondsHeld - vibratoAfter) / vibratoRise, 0.0, 1.0);
        return pitch.next(note) + depth * std::sin(2.0 * std::numbers::pi * vibratoPhase) +
               jitterSemitones * jitter.next(random.noise());
    }

    const int rate;
    Random random;
    Phoneme mouth;
    double note;
    double secondsHeld = 0.0;
    double vibratoPhase = 0.0;
    Glide pitch, jitter, voicing, breath, hiss, tilt;
    std::vector<Glide> formants;
    VocalFolds folds;
    StateVariableFilter noise;
    std::array<Resonator, numFormants> resonators;
};

Sound sung(int rate, size_t length) {
    const std::vector<Event> events = timeline();
    Singer singer(rate, events.front());
    Sound sound(length);
    auto event = events.begin();
    for (size_t n = 0; n < length; ++n) {
        for (; event != events.end() && event->start * rate <= static_cast<double>(n); ++event)
            singer.follow(*event);
        sound[n] = singer.next();
    }
    return sound;
}

}  // namespace

Loop makeVoice(int rate) {
    Loop voice(rate);
    voice.add(0, sung(rate, voice.size()), 1.0, 0.0);
    voice.add(reverb(voice, plate), 0.10);
    return voice;
}

}  // namespace cinder::example
