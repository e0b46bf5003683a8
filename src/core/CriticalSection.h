#pragma once

#include <memory>

namespace cinder {

/// Mutual exclusion of threads. The thread inside may enter again and must leave as often.
/// Errors  none; leaving without having entered is a fault of the caller
class CriticalSection {
public:
    static std::unique_ptr<CriticalSection> create();

    virtual ~CriticalSection() = default;
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;

    virtual void enter() = 0;  ///< [any] but [audio]: may wait
    virtual void leave() = 0;  ///< the thread that entered

protected:
    CriticalSection() = default;
};

/// Is inside a section for its own lifetime.
class ScopedLock {
public:
    explicit ScopedLock(CriticalSection& toEnter) : section(toEnter) { section.enter(); }
    ~ScopedLock() { section.leave(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    CriticalSection& section;
};

/// The lock under which the first instance builds what all instances share and the last one frees
/// it. It exists from the loading of the module to the end of the process.
CriticalSection& instanceLock();

}  // namespace cinder
