#pragma once

#include <concepts>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace cinder {

class AbstractProperty;

/// Told when one of its properties has really changed. It knows which one by its address.
class PropertyOwner {
public:
    virtual void propertyChanged(AbstractProperty* property) = 0;

protected:
    ~PropertyOwner() = default;
};

/// Anything a value of type T can be handed to.
template <typename T>
class ValueAssignable {
public:
    virtual void assign(T value) = 0;

protected:
    ~ValueAssignable() = default;
};

/// The part of a property that does not depend on its type. A copy stands in another object, so it
/// has no owner yet; one that is assigned to keeps its own.
class AbstractProperty {
public:
    explicit AbstractProperty(PropertyOwner* owner = nullptr) : owner(owner) {}
    AbstractProperty(const AbstractProperty&) : owner(nullptr) {}
    AbstractProperty& operator=(const AbstractProperty&) { return *this; }

    void setOwner(PropertyOwner* newOwner) { owner = newOwner; }

protected:
    ~AbstractProperty() = default;
    void notifyOwner() {
        if (owner) owner->propertyChanged(this);
    }

private:
    PropertyOwner* owner;
};

/// A NaN is neither smaller nor greater than anything, so it never counts as a change.
template <typename T>
bool isChange(const T& before, const T& after) {
    if constexpr (std::is_floating_point_v<T>)
        return after < before || after > before;
    else
        return !(before == after);
}

/// A value whose owner hears of every real change, and of nothing else.
/// Not synchronised: a property belongs to one thread.
template <typename T>
class Property final : public ValueAssignable<T>, public AbstractProperty {
    static_assert(!std::is_enum_v<T> || sizeof(T) == sizeof(std::int32_t),
                  "an enumeration that is a property is stored as a 32-bit integer");

public:
    explicit Property(T value = T(), PropertyOwner* owner = nullptr)
        : AbstractProperty(owner), value(std::move(value)) {}

    Property(const Property& other) = default;
    Property& operator=(const Property& other) {
        assign(other.value);
        return *this;
    }
    Property& operator=(T newValue) {
        assign(std::move(newValue));
        return *this;
    }

    void assign(T newValue) override {
        if (!isChange(value, newValue)) return;
        value = std::move(newValue);
        notifyOwner();
    }

    operator const T&() const { return value; }  // NOLINT: a property reads as its value
    const T& get() const { return value; }

private:
    T value;
};

/// A property that is kept within two limits, both included.
template <typename T>
requires std::same_as<T, float> || std::same_as<T, int>
class LimitedProperty final : public ValueAssignable<T>, public AbstractProperty {
public:
    LimitedProperty(T value, T lowerLimit, T upperLimit, PropertyOwner* owner = nullptr)
        : AbstractProperty(owner),
          upperLimit(upperLimit),
          lowerLimit(lowerLimit),
          value(limited(value)) {}

    LimitedProperty(const LimitedProperty& other) = default;
    /// Takes over the value, within the limits of its own.
    LimitedProperty& operator=(const LimitedProperty& other) {
        assign(other.value);
        return *this;
    }

    void assign(T newValue) override { assignLimited(newValue); }

    /// Assigns like `assign` and answers with the value that was stored.
    T assignLimited(T newValue) {
        newValue = limited(newValue);
        if (isChange(value, newValue)) {
            value = newValue;
            notifyOwner();
        }
        return value;
    }

    operator T() const { return value; }  // NOLINT: a property reads as its value
    T get() const { return value; }
    T getLowerLimit() const { return lowerLimit; }
    T getUpperLimit() const { return upperLimit; }

private:
    /// Written so that a NaN ends at the lower limit.
    T limited(T candidate) const {
        if (!(candidate >= lowerLimit)) return lowerLimit;
        return candidate > upperLimit ? upperLimit : candidate;
    }

    T upperLimit;
    T lowerLimit;
    T value;
};

}  // namespace cinder
