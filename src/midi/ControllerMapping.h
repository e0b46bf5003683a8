#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "core/Realtime.h"
#include "core/UpdatedObject.h"

namespace cinder {

class BinaryDataReader;
class BinaryDataWriter;

/// Which parameter each MIDI controller moves: a parameter id per controller number, or none.
/// State   the table. One thread writes and hears the change event; the audio thread may read while
///         a new table is copied in, and sees each entry either old or new
/// Errors  a controller number out of range has no entry and takes none
class ControllerMapping final : public UpdatedObject {
public:
    static constexpr int numControllers = 128;
    static constexpr std::int32_t none = -1;

    ControllerMapping();

    /// The parameter of a controller, or `none`. [any]
    std::int32_t targetOf(int controller) const noexcept CINDER_REALTIME;
    /// The lowest controller of a parameter, or `none`. [any]
    int controllerOf(std::int32_t target) const noexcept CINDER_REALTIME;

    void clear();
    void set(int controller, std::int32_t target);
    /// What MIDI learn does: gives a parameter its one controller, taking away the one it had. The
    /// controller `none` only takes away, the target `none` empties the controller's entry.
    void assign(int controller, std::int32_t target);

    /// As in the file, and as the table crosses to the processor:
    ///
    ///     "KNCM"    version 1    128 x target, 4 bytes
    ///
    /// Any target is taken, also one that this product has no parameter for. The version is not
    /// looked at.
    /// Errors  false, and the table is as it was: another magic, or the section isn't whole
    bool read(BinaryDataReader& reader);
    bool write(BinaryDataWriter& writer) const;

    /// Fired once at the end of a bracket in which an entry has changed.
    NotifyEvent& changed() { return deferredEvent(changeEvent); }

private:
    static bool isController(int number) { return number >= 0 && number < numControllers; }

    std::array<std::atomic<std::int32_t>, numControllers> targets;
    const std::size_t changeEvent;
};

}  // namespace cinder
