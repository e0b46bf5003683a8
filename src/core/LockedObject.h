#pragma once

#include <memory>

#include "core/CriticalSection.h"

namespace cinder {

/// Base of an object that brings a lock of its own and hands it to those who use the object.
class LockedObject {
public:
    LockedObject() : section(CriticalSection::create()) {}
    virtual ~LockedObject() = default;
    LockedObject(const LockedObject&) = delete;
    LockedObject& operator=(const LockedObject&) = delete;

    CriticalSection& criticalSection() const { return *section; }

private:
    std::unique_ptr<CriticalSection> section;
};

}  // namespace cinder
