#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "params/FloatParamPluginParameter.h"
#include "params/GenericPluginBase.h"
#include "params/PropPluginParameter.h"

namespace cinder {
namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Writes down what its parameters tell it.
class Owner final : public GenericPluginBase {
public:
    Owner() : GenericPluginBase(stereoLayout, 0, &list) {}
    void beginUpdate() override {}
    void endUpdate() override {}
    void parameterChanged(int id, float value, unsigned flags) override {
        told.push_back({id, value, flags});
    }
    int addGroup(const std::string&) override { return 0; }
    void requestHostRefresh() override {}

    struct Told {
        int id;
        float value;
        unsigned flags;
    };
    std::vector<Told> told;

private:
    std::vector<AbstractPluginParameter*> list;
};

TEST_CASE("Parameters: ids follow the order of construction") {
    Owner owner;
    FloatPluginParameter a(&owner, "A");
    PropPluginParameter<int> b(&owner, "B");
    CHECK(a.getId() == 0);
    CHECK(b.getId() == 1);
    CHECK(owner.parameterCount() == 2);
    CHECK(owner.parameter(1) == &b);
    CHECK(owner.parameter(-1) == nullptr);
    CHECK(owner.parameter(2) == nullptr);
}

TEST_CASE("FloatPluginParameter: clamps, and tells its owner of real changes alone") {
    struct Row {
        float set, value;
        bool isTold;
    };
    Owner owner;
    FloatPluginParameter parameter(&owner, "Level", {-2.0f, 2.0f, 0.5f});
    CHECK(parameter.value() == 0.5f);
    for (const Row& row : {Row{0.5f, 0.5f, false}, Row{0.5f + 1e-7f, 0.5f, false},
                           Row{0.5f + 3e-7f, 0.5f + 3e-7f, true}, Row{5.0f, 2.0f, true},
                           Row{3.0f, 2.0f, false}, Row{notANumber, -2.0f, true}}) {
        INFO("set to " << row.set);
        owner.told.clear();
        parameter.setValue(row.set, AbstractPluginParameter::hostKnows);
        CHECK(parameter.value() == row.value);
        REQUIRE(owner.told.size() == (row.isTold ? 1 : 0));
        if (!row.isTold) continue;
        CHECK(owner.told[0].id == 0);
        CHECK(owner.told[0].value == row.value);
        CHECK(owner.told[0].flags == AbstractPluginParameter::hostKnows);
    }
    CHECK(parameter.normalize(1.0f) == 0.75f);
    CHECK(parameter.denormalize(0.75f) == 1.0f);
}

TEST_CASE("FloatParamPluginParameter: gives its value to each control value when applied") {
    wave::Environment environment;
    wave::FloatParameter first(&environment, 0.0f), second(&environment, 0.0f);
    Owner owner;
    FloatParamPluginParameter parameter(&owner, "Level");
    parameter.addTarget(&first);
    parameter.addTarget(&second);
    parameter.setValue(0.5f, 0);
    CHECK(first.getTarget() == 0.0f);
    parameter.applyValue(0.5f);
    CHECK(first.getTarget() == 0.5f);
    CHECK(second.getTarget() == 0.5f);
}

enum class Colour : std::int32_t { Red, Green, Blue };

TEST_CASE("IndexedPluginParameter: cuts to whole steps, once told for each") {
    Owner owner;
    PropPluginParameter<Colour> parameter(&owner, "Colour", {0, 2, 1});
    Property<Colour> property(Colour::Red);
    parameter.addProperty(&property);
    struct Row {
        float set, value;
        bool isTold;
    };
    for (const Row& row : {Row{1.9f, 1.0f, false}, Row{2.0f, 2.0f, true}, Row{1e30f, 2.0f, false},
                           Row{-0.5f, 0.0f, true}, Row{notANumber, 0.0f, false}}) {
        INFO("set to " << row.set);
        owner.told.clear();
        parameter.setValue(row.set, 0);
        CHECK(parameter.value() == row.value);
        CHECK(owner.told.size() == (row.isTold ? 1 : 0));
    }
    parameter.applyValue(2.0f);
    CHECK(property.get() == Colour::Blue);
    CHECK(parameter.typedValue() == Colour::Red);
}

TEST_CASE("IndexedPluginParameter: denormalize rounds to the nearest step, and inverts normalize") {
    Owner owner;
    PropPluginParameter<int> parameter(&owner, "Steps", {-4, 4, 0});
    for (int step = -4; step <= 4; ++step) {
        const auto value = static_cast<float>(step);
        CHECK(parameter.denormalize(parameter.normalize(value)) == value);
    }
    for (int k = 0; k < 8; ++k)  // half way rounds up
        CHECK(parameter.denormalize((static_cast<float>(k) + 0.5f) / 8.0f) ==
              static_cast<float>(k - 3));
    CHECK(parameter.denormalize(0.0f) == -4.0f);
    CHECK(parameter.denormalize(1.0f) == 4.0f);
    CHECK(parameter.denormalize(7.0f) == 4.0f);
    CHECK(parameter.denormalize(notANumber) == -4.0f);
    PropPluginParameter<int> single(&owner, "One", {5, 5, 5});
    CHECK(single.normalize(5.0f) == 0.0f);
    CHECK(single.denormalize(0.7f) == 5.0f);
}

}  // namespace
}  // namespace cinder
