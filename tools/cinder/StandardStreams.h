#pragma once

namespace cinder {

/// Opens /dev/null in the place of a standard input, output or error that whoever started us has
/// closed. Else the next file opened would get its number, and a table that is printed would land
/// in the audio. And a reader that has gone away no longer ends the process.
void secureStandardStreams() noexcept;

}  // namespace cinder
