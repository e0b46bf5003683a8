#pragma once

#include <string>

#include "core/Realtime.h"
#include "params/GenericParameterOwner.h"

namespace cinder {

/// One control that the host can see. It knows its range and its value, but no thread and no lock:
/// its owner decides when a new value takes effect.
///
///     setValue, on any thread:       clamp; if it is a change: store, tell the owner
///     applyValue, where it counts:   hand the value to whatever the parameter steers
///
/// State   the value, one aligned word that any thread may read; everything else is set before the
///         other threads know of the parameter
/// Errors  none; a value out of range is clamped, a NaN becomes the minimum
class AbstractPluginParameter {
public:
    /// Flag of `setValue`: the host need not hear of it, since it came from there or is part of a
    /// state that is being loaded.
    static constexpr unsigned hostKnows = 1;

    /// Registers with the owner, which gives the id.
    AbstractPluginParameter(GenericParameterOwner* owner, std::string name);
    virtual ~AbstractPluginParameter() = default;
    AbstractPluginParameter(const AbstractPluginParameter&) = delete;
    AbstractPluginParameter& operator=(const AbstractPluginParameter&) = delete;

    /// The place of a value in its range, 0..1, and back.
    virtual float normalize(float value) const noexcept CINDER_REALTIME = 0;
    virtual float denormalize(float normalised) const noexcept CINDER_REALTIME = 0;
    virtual float defaultValue() const noexcept CINDER_REALTIME = 0;
    virtual float maximum() const noexcept CINDER_REALTIME = 0;
    virtual float minimum() const noexcept CINDER_REALTIME = 0;
    /// The newest value that was set, whether or not it has taken effect. [any]
    virtual float value() const noexcept CINDER_REALTIME = 0;
    /// Stores the value within the range and answers whether that was a change. Tells nobody. [any]
    virtual bool storeValue(float value) noexcept CINDER_REALTIME = 0;
    /// Called by the owner on the thread that is to see the change.
    virtual void applyValue(float value) noexcept CINDER_REALTIME = 0;

    /// [any]
    void setValue(float value, unsigned flags) noexcept CINDER_REALTIME;

    int getId() const { return id; }
    const std::string& getName() const { return name; }
    GenericParameterOwner* getOwner() const { return owner; }

private:
    const std::string name;
    const int id;
    GenericParameterOwner* const owner;
};

}  // namespace cinder
