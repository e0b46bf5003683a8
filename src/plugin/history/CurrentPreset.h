#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "core/CriticalSection.h"
#include "core/Realtime.h"

namespace cinder {

/// Which preset the parameters came from, and whether they have changed since.
struct PresetIdentity {
    std::string name;  ///< empty: none
    std::string path;  ///< of its file; empty where none is known
    bool isModified = false;

    bool operator==(const PresetIdentity&) const = default;
};

/// The identity of the loaded preset. A host's thread may bring in a name with a state while the
/// interface shows the old one, so answers are copies.
/// State   guarded by a section of its own, but for the flag, which every change of a value sets
class CurrentPreset {
public:
    CurrentPreset() : section(CriticalSection::create()) {}

    std::string name() const;                                                     ///< [ui, host]
    std::string path() const;                                                     ///< [ui, host]
    PresetIdentity identity() const;                                              ///< [ui, host]
    bool isModified() const noexcept CINDER_REALTIME { return modified.load(); }  ///< [any]

    void assign(const PresetIdentity& identity);  ///< [ui, host]
    /// Leaves the flag as it is. [ui, host]
    void setFile(std::string newName, std::string newPath);
    void setModified(bool isNowModified) noexcept CINDER_REALTIME { modified = isNowModified; }

private:
    std::unique_ptr<CriticalSection> section;
    std::string currentName, currentPath;
    std::atomic<bool> modified{false};
};

}  // namespace cinder
