#include "params/NoteName.h"

#include <cmath>
#include <cstdint>

#include "params/NumberText.h"

namespace cinder {

namespace {

constexpr float semitones[] = {9.0f, 11.0f, 0.0f, 2.0f, 4.0f, 5.0f, 7.0f};  // A to G, C is 0
constexpr float log2OfA4 = 8.78136f;                                        // 440 Hz
constexpr float noteOfA4 = 69.0f;
constexpr float octavesPerSemitone = 0.083333336f;

}  // namespace

bool parseNoteName(std::string_view text, float& hz) {
    skipBlanks(text);
    const char letter = text.empty() ? '\0' : upperCase(text.front());
    if (letter < 'A' || letter > 'G') return false;
    float semitone = semitones[letter - 'A'];
    text.remove_prefix(1);
    const char accidental = text.empty() ? '\0' : upperCase(text.front());
    if (accidental == '#' || accidental == 'B') {
        semitone += accidental == '#' ? 1.0f : -1.0f;
        text.remove_prefix(1);
    }
    std::int32_t octave = 4;
    float cents = 0.0f;
    skipBlanks(text);
    if (takeWholeNumber(text, octave)) {
        skipBlanks(text);
        takeNumber(text, cents);
    }
    const float note =
        (static_cast<float>(octave) + 1.0f) * 12.0f + cents * 0.01f + semitone - noteOfA4;
    hz = std::exp2(note * octavesPerSemitone + log2OfA4);
    return true;
}

}  // namespace cinder
