// Functions of the C library that a guard watches. The program's own definitions come before those
// of any shared library, the C++ library's calls included; each counts and then goes on to the
// next definition, which is the C library's or a sanitizer's.

#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <ctime>

#include "support/RealtimeWatch.h"
#include "support/SanitizerBuild.h"

using cinder::test::Forbidden;
using cinder::test::RealtimePause;
using cinder::test::RealtimeWatch;

// The label gives the function its name for the linker alone, so that neither the declaration in a
// header nor what the compiler knows about, say, `malloc` gets in the way.
#define CINDER_IN_FRONT_OF(result, name, parameters)        \
    extern "C" __attribute__((visibility("default"), used)) \
    result front_##name parameters __asm__(#name);          \
    result front_##name parameters

#define CINDER_WATCH(kind, result, name, parameters, arguments)                         \
    CINDER_IN_FRONT_OF(result, name, parameters) {                                      \
        static constinit std::atomic<result(*) parameters> next{nullptr};               \
        RealtimeWatch::note(Forbidden::kind, #name);                                    \
        const RealtimePause pause;                                                      \
        auto* function = next.load(std::memory_order_relaxed);                          \
        if (!function) {                                                                \
            function = reinterpret_cast<result(*) parameters>(dlsym(RTLD_NEXT, #name)); \
            next.store(function, std::memory_order_relaxed);                            \
        }                                                                               \
        return function arguments;                                                      \
    }

#define CINDER_WATCH_1(kind, name, A) CINDER_WATCH(kind, int, name, (A a), (a))
#define CINDER_WATCH_2(kind, name, A, B) CINDER_WATCH(kind, int, name, (A a, B b), (a, b))
#define CINDER_WATCH_3(kind, name, A, B, C) \
    CINDER_WATCH(kind, int, name, (A a, B b, C c), (a, b, c))
#define CINDER_WATCH_4(kind, name, A, B, C, D) \
    CINDER_WATCH(kind, int, name, (A a, B b, C c, D d), (a, b, c, d))

namespace {
using Mutex = pthread_mutex_t*;
using ReadWrite = pthread_rwlock_t*;
using Condition = pthread_cond_t*;
using Deadline = const timespec*;
using Clock = clockid_t;
using Attributes = const pthread_attr_t*;
using ThreadMain = void* (*)(void*);
using OnceMain = void (*)();
}  // namespace

// clang-format off
CINDER_WATCH_1(Lock, pthread_mutex_lock, Mutex)
CINDER_WATCH_1(Lock, pthread_mutex_trylock, Mutex)
CINDER_WATCH_2(Lock, pthread_mutex_timedlock, Mutex, Deadline)
CINDER_WATCH_3(Lock, pthread_mutex_clocklock, Mutex, Clock, Deadline)
CINDER_WATCH_1(Lock, pthread_mutex_unlock, Mutex)
CINDER_WATCH_1(Lock, pthread_rwlock_rdlock, ReadWrite)
CINDER_WATCH_1(Lock, pthread_rwlock_wrlock, ReadWrite)
CINDER_WATCH_1(Lock, pthread_rwlock_tryrdlock, ReadWrite)
CINDER_WATCH_1(Lock, pthread_rwlock_trywrlock, ReadWrite)
CINDER_WATCH_2(Lock, pthread_rwlock_timedrdlock, ReadWrite, Deadline)
CINDER_WATCH_2(Lock, pthread_rwlock_timedwrlock, ReadWrite, Deadline)
CINDER_WATCH_3(Lock, pthread_rwlock_clockrdlock, ReadWrite, Clock, Deadline)
CINDER_WATCH_3(Lock, pthread_rwlock_clockwrlock, ReadWrite, Clock, Deadline)
CINDER_WATCH_1(Lock, pthread_rwlock_unlock, ReadWrite)
CINDER_WATCH_2(Lock, pthread_cond_wait, Condition, Mutex)
CINDER_WATCH_3(Lock, pthread_cond_timedwait, Condition, Mutex, Deadline)
CINDER_WATCH_4(Lock, pthread_cond_clockwait, Condition, Mutex, Clock, Deadline)
CINDER_WATCH_1(Lock, pthread_cond_signal, Condition)
CINDER_WATCH_1(Lock, pthread_cond_broadcast, Condition)
CINDER_WATCH_1(Lock, pthread_spin_lock, pthread_spinlock_t*)
CINDER_WATCH_1(Lock, pthread_spin_trylock, pthread_spinlock_t*)
CINDER_WATCH_1(Lock, pthread_barrier_wait, pthread_barrier_t*)
CINDER_WATCH_1(Lock, sem_wait, sem_t*)
CINDER_WATCH_1(Lock, sem_trywait, sem_t*)
CINDER_WATCH_2(Lock, sem_timedwait, sem_t*, Deadline)
CINDER_WATCH_3(Lock, sem_clockwait, sem_t*, Clock, Deadline)
CINDER_WATCH_1(Lock, sem_post, sem_t*)
CINDER_WATCH_2(Lock, pthread_once, pthread_once_t*, OnceMain)
// A local static that is set up at its first use: other threads that come by wait.
CINDER_WATCH_1(Lock, __cxa_guard_acquire, long long*)
CINDER_WATCH_4(Thread, pthread_create, pthread_t*, Attributes, ThreadMain, void*)
CINDER_WATCH_2(Thread, pthread_join, pthread_t, void**)
CINDER_WATCH_1(Thread, pthread_detach, pthread_t)
// clang-format on

#if CINDER_SANITIZED

#ifdef __SANITIZE_THREAD__  // calls no hooks for these
CINDER_WATCH(Allocation, void*, memalign, (std::size_t a, std::size_t n), (a, n))
CINDER_WATCH(Allocation, void*, aligned_alloc, (std::size_t a, std::size_t n), (a, n))
CINDER_WATCH(Allocation, int, posix_memalign, (void** m, std::size_t a, std::size_t n), (m, a, n))
#endif

// A sanitizer brings an allocator of its own, for `malloc` and `new` alike, and calls hooks. This
// is from <sanitizer/allocator_interface.h>, a header that not every compiler ships.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*,
                                                                           std::size_t),
                                                         void (*released)(const volatile void*));

std::string cinder::test::prepareAllocation() {
    const int installed = __sanitizer_install_malloc_and_free_hooks(
        [](const volatile void*, std::size_t) {
            RealtimeWatch::note(Forbidden::Allocation, "malloc or new");
        },
        [](const volatile void* memory) {
            if (memory) RealtimeWatch::note(Forbidden::Release, "free or delete");
        });
    return installed != 0 ? "" : "the sanitizer has no room for hooks";
}

#else

// The C library's own names for these functions; `new` and `delete` end in them too.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

CINDER_IN_FRONT_OF(void*, malloc, (std::size_t size)) {
    RealtimeWatch::note(Forbidden::Allocation, "malloc");
    const RealtimePause pause;
    return __libc_malloc(size);
}

CINDER_IN_FRONT_OF(void*, calloc, (std::size_t count, std::size_t size)) {
    RealtimeWatch::note(Forbidden::Allocation, "calloc");
    const RealtimePause pause;
    return __libc_calloc(count, size);
}

CINDER_IN_FRONT_OF(void*, realloc, (void* memory, std::size_t size)) {
    RealtimeWatch::note(Forbidden::Allocation, "realloc");
    const RealtimePause pause;
    return __libc_realloc(memory, size);
}

CINDER_IN_FRONT_OF(void*, memalign, (std::size_t alignment, std::size_t size)) {
    RealtimeWatch::note(Forbidden::Allocation, "memalign");
    const RealtimePause pause;
    return __libc_memalign(alignment, size);
}

CINDER_IN_FRONT_OF(void*, aligned_alloc, (std::size_t alignment, std::size_t size)) {
    RealtimeWatch::note(Forbidden::Allocation, "aligned_alloc");
    const RealtimePause pause;
    return __libc_memalign(alignment, size);
}

CINDER_IN_FRONT_OF(int, posix_memalign, (void** memory, std::size_t alignment, std::size_t size)) {
    RealtimeWatch::note(Forbidden::Allocation, "posix_memalign");
    const RealtimePause pause;
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0)
        return EINVAL;
    void* const result = __libc_memalign(alignment, size);
    if (!result) return ENOMEM;
    *memory = result;
    return 0;
}

CINDER_IN_FRONT_OF(void, free, (void* memory)) {
    if (!memory) return;
    RealtimeWatch::note(Forbidden::Release, "free");
    const RealtimePause pause;
    __libc_free(memory);
}

std::string cinder::test::prepareAllocation() {
    return "";
}

#endif
