#include "core/Property.h"

#include <doctest/doctest.h>

#include <limits>
#include <string>

namespace cinder {
namespace {

struct CountingOwner final : PropertyOwner {
    void propertyChanged(AbstractProperty* property) override {
        ++changes;
        last = property;
    }
    int changes = 0;
    AbstractProperty* last = nullptr;
};

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

TEST_CASE("Property: the owner hears of real changes only, and of which property it was") {
    CountingOwner owner;
    Property<std::string> name("a", &owner);
    Property<float> level(1.0f, &owner);
    LimitedProperty<float> limited(0.5f, -1.0f, 1.0f, &owner);
    name = std::string("a");
    level = nan;
    level = 1.0f;
    CHECK(owner.changes == 0);
    CHECK(level == 1.0f);
    name = std::string("b");
    CHECK(owner.last == &name);
    level = 2.0f;
    CHECK(owner.last == &level);
    CHECK(limited.assignLimited(7.0f) == 1.0f);
    CHECK(owner.changes == 3);
    limited.assign(8.0f);  // clamped first, so it is none
    CHECK(owner.changes == 3);
    CHECK(limited.assignLimited(nan) == -1.0f);
    CHECK(LimitedProperty<int>(99, 1, 16).get() == 16);
}

TEST_CASE("Property: a copy has no owner, and a value that is copied in keeps limits and owner") {
    CountingOwner owner, other;
    Property<int> number(1, &owner);
    LimitedProperty<int> level(5, 0, 10, &owner), narrow(1, 0, 3, &other);
    Property<int> numberCopy(number);
    LimitedProperty<int> levelCopy(level);
    numberCopy = 2;
    levelCopy.assign(6);
    narrow = levelCopy;
    CHECK(owner.changes == 0);
    CHECK(narrow.get() == 3);
    CHECK(other.changes == 1);
    number = numberCopy;
    CHECK(owner.changes == 1);
}

}  // namespace
}  // namespace cinder
