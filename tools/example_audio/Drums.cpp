#include "example_audio/Filters.h"
#include "example_audio/Instruments.h"
#include "example_audio/Oscillators.h"
#include "example_audio/Random.h"
#include "example_audio/Reverb.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace cinder::example {

namespace {

using std::numbers::pi;

/// What a drum is struck with: one generator for each.
struct Strike {
    int rate;
    double velocity;  // 0..1: louder is also brighter
    Random& random;
};

double decay(double seconds, double tau) {
    return std::exp(-seconds / tau);
}

template <typename Next>
Sound rendered(const Strike& strike, double seconds, Next next) {
    Sound sound(static_cast<size_t>(seconds * strike.rate));
    const double fadeFrom = 0.9 * seconds;
    for (size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / strike.rate;
        const double fade = t < fadeFrom ? 1.0 : (seconds - t) / (seconds - fadeFrom);
        sound[i] = fade * next(t);
    }
    return sound;
}

/// A skin: a sine whose pitch falls from `startHz` to `endHz` within `fallSeconds`.
class Skin {
public:
    Skin(double startHz, double endHz, double fallSeconds, int rate)
        : startHz(startHz), endHz(endHz), fallSeconds(fallSeconds), rate(rate) {}

    double next(double t) {
        phase += (endHz + (startHz - endHz) * decay(t, fallSeconds)) / rate;
        return std::sin(2.0 * pi * phase);
    }

private:
    double startHz, endHz, fallSeconds;
    int rate;
    double phase = 0.0;
};

Sound kick(const Strike& s) {
    Skin body(190.0, 49.0, 0.024, s.rate);
    Skin beater(1400.0, 180.0, 0.004, s.rate);
    return rendered(s, 0.55, [&](double t) {
        const double skin = body.next(t) * decay(t, 0.16) * std::min(1.0, t / 0.0008);
        const double click =
            beater.next(t) * decay(t, 0.006) + 0.6 * s.random.noise() * decay(t, 0.003);
        return std::tanh(1.7 * skin + 1.2 * s.velocity * click * std::min(1.0, t / 0.0005));
    });
}

Sound snare(const Strike& s) {
    Skin low(270.0, 186.0, 0.012, s.rate);
    Skin high(440.0, 331.0, 0.010, s.rate);
    StateVariableFilter wires, wiresTop;
    wires.set(600.0, 0.6, s.rate);
    wiresTop.set(2500.0 + 3500.0 * s.velocity, 0.7, s.rate);
    return rendered(s, 0.40, [&](double t) {
        const double noise = wiresTop.next(wires.next(s.random.noise()).high).low;
        const double wire = noise * (1.5 * decay(t, 0.10) + 1.2 * decay(t, 0.014));
        const double skins =
            0.9 * low.next(t) * decay(t, 0.08) + 0.5 * high.next(t) * decay(t, 0.05);
        return std::tanh(skins + wire);
    });
}

/// Six square waves in no harmonic relation sound of metal.
Sound cymbal(const Strike& s, double tau, double seconds) {
    constexpr std::array metalHz = {543.0, 813.3, 1129.7, 1475.1, 1843.9, 2229.5};
    std::array<Square, metalHz.size()> partials;
    for (Square& partial : partials)
        partial = Square(s.random.unit());
    StateVariableFilter thin, thinner, top;
    thin.set(4500.0 + 2000.0 * s.velocity, 0.8, s.rate);
    thinner.set(3500.0, 0.7, s.rate);
    top.set(9500.0, 0.7, s.rate);
    return rendered(s, seconds, [&](double t) {
        double metal = 0.9 * s.random.noise();
        for (size_t i = 0; i < partials.size(); ++i)
            metal += 0.35 * partials[i].next(metalHz[i] / s.rate);
        const double thinned = top.next(thinner.next(thin.next(metal).high).high).low;
        return thinned * (decay(t, tau) + 0.4 * decay(t, 0.006)) * std::min(1.0, t / 0.0004);
    });
}

Sound closedHat(const Strike& s) {
    return cymbal(s, 0.022 + 0.018 * s.velocity, 0.22);
}

// It ends where the foot closes it, on the next step but one.
Sound openHat(const Strike& s) {
    return cymbal(s, 0.20, 0.30);
}

Sound rim(const Strike& s) {
    Skin wood(1760.0, 1690.0, 0.004, s.rate);
    Skin shell(560.0, 505.0, 0.004, s.rate);
    return rendered(s, 0.12, [&](double t) {
        return wood.next(t) * decay(t, 0.007) + 0.7 * shell.next(t) * decay(t, 0.014) +
               0.5 * s.random.noise() * decay(t, 0.0015);
    });
}

Sound tom(const Strike& s, double hz) {
    Skin skin(1.5 * hz, hz, 0.05, s.rate);
    Skin overtone(2.4 * hz, 1.59 * hz, 0.04, s.rate);
    return rendered(s, 0.6, [&](double t) {
        return skin.next(t) * decay(t, 0.17) + 0.35 * overtone.next(t) * decay(t, 0.07) +
               0.25 * s.velocity * s.random.noise() * decay(t, 0.004);
    });
}

Sound highTom(const Strike& s) {
    return tom(s, 146.0);
}
Sound lowTom(const Strike& s) {
    return tom(s, 98.0);
}

struct Piece {
    Sound (*strike)(const Strike&);
    double gainDb, pan, roomDb;
    std::string_view pattern;  // a character for each step: a velocity of 1 to 9, or a rest
};

// clang-format off
constexpr Piece kit[] = {
    // strike      dB    pan  room dB
    //   bar 1           bar 2           bar 3           bar 4
    {kick,       -2.5,  0.00, -26.0,
        "9.....7.8..5...." "9.....7.8.4..7.." "9.....7.8..5...." "9.....7.8...5..."},
    {snare,      -2.0,  0.05, -13.0,
        "....9..2.2..9..1" "....9..2.2..9.2." "....9..2.2..9..1" "....9..2.29...3."},
    {closedHat, -11.0,  0.35, -20.0,
        "8354835483548344" "835483548354834." "8354835483548344" "83548354835....."},
    {openHat,   -13.0,  0.35, -18.0,
        "................" "...............8" "................" "................"},
    {rim,       -13.0, -0.45, -14.0,
        "..........6....." ".........6.....4" "..........6....." ".........6......"},
    {highTom,    -5.0, -0.30, -13.0,
        "................" "................" "................" "...........87..."},
    {lowTom,     -4.0,  0.30, -13.0,
        "................" "................" "................" ".............9.8"},
};
// clang-format on
static_assert(std::ranges::all_of(kit, [](const Piece& piece) {
    return piece.pattern.size() == stepsPerLoop;
}));

constexpr double swing = 0.13;              // of a step, by which every other step comes late
constexpr double loosenessSeconds = 0.003;  // no drummer is exact, and none is early here
constexpr ReverbRecipe room = {0.55, 0.55, 6500.0, 180.0, 0.004};

}  // namespace

Loop makeDrums(int rate) {
    Loop drums(rate);
    Loop toRoom(rate);
    Random random(1);
    for (const Piece& piece : kit)
        for (int step = 0; step < stepsPerLoop; ++step) {
            const char digit = piece.pattern[static_cast<size_t>(step)];
            if (digit == '.') continue;
            const double velocity = (digit - '0') / 9.0;
            const double late = step % 2 == 1 ? swing : 0.0;
            const double loose = loosenessSeconds * random.unit() / stepSeconds;
            const size_t at = drums.sampleAt(step + late + (step > 0 ? loose : 0.0));
            const Sound sound = piece.strike({rate, velocity, random});
            const double gain = gainOfDb(piece.gainDb) * std::pow(velocity, 1.4);
            drums.add(at, sound, gain, piece.pan);
            toRoom.add(at, sound, gain * gainOfDb(piece.roomDb), piece.pan);
        }
    drums.add(reverb(toRoom, room), 3.0);
    return drums;
}

}  // namespace cinder::example
