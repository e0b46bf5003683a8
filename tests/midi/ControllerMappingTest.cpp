#include "midi/ControllerMapping.h"

#include <doctest/doctest.h>

namespace cinder {
namespace {

struct Changes {
    explicit Changes(ControllerMapping& mapping) {
        mapping.changed().addHandler(NotifyEvent::makeHandler(this, &Changes::heard));
    }
    void heard(NotifyEvent::Argument) { ++count; }
    int count = 0;
};

TEST_CASE("ControllerMapping: a parameter has one controller, the last it was given") {
    ControllerMapping mapping;
    Changes changes(mapping);
    mapping.assign(20, 5);
    CHECK(mapping.targetOf(20) == 5);
    CHECK(mapping.controllerOf(5) == 20);
    mapping.assign(21, 5);
    CHECK(mapping.targetOf(20) == ControllerMapping::none);
    CHECK(mapping.controllerOf(5) == 21);
    CHECK(changes.count == 2);
    mapping.assign(21, 5);  // as it is
    CHECK(changes.count == 2);
    mapping.assign(21, 6);  // another parameter takes the controller over
    CHECK(mapping.controllerOf(5) == ControllerMapping::none);
    mapping.assign(ControllerMapping::none, 6);
    CHECK(mapping.targetOf(21) == ControllerMapping::none);
    mapping.assign(22, 7);
    mapping.assign(22, ControllerMapping::none);
    CHECK(mapping.controllerOf(7) == ControllerMapping::none);
}

TEST_CASE("ControllerMapping: one event a bracket, none where nothing changes") {
    ControllerMapping mapping;
    Changes changes(mapping);
    mapping.clear();
    CHECK(changes.count == 0);
    {
        const UpdateBracket bracket(mapping);
        for (int i = 0; i < ControllerMapping::numControllers; ++i)
            mapping.set(i, i * 3);
    }
    CHECK(changes.count == 1);
    mapping.clear();
    CHECK(changes.count == 2);
    CHECK(mapping.controllerOf(ControllerMapping::none) == ControllerMapping::none);
}

TEST_CASE("ControllerMapping: numbers out of range have no entry") {
    ControllerMapping mapping;
    mapping.set(20, 2);
    for (const int number : {-2, 128, 1 << 30}) {
        mapping.set(number, 1);
        CHECK(mapping.targetOf(number) == ControllerMapping::none);
        mapping.assign(number, 2);  // learnt from a broken message
        CHECK(mapping.controllerOf(2) == 20);
    }
    CHECK(mapping.controllerOf(1) == ControllerMapping::none);
}

}  // namespace
}  // namespace cinder
