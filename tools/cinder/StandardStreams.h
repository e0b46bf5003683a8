#pragma once

namespace cinder {

/// Opens /dev/null in the place of a standard input, output or error that whoever started us has
/// closed. Else the next file opened would get its number, and a table that is printed would land
/// in the audio. And a reader that has gone away no longer ends the process.
void secureStandardStreams() noexcept;

/// For a command whose whole result is what it prints: sends it out.
/// Errors  UserError if it did not get there; a reader that has gone away, as `head` does, has had
///         all it wanted
void requirePrinted();

}  // namespace cinder
