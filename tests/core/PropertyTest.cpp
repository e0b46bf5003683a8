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
    name = std::string("a");
    level = nan;
    level = 1.0f;
    CHECK(owner.changes == 0);
    CHECK(level == 1.0f);
    name = std::string("b");
    CHECK(owner.last == &name);
    level = 2.0f;
    CHECK(owner.last == &level);
    CHECK(owner.changes == 2);
}

TEST_CASE("LimitedProperty: clamps first, so a value beyond the limit it stands at is no change") {
    CountingOwner owner;
    LimitedProperty<float> level(0.5f, -1.0f, 1.0f, &owner);
    CHECK(level.assignLimited(7.0f) == 1.0f);
    CHECK(owner.changes == 1);
    level.assign(8.0f);
    CHECK(owner.changes == 1);
    CHECK(level.assignLimited(nan) == -1.0f);
    CHECK(level.assignLimited(-std::numeric_limits<float>::infinity()) == -1.0f);
    CHECK(owner.changes == 2);
    CHECK(LimitedProperty<int>(99, 1, 16).get() == 16);
}

}  // namespace
}  // namespace cinder
