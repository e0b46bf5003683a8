#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Realtime.h"
#include "params/GenericParameterOwner.h"

namespace cinder {

class ParameterResponder;

/// One control that the host can see. It knows its range, its value and its text, but no thread and
/// no lock: its owner decides when a new value takes effect.
///
///     setValue, on any thread:       clamp; if it is a change: store, tell the owner
///     applyValue, where it counts:   hand the value to whatever the parameter steers
///
/// State   the value, one aligned word that any thread may read; everything else is set before the
///         other threads know of the parameter
/// Errors  none; a value out of range is clamped, a NaN is no value and changes nothing
class AbstractPluginParameter {
public:
    /// Flag of `setValue`: the host need not hear of it, since it came from there or is part of a
    /// state that is being loaded.
    static constexpr unsigned hostKnows = 1;

    /// Registers with the owner, which gives the id.
    AbstractPluginParameter(GenericParameterOwner* owner, std::string name, bool discrete);
    virtual ~AbstractPluginParameter() = default;
    AbstractPluginParameter(const AbstractPluginParameter&) = delete;
    AbstractPluginParameter& operator=(const AbstractPluginParameter&) = delete;

    /// The number that the user reads and types, and the value that it stands for.
    virtual float valueFromDisplay(float display) const noexcept CINDER_REALTIME { return display; }
    virtual float displayFromValue(float value) const noexcept CINDER_REALTIME { return value; }
    /// The place of a value in its range, 0..1, and back. In a context, a part of the range may
    /// stand for the whole; then a place outside that part has no value.
    virtual float normalize(float value) const noexcept CINDER_REALTIME = 0;
    virtual float normalizeInContext(float value, int context) const noexcept CINDER_REALTIME;
    virtual float denormalize(float normalised) const noexcept CINDER_REALTIME = 0;
    virtual bool denormalizeInContext(float normalised, int context,
                                      float& out) const noexcept CINDER_REALTIME;
    /// The value that a typed text means. False: it means none, and the caller keeps what it had,
    /// whatever `out` is. [ui, host]
    virtual bool parseText(std::string_view text, float& out) const;
    /// At most that many bytes. [ui, host]
    virtual std::string shortText(float value, int maxChars) const;
    virtual std::string text(float value) const = 0;  ///< [ui, host]
    virtual float defaultValue() const noexcept CINDER_REALTIME = 0;
    /// Where the part of the range that a context stands for ends, or -1.
    virtual int contextLimit(int context) const noexcept CINDER_REALTIME;
    virtual float maximum() const noexcept CINDER_REALTIME = 0;
    virtual float minimum() const noexcept CINDER_REALTIME = 0;
    /// Where `value` goes when another parameter, edited together with this one, goes from `from`
    /// to `to`: in proportion to what is displayed, or by the same distance where `from` reads 0.
    virtual float rescale(float value, float from, float to) const noexcept CINDER_REALTIME;
    /// The newest value that was set, whether or not it has taken effect. [any]
    virtual float value() const noexcept CINDER_REALTIME = 0;
    virtual int controlKind() const { return 0; }
    /// Stores the value within the range and answers whether that was a change. Tells nobody. [any]
    virtual bool storeValue(float value) noexcept CINDER_REALTIME = 0;
    /// Whether texts are numbers rather than names.
    virtual bool hasNumericText() const = 0;
    /// Called by the owner on the thread that is to see the change.
    virtual void applyValue(float value) noexcept CINDER_REALTIME;

    /// [any]
    void setValue(float value, unsigned flags) noexcept CINDER_REALTIME;
    void resetToDefault(unsigned flags) noexcept CINDER_REALTIME {
        setValue(defaultValue(), flags);
    }

    /// Told of what takes effect, as the processing gets it, before the objects that the parameter
    /// steers. Not owned; before audio runs.
    void addResponder(ParameterResponder* responder) { responders.push_back(responder); }

    int getId() const { return id; }
    const std::string& getName() const { return name; }
    GenericParameterOwner* getOwner() const { return owner; }
    /// Id of the group whose set the parameter belongs to; 0 for one without a set.
    int getGroup() const { return owner->group(); }
    bool isDiscrete() const { return discrete; }

    // What the host and the interface are told. Set before they ask.
    bool automatable = true;
    std::string displayName;  // the name, unless somebody knows a better one for the host
    std::string hint;

protected:
    void respond(float value) noexcept CINDER_REALTIME;

private:
    const std::string name;
    const int id;
    GenericParameterOwner* const owner;
    const bool discrete;
    std::vector<ParameterResponder*> responders;
};

}  // namespace cinder
