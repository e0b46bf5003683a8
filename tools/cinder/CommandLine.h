#pragma once

namespace cinder {

/// What the program ends with; 128 + signal where it was broken off.
enum ExitStatus : int {
    exitSuccess = 0,
    exitFailure = 1,  // the files, the disk
    exitUsage = 2,    // the command itself
};

/// Runs the command that `argv` names. Whatever goes wrong is one line on standard error.
int runCommandLine(int argc, const char* const* argv);

}  // namespace cinder
