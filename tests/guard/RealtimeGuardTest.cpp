#include "support/RealtimeGuard.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <sched.h>
#include <semaphore.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <thread>
#include <vector>

using namespace cinder::test;

namespace {

// What the compiler can't see through, so that nothing is optimised away.
void* volatile kept;
volatile int blockSize = 256;

int openNull() {
    return open("/dev/null", O_WRONLY);
}

}  // namespace

TEST_CASE("RealtimeGuard: bites on every forbidden thing") {
    REQUIRE(realtimeGuardSees(Forbidden::Allocation));
    std::mutex mutex;
    std::shared_mutex shared;
    std::condition_variable condition;
    sem_t semaphore;
    sem_init(&semaphore, 0, 1);
    std::thread runs([] {}), ends([] {});
    std::once_flag once;
    const auto thrown = [] {
        try {
            throw 1;
        } catch (int) {
        }
    };
    const auto local = [] {
        static const int first = blockSize;
        blockSize = first;
    };
    const auto aligned = [] {
        void* memory = nullptr;
        if (posix_memalign(&memory, 64, 640) == 0) kept = memory;
    };
    const auto freed = [] { std::free(kept); };

    struct Case {
        const char* name;
        Forbidden kind;
        std::function<void()> act;
    };
    kept = std::malloc(100);
    const Case cases[] = {
        // clang-format off
        {"free of before", Forbidden::Release, freed},
        {"malloc", Forbidden::Allocation, [] { kept = std::malloc(10); }},
        {"realloc", Forbidden::Allocation, [] { kept = std::realloc(kept, 5000); }},
        {"free", Forbidden::Release, freed},
        {"calloc", Forbidden::Allocation, [] { kept = std::calloc(3, 10); }},
        {"free again", Forbidden::Release, freed},
        {"aligned_alloc", Forbidden::Allocation, [] { kept = std::aligned_alloc(64, 640); }},
        {"free aligned", Forbidden::Release, freed},
        {"posix_memalign", Forbidden::Allocation, aligned},
        {"free aligned again", Forbidden::Release, freed},
        {"new", Forbidden::Allocation, [] { kept = new double; }},
        {"delete", Forbidden::Release, [] { delete static_cast<double*>(kept); }},
        {"throw", Forbidden::Allocation, thrown},
        {"lock", Forbidden::Lock, [&] { mutex.lock(); }},
        {"unlock", Forbidden::Lock, [&] { mutex.unlock(); }},
        {"try_lock", Forbidden::Lock, [&] { if (mutex.try_lock()) mutex.unlock(); }},
        {"lock_shared", Forbidden::Lock, [&] { std::shared_lock lock(shared); }},
        {"lock exclusive", Forbidden::Lock, [&] { std::unique_lock lock(shared); }},
        {"notify", Forbidden::Lock, [&] { condition.notify_all(); }},
        {"semaphore", Forbidden::Lock, [&] { sem_wait(&semaphore); }},
        {"call_once", Forbidden::Lock, [&] { std::call_once(once, [] {}); }},
        {"local static", Forbidden::Lock, local},
        {"thread", Forbidden::Thread, [&] { runs = (runs.join(), std::thread([] {})); }},
        {"join", Forbidden::Thread, [&] { ends.join(); }},
        // clang-format on
    };
    for (const Case& c : cases) {
        const RealtimeReport report = guarded(c.act);
        INFO(std::string(c.name) << ": " << report);
        CHECK(report.of(c.kind) > 0);
        CHECK(report.firstName != nullptr);
        CHECK(report.numFrames > 1);
    }
    runs.join();
    std::unique_lock lock(mutex);
    std::thread notifier([&] {
        const std::lock_guard inside(mutex);
        condition.notify_one();
    });
    const RealtimeReport waited = guarded([&] { condition.wait(lock); });
    notifier.join();
    CHECK(waited.of(Forbidden::Lock) > 0);
    sem_destroy(&semaphore);
}

TEST_CASE("RealtimeGuard: bites on system calls, and lets them through") {
    if (!realtimeGuardSees(Forbidden::SystemCall)) {
        // The suite's last line says why.
        MESSAGE("system calls can't be seen on this machine");
        return;
    }
    const int null = openNull();
    std::atomic<int> word{1};
    const timespec nap{0, 1000};
    timespec time{};
    const auto masked = [] {
        sigset_t all, before, inside;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, &before);
        const bool wrote = write(-1, "", 0) == -1;  // with the guard's own signal blocked
        sigprocmask(SIG_SETMASK, &before, &inside);
        return wrote && sigismember(&inside, SIGUSR1) == 1;
    };
    struct Case {
        long number;
        std::function<bool()> act;  // true if the call did its work
    };
    const Case cases[] = {
        // clang-format off
        {SYS_write, [&] { return write(null, "abc", 3) == 3; }},
        {SYS_write, [] { return write(-1, "abc", 3) == -1 && errno == EBADF; }},
        {SYS_futex, [&] { return syscall(SYS_futex, &word, 1, 1, nullptr, nullptr, 0) == 0; }},
        {SYS_clock_nanosleep, [&] { return nanosleep(&nap, nullptr) == 0; }},
        {SYS_sched_yield, [] { return sched_yield() == 0; }},
        {SYS_clock_gettime,
         [&] { return syscall(SYS_clock_gettime, CLOCK_THREAD_CPUTIME_ID, &time) == 0 &&
                      time.tv_sec + time.tv_nsec > 0; }},
        {SYS_mmap, [] { return syscall(SYS_mmap, nullptr, 4096, 3, 0x22, -1, 0) != -1; }},
        {SYS_rt_sigprocmask, masked},
        // clang-format on
    };
    for (const Case& c : cases) {
        bool worked = false;
        const RealtimeReport report = guarded([&] { worked = c.act(); });
        INFO(report);
        CHECK(worked);
        CHECK(report.of(Forbidden::SystemCall) == 1);
        CHECK(report.firstNumber == c.number);
        CHECK(report.numFrames > 1);
    }
    const RealtimeReport many = guarded([&] {
        for (int i = 0; i < 100; ++i)
            if (write(null, "abc", 3) != 3) break;
    });
    CHECK(many.of(Forbidden::SystemCall) == 100);
    CHECK(many.describe().find("system call write") != std::string::npos);
    close(null);
}

TEST_CASE("RealtimeGuard: guards nest, pause, and end") {
    const int null = openNull();
    const auto violate = [&] {
        kept = std::malloc(10);
        if (write(null, "abc", 3) != 3) kept = nullptr;
        std::free(kept);
    };
    const int each = realtimeGuardSees(Forbidden::SystemCall) ? 3 : 2;
    RealtimeGuard outer;
    std::free(nullptr);  // no violation
    const RealtimeReport inner = guarded(violate);
    {
        const RealtimePause pause;
        CHECK(inner.violations == each);
        violate();
        CHECK(guarded(violate).isClean());
    }
    violate();
    const RealtimeReport report = outer.finish();
    violate();
    CHECK(report.violations == 2 * each);
    CHECK(report.of(Forbidden::Allocation) == 2);
    CHECK(report.of(Forbidden::Release) == 2);
    CHECK(outer.finish().violations == 2 * each);
    close(null);
}

TEST_CASE("RealtimeGuard: every thread has guards of its own, and the unguarded are free") {
    std::array<int, 4> violations{};
    std::vector<std::thread> threads;
    std::atomic<int> freeRounds{0};
    std::atomic<bool> stop{false};
    std::thread unguarded([&] {
        for (; !stop; ++freeRounds) {
            void* volatile memory = std::malloc(100);
            std::free(memory);
        }
    });
    for (int& count : violations)
        threads.emplace_back([&count, &freeRounds] {
            const RealtimeReport report = guarded([&] {
                const int before = freeRounds;
                for (int i = 0; i < 50 || freeRounds == before; ++i) {
                    const timespec nap{0, 1000};
                    nanosleep(&nap, nullptr);
                    if (i >= 50) continue;
                    void* volatile memory = std::malloc(100);
                    std::free(memory);
                }
            });
            count = report.violations - report.of(Forbidden::SystemCall);
        });
    for (std::thread& thread : threads)
        thread.join();
    stop = true;
    unguarded.join();
    for (int count : violations)
        CHECK(count == 100);
}

TEST_CASE("RealtimeGuard: a guard that nobody asks fails the test by itself" *
          doctest::should_fail()) {
    const RealtimeGuard guard;
    kept = std::malloc(10);
    std::free(kept);
}
