#pragma once

#include <string>

#include "support/RealtimeGuard.h"

// Between the guard and what feeds it: the functions put in front of the C library's
// (RealtimeFunctions.cpp) and the dispatch of system calls (RealtimeSystemCalls.cpp).

namespace cinder::test {

/// What belongs to a thread. No constructor and no lazy storage: `malloc` itself reads it.
struct RealtimeThread {
    RealtimeGuard* innermost = nullptr;
    int paused = 0;
    bool prepared = false;
    bool letGo = false;                   // system calls run free until the outermost guard ends
    volatile unsigned char selector = 0;  // the kernel reads it at each system call: 1 stops it
};
extern constinit thread_local RealtimeThread realtimeThread
    __attribute__((tls_model("initial-exec")));

class RealtimeWatch {
public:
    static bool isActive() {
        return realtimeThread.innermost != nullptr && realtimeThread.paused == 0;
    }
    /// Tells the kernel what `isActive` says.
    static void update() { realtimeThread.selector = isActive() && !realtimeThread.letGo ? 1 : 0; }

    /// Counts a violation if a guard is active on this thread. Allocates nothing.
    static void note(Forbidden kind, const char* name, long number = -1) {
        if (isActive()) record(kind, name, number);
    }

private:
    static void record(Forbidden kind, const char* name, long number);
};

/// Lets guards see allocation. The answer is empty, or the reason why they can't.
std::string prepareAllocation();

/// Lets guards of the calling thread see system calls. The answer is empty, or the reason why not.
std::string prepareSystemCalls();
std::string systemCallName(long number);

}  // namespace cinder::test
