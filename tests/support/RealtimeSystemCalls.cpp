// System calls under a guard. Linux can hand a thread's system calls back to the thread as a
// signal, except those made from one range of addresses, while a byte of the thread's says so. The
// handler counts the call and lets the thread make it from within that range.

#include <sys/syscall.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "support/RealtimeWatch.h"
#include "support/SanitizerBuild.h"

#if defined(__linux__) && defined(__x86_64__)
#include <link.h>
#include <signal.h>
#include <sys/prctl.h>
#include <ucontext.h>
#include <unistd.h>
#endif

#if defined(__linux__) && defined(__x86_64__) && defined(PR_SET_SYSCALL_USER_DISPATCH)

// The free range. cinderSystemCall makes a call and returns past the red zone, the 128 bytes below
// the stack pointer that belong to the interrupted function. cinderReturn ends a signal handler.
asm(R"(
    .text
    .balign 16
    .type cinderFreeBegin, @function
cinderFreeBegin:
cinderSystemCall:
    syscall
    ret $128
cinderReturn:
    mov $15, %rax
    syscall
    ud2
cinderFreeEnd:
    .size cinderFreeBegin, . - cinderFreeBegin
)");

// The handler may interrupt a sanitizer at its own work, so it is not instrumented itself.
#define CINDER_UNCHECKED __attribute__((no_sanitize("address", "thread", "undefined")))

extern "C" {
__attribute__((visibility("hidden"))) extern const char cinderFreeBegin[], cinderSystemCall[],
    cinderReturn[], cinderFreeEnd[];
}

namespace cinder::test {
namespace {

constexpr std::uintptr_t redZone = 128;
constexpr std::uintptr_t syscallSize = 2;  // bytes of the instruction
constexpr int maxSanitizers = 4;

/// Code whose system calls are not the guarded function's doing.
struct Range {
    std::uintptr_t begin = 0, end = 0;
};
Range sanitizers[maxSanitizers];

std::uintptr_t addressOf(const char* label) {
    return reinterpret_cast<std::uintptr_t>(label);
}

int addSanitizer(dl_phdr_info* module, std::size_t, void* count) {
    int& used = *static_cast<int*>(count);
    for (const char* name : {"libasan.", "libtsan.", "libubsan.", "liblsan."}) {
        if (!std::strstr(module->dlpi_name, name) || used == maxSanitizers) continue;
        Range range{UINTPTR_MAX, 0};
        for (int i = 0; i < module->dlpi_phnum; ++i) {
            const auto& part = module->dlpi_phdr[i];
            if (part.p_type != PT_LOAD) continue;
            range.begin = std::min(range.begin, module->dlpi_addr + part.p_vaddr);
            range.end = std::max(range.end, module->dlpi_addr + part.p_vaddr + part.p_memsz);
        }
        sanitizers[used++] = range;
    }
    return 0;
}

/// Lets the interrupted thread make its call from the free range. For a few calls that can't be:
/// the child of a clone may start on another stack, and with signals blocked the next call could
/// not be handed back. They are made where they stand, and the thread runs free from there on.
CINDER_UNCHECKED void resume(greg_t* registers, long number) {
    auto& counter = reinterpret_cast<std::uintptr_t&>(registers[REG_RIP]);
    auto& stack = reinterpret_cast<std::uintptr_t&>(registers[REG_RSP]);
    registers[REG_RAX] = number;
    switch (number) {
        case SYS_clone:
        case SYS_clone3:
        case SYS_vfork:
        case SYS_rt_sigprocmask:
            realtimeThread.letGo = true;
            counter -= syscallSize;
            return;
        case SYS_rt_sigreturn:  // takes what it needs from the stack, and never comes back
            break;
        default:
            stack -= redZone + sizeof counter;
            *reinterpret_cast<std::uintptr_t*>(stack) = counter;
    }
    counter = addressOf(cinderSystemCall);
}

CINDER_UNCHECKED void onSystemCall(int, siginfo_t* info, void* context) {
    RealtimeThread& thread = realtimeThread;
    const int error = errno;
    greg_t* const registers = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    const auto caller = reinterpret_cast<std::uintptr_t>(info->si_call_addr);
    const long number = info->si_syscall;
    // The check of dynamic types finds out by a pipe whether an address can be read, and asks the C
    // library for it, whose wrapper has no frame: where it returns to is on top of the stack.
    const bool mayBeProbe = number == SYS_pipe || number == SYS_pipe2;
    const std::uintptr_t asked =
        mayBeProbe ? *reinterpret_cast<std::uintptr_t*>(registers[REG_RSP]) : caller;
    bool counts = number != SYS_rt_sigreturn;  // the end of some other signal's handler
    for (const Range& range : sanitizers)
        for (const std::uintptr_t address : {caller, asked})
            counts = counts && !(address >= range.begin && address < range.end);
    thread.selector = 0;
    if (counts) RealtimeWatch::note(Forbidden::SystemCall, nullptr, number);
    resume(registers, number);
    thread.selector = thread.letGo ? 0 : 1;
    errno = error;
}

/// As the kernel knows it. Set directly, since the C library would install a return of its own,
/// outside of the free range, and a sanitizer a handler of its own.
struct KernelSigaction {
    void (*handler)(int, siginfo_t*, void*);
    unsigned long flags;
    const char* restorer;
    unsigned long mask;
};

std::string failure(const char* call) {
    return std::string(call) + ": " + std::strerror(errno);
}

std::string installHandler() {
    int numSanitizers = 0;
    dl_iterate_phdr(addSanitizer, &numSanitizers);
    if (CINDER_SANITIZED && numSanitizers == 0) return "the sanitizer is linked statically";
    constexpr unsigned long hasRestorer = 0x04000000;
    const KernelSigaction action{onSystemCall, SA_SIGINFO | SA_RESTART | hasRestorer, cinderReturn,
                                 0};
    if (syscall(SYS_rt_sigaction, SIGSYS, &action, nullptr, sizeof action.mask) != 0)
        return failure("sigaction");
    return "";
}

}  // namespace

std::string prepareSystemCalls() {
    static const std::string reason = installHandler();
    if (!reason.empty()) return reason;
    const std::uintptr_t begin = addressOf(cinderFreeBegin);
    if (prctl(PR_SET_SYSCALL_USER_DISPATCH, PR_SYS_DISPATCH_ON, begin,
              addressOf(cinderFreeEnd) - begin, &realtimeThread.selector) != 0)
        return failure("prctl");
    return "";
}

}  // namespace cinder::test

#else

std::string cinder::test::prepareSystemCalls() {
    return "no dispatch of them on this platform";
}

#endif

namespace cinder::test {

std::string systemCallName(long number) {
    struct Row {
        long number;
        const char* name;
    };
#define CINDER_CALL(name) \
    { SYS_##name, #name }
    constexpr Row rows[] = {
        CINDER_CALL(brk),        CINDER_CALL(clock_gettime),  CINDER_CALL(clock_nanosleep),
        CINDER_CALL(clone),      CINDER_CALL(clone3),         CINDER_CALL(close),
        CINDER_CALL(exit),       CINDER_CALL(exit_group),     CINDER_CALL(futex),
        CINDER_CALL(getpid),     CINDER_CALL(gettid),         CINDER_CALL(ioctl),
        CINDER_CALL(lseek),      CINDER_CALL(madvise),        CINDER_CALL(mmap),
        CINDER_CALL(mprotect),   CINDER_CALL(munmap),         CINDER_CALL(nanosleep),
        CINDER_CALL(newfstatat), CINDER_CALL(openat),         CINDER_CALL(ppoll),
        CINDER_CALL(pread64),    CINDER_CALL(read),           CINDER_CALL(recvmsg),
        CINDER_CALL(sendmsg),    CINDER_CALL(rt_sigprocmask), CINDER_CALL(sched_yield),
        CINDER_CALL(write),      CINDER_CALL(writev),
    };
#undef CINDER_CALL
    for (const Row& row : rows)
        if (row.number == number) return std::string("system call ") + row.name;
    return "system call number " + std::to_string(number);
}

}  // namespace cinder::test
