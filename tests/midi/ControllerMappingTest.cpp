#include "midi/ControllerMapping.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <map>

#include "support/Rng.h"

namespace cinder {
namespace {

struct Changes {
    explicit Changes(ControllerMapping& mapping) {
        mapping.changed().addHandler(NotifyEvent::makeHandler(this, &Changes::heard));
    }
    void heard(NotifyEvent::Argument) { ++count; }
    int count = 0;
};

TEST_CASE("ControllerMapping: a table with one event for each bracket that changes it") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int none = ControllerMapping::none;
    ControllerMapping mapping;
    Changes changes(mapping);
    std::map<int, int> model;  // the entries that are not `none`
    int numChanges = 0;
    for (int i = 0; i < 3000; ++i) {
        const int number = rng.integer(0, 9) == 0 ? 1 << 30 : rng.integer(-3, 130);
        const int target = rng.integer(none, 20);
        const auto before = model;
        const bool learns = rng.integer(0, 3) > 0;
        const bool isValid = number >= 0 && number < ControllerMapping::numControllers;
        const auto holder = [&] {
            return std::ranges::find_if(model, [&](auto entry) { return entry.second == target; });
        };
        const bool isThere = model.contains(number) && model[number] == target;
        if (learns && !isThere && (isValid || number == none) && holder() != model.end())
            model.erase(holder());
        if (isValid) model.erase(number);
        if (isValid && target != none) model[number] = target;
        if (i % 500 == 499) {
            model.clear();
            mapping.clear();
        } else {
            learns ? mapping.assign(number, target) : mapping.set(number, target);
        }
        numChanges += model != before;
        REQUIRE(changes.count == numChanges);
        for (int n = -2; n < 130; ++n)
            REQUIRE(mapping.targetOf(n) == (model.contains(n) ? model[n] : none));
        REQUIRE(mapping.controllerOf(target) == (holder() == model.end() ? none : holder()->first));
    }
}

}  // namespace
}  // namespace cinder
