#pragma once

#include "example_audio/Loop.h"

namespace cinder::example {

// What the loops play: four bars in A minor (Am9, Fmaj9, Cmaj9, G6), for someone to distort.
Loop makeDrums(int rate);
Loop makeChord(int rate);
Loop makeBass(int rate);
Loop makeVoice(int rate);
Loop makeGuitar(int rate);  ///< as it comes from the instrument, for an amplifier
Loop makeMix(int rate);     ///< drums, chord, bass and voice, arranged

}  // namespace cinder::example
