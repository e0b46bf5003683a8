#include <pthread.h>

#include "core/CriticalSection.h"

namespace cinder {
namespace {

/// A recursive mutex with priority inheritance: a drawing or host thread of high priority that
/// waits here lifts the holder, so no thread between the two can hold both up.
class LinuxCriticalSection final : public CriticalSection {
public:
    LinuxCriticalSection() {
        pthread_mutexattr_t attributes;
        pthread_mutexattr_init(&attributes);
        pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
        pthread_mutex_init(&mutex, &attributes);
        pthread_mutexattr_destroy(&attributes);
    }
    ~LinuxCriticalSection() override { pthread_mutex_destroy(&mutex); }

    void enter() override { pthread_mutex_lock(&mutex); }
    void leave() override { pthread_mutex_unlock(&mutex); }

private:
    pthread_mutex_t mutex;
};

}  // namespace

std::unique_ptr<CriticalSection> CriticalSection::create() {
    return std::make_unique<LinuxCriticalSection>();
}

CriticalSection& instanceLock() {
    // Never destroyed: an instance may still be deleted while the process ends.
    static CriticalSection* const lock = CriticalSection::create().release();
    return *lock;
}

namespace {
// Makes the lock while the module loads, before a second thread can know of it.
[[maybe_unused]] CriticalSection& madeAtLoad = instanceLock();
}  // namespace

}  // namespace cinder
