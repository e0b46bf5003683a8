#pragma once

#include <signal.h>

#include <array>
#include <exception>

namespace cinder {

/// Thrown where the user broke off the run. The shell expects the status 128 + signal.
class Interrupted : public std::exception {
public:
    explicit Interrupted(int signal) noexcept : signal(signal) {}
    int exitStatus() const noexcept { return 128 + signal; }
    const char* what() const noexcept override { return "interrupted"; }

private:
    int signal;
};

/// While it lives, Ctrl-C and its like (SIGINT, SIGTERM, SIGHUP) set a flag in place of ending the
/// process, so that destructors run and take unfinished files away. A write past the limit for
/// files (SIGXFSZ) becomes an ordinary error. Signals that were ignored stay ignored, as nohup
/// wants it. One at a time.
class InterruptFlag {
public:
    InterruptFlag() noexcept;
    InterruptFlag(const InterruptFlag&) = delete;
    InterruptFlag& operator=(const InterruptFlag&) = delete;
    ~InterruptFlag();

    bool isSet() const noexcept;
    void throwIfSet() const;  ///< Interrupted; to be called once a block

private:
    static constexpr std::array handled{SIGINT, SIGTERM, SIGHUP, SIGXFSZ};
    std::array<struct sigaction, handled.size()> previous{};
};

}  // namespace cinder
