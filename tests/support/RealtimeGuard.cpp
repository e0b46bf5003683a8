#include "support/RealtimeGuard.h"

#include <dlfcn.h>
#include <doctest/doctest.h>
#include <unistd.h>
#include <unwind.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <mutex>
#include <ostream>
#include <sstream>

#include "support/RealtimeWatch.h"

namespace cinder::test {

constinit thread_local RealtimeThread realtimeThread;

namespace {

constexpr const char* kindNames[] = {"allocation", "release", "lock", "thread", "system call"};
static_assert(std::size(kindNames) == numForbidden);

/// A kind that guards can't see in this process. The suite must not be silent about it.
class BlindSpot {
public:
    explicit BlindSpot(Forbidden hiddenKind) : kind(hiddenKind) {}
    ~BlindSpot() {
        if (guards > 0)
            std::fprintf(stderr, "realtime guard: %d guards could not see any %s: %s\n",
                         guards.load(), kindNames[static_cast<int>(kind)], reason.c_str());
    }
    void hide(const std::string& why) {
        const std::lock_guard lock(mutex);
        reason = why;
        hidden = true;
    }
    bool isHidden() const { return hidden.load(std::memory_order_relaxed); }
    void countGuard() { guards.fetch_add(1, std::memory_order_relaxed); }

private:
    const Forbidden kind;
    std::mutex mutex;
    std::string reason;
    std::atomic<bool> hidden{false};
    std::atomic<int> guards{0};
};

BlindSpot hiddenAllocation(Forbidden::Allocation);
BlindSpot hiddenSystemCalls(Forbidden::SystemCall);

struct Trace {
    void** frames;
    int length;
};

_Unwind_Reason_Code addFrame(_Unwind_Context* context, void* argument) {
    auto& trace = *static_cast<Trace*>(argument);
    if (trace.length == RealtimeReport::maxFrames) return _URC_END_OF_STACK;
    trace.frames[trace.length++] = reinterpret_cast<void*>(_Unwind_GetIP(context));
    return _URC_NO_REASON;
}

/// The unwinder and not `backtrace`, which loads a library when it is first called.
int traceInto(std::array<void*, RealtimeReport::maxFrames>& frames) {
    Trace trace{frames.data(), 0};
    _Unwind_Backtrace(addFrame, &trace);
    return trace.length;
}

/// Whether a guard counts what `act` does. Asked once, since another tool may have taken the place
/// of what the guard relies on.
template <typename Act>
bool isSeen(Forbidden kind, Act act) {
    RealtimeGuard guard;
    act();
    return guard.finish().of(kind) > 0;
}

/// Not by way of `call_once`, under which guards pause.
bool prepareProcess() {
    const std::string reason = prepareAllocation();
    const auto allocate = [] {
        void* volatile memory = std::malloc(1);
        std::free(memory);
    };
    if (!reason.empty())
        hiddenAllocation.hide(reason);
    else if (!isSeen(Forbidden::Allocation, allocate))
        hiddenAllocation.hide("something else stands in for malloc");
    return true;
}

/// What the first guard of a thread does before it becomes active.
void prepareThread(RealtimeThread& thread) {
    thread.prepared = true;
    std::array<void*, RealtimeReport::maxFrames> frames;
    traceInto(frames);  // the unwinder sets itself up at its first use
    [[maybe_unused]] static const bool isReady = prepareProcess();
    const std::string reason = prepareSystemCalls();
    if (!reason.empty())
        hiddenSystemCalls.hide(reason);
    else if (!isSeen(Forbidden::SystemCall, [] { getppid(); }))
        hiddenSystemCalls.hide("a trial call was not handed back");
}

}  // namespace

void RealtimeWatch::record(Forbidden kind, const char* name, long number) {
    const RealtimePause pause;
    for (RealtimeGuard* guard = realtimeThread.innermost; guard; guard = guard->outer) {
        RealtimeReport& report = guard->report;
        ++report.perKind[static_cast<std::size_t>(kind)];
        if (report.violations++ > 0) continue;
        report.firstKind = kind;
        report.firstName = name;
        report.firstNumber = number;
        report.numFrames = traceInto(report.frames);
    }
}

RealtimeGuard::RealtimeGuard(const char* maker, int makerLine) : file(maker), line(makerLine) {
    RealtimeThread& thread = realtimeThread;
    if (!thread.prepared) prepareThread(thread);
    if (hiddenAllocation.isHidden()) hiddenAllocation.countGuard();
    if (hiddenSystemCalls.isHidden()) hiddenSystemCalls.countGuard();
    outer = thread.innermost;
    thread.innermost = this;
    RealtimeWatch::update();
}

RealtimeGuard::~RealtimeGuard() {
    if (!active) return;
    leave();
    if (!report.isClean()) ADD_FAIL_CHECK_AT(file, line, report);
}

const RealtimeReport& RealtimeGuard::finish() {
    if (active) leave();
    return report;
}

void RealtimeGuard::leave() {
    active = false;
    realtimeThread.innermost = outer;
    if (!outer) realtimeThread.letGo = false;
    RealtimeWatch::update();
}

RealtimePause::RealtimePause() {
    ++realtimeThread.paused;
    RealtimeWatch::update();
}

RealtimePause::~RealtimePause() {
    --realtimeThread.paused;
    RealtimeWatch::update();
}

std::string RealtimeReport::describe() const {
    if (isClean()) return "no violation";
    std::ostringstream text;
    text << violations << (violations == 1 ? " violation" : " violations") << " of real time (";
    const char* separator = "";
    for (std::size_t kind = 0; kind < numForbidden; ++kind)
        if (perKind[kind] > 0) {
            text << separator << kindNames[kind] << ' ' << perKind[kind];
            separator = ", ";
        }
    text << "), first " << (firstName ? firstName : systemCallName(firstNumber));

    // The addresses as `addr2line` wants them: relative to the program, within the call.
    Dl_info self{};
    if (dladdr(reinterpret_cast<void*>(&traceInto), &self) == 0) return text.str();
    text << ", seen by\naddr2line -Cfpie " << self.dli_fname << std::hex;
    for (int i = 0; i < numFrames; ++i) {
        Dl_info frame{};
        if (dladdr(frames[static_cast<std::size_t>(i)], &frame) == 0) continue;
        if (frame.dli_fbase != self.dli_fbase) continue;
        const auto address = reinterpret_cast<std::uintptr_t>(frames[static_cast<std::size_t>(i)]);
        text << " 0x" << address - reinterpret_cast<std::uintptr_t>(self.dli_fbase) - 1;
    }
    return text.str();
}

std::ostream& operator<<(std::ostream& out, const RealtimeReport& report) {
    return out << report.describe();
}

bool realtimeGuardSees(Forbidden kind) {
    { const RealtimeGuard prepares; }
    if (kind == Forbidden::SystemCall) return !hiddenSystemCalls.isHidden();
    if (kind == Forbidden::Allocation || kind == Forbidden::Release)
        return !hiddenAllocation.isHidden();
    return true;
}

}  // namespace cinder::test
