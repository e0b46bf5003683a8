#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <utility>

namespace cinder::test {

/// What the audio thread must not do.
enum class Forbidden { Allocation, Release, Lock, Thread, SystemCall };
inline constexpr std::size_t numForbidden = 5;

/// What a guard has seen. Prints as one line that names the first violation, and a command that
/// shows where it happened.
struct RealtimeReport {
    static constexpr int maxFrames = 24;

    int violations = 0;
    std::array<int, numForbidden> perKind{};

    Forbidden firstKind{};
    const char* firstName = nullptr;  // a function, or null for a system call
    long firstNumber = -1;            // of the system call
    int numFrames = 0;
    std::array<void*, maxFrames> frames;  // innermost first

    int of(Forbidden kind) const { return perKind[static_cast<std::size_t>(kind)]; }
    bool isClean() const { return violations == 0; }
    std::string describe() const;
};

std::ostream& operator<<(std::ostream& out, const RealtimeReport& report);

/// While it lives, it counts what the thread that made it does against the rules of the audio
/// thread: allocation and release of memory, locks, threads, system calls. What it counts, it lets
/// through. Reading the clock is no system call where the kernel's page in user space answers it.
/// State   guards nest: an outer one also counts what its inner ones see; other threads are free
/// Errors  a guard that ends without `finish` fails the running test if it has seen something
///
/// Entering and leaving costs a few nanoseconds, but for the first guard of a thread, so a test can
/// put one around every call of `process`.
class RealtimeGuard {
public:
    explicit RealtimeGuard(const char* file = __builtin_FILE(), int line = __builtin_LINE());
    ~RealtimeGuard();
    RealtimeGuard(const RealtimeGuard&) = delete;
    RealtimeGuard& operator=(const RealtimeGuard&) = delete;

    /// Ends the guard and leaves the verdict to the caller.
    const RealtimeReport& finish();

private:
    friend class RealtimeWatch;

    void leave();

    RealtimeGuard* outer = nullptr;
    bool active = true;
    const char* file;
    int line;
    RealtimeReport report;
};

/// Lets the thread do as it likes for a while inside a guard: for a test double that allocates.
class RealtimePause {
public:
    RealtimePause();
    ~RealtimePause();
    RealtimePause(const RealtimePause&) = delete;
    RealtimePause& operator=(const RealtimePause&) = delete;
};

/// Calls `function` under a guard:
///     const auto report = guarded([&] { processor.process(...); });
///     CHECK_MESSAGE(report.isClean(), report);
template <typename Function>
RealtimeReport guarded(Function&& function) {
    RealtimeGuard guard;
    std::forward<Function>(function)();
    return guard.finish();
}

/// False where a guard can't see this kind. The suite says so when it ends, with the reason.
bool realtimeGuardSees(Forbidden kind);

}  // namespace cinder::test
