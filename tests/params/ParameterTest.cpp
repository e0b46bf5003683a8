#include <doctest/doctest.h>

#include <limits>
#include <vector>

#include "params/FloatParamPluginParameter.h"
#include "params/GenericPluginBase.h"
#include "params/PropPluginParameter.h"

namespace cinder {
namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
enum class Colour : std::int32_t { Red, Green, Blue };

/// Writes down what its parameters tell it.
class Owner final : public GenericPluginBase {
public:
    Owner() : GenericPluginBase(stereoLayout, 0, &list) {}
    void beginUpdate() override {}
    void endUpdate() override {}
    void parameterChanged(int id, float value, unsigned flags) override {
        told.push_back(id);
        CHECK(value == parameter(id)->value());
        CHECK(flags == AbstractPluginParameter::hostKnows);
    }
    int addGroup(const std::string&) override { return 0; }
    void requestHostRefresh() override {}

    std::vector<int> told;  // ids

private:
    std::vector<AbstractPluginParameter*> list;
};

TEST_CASE("Parameters: clamp or cut to steps, and tell their owner of real changes alone") {
    struct Row {
        float set, value;
        bool isTold;
    };
    Owner owner;
    FloatPluginParameter level(&owner, "Level", {-2.0f, 2.0f, 0.5f});
    PropPluginParameter<Colour> colour(&owner, "Colour", {0, 2, 1});
    CHECK(owner.parameterCount() == 2);
    CHECK(owner.parameter(1) == &colour);
    CHECK(owner.parameter(-1) == nullptr);
    CHECK(owner.parameter(2) == nullptr);
    const auto check = [&](AbstractPluginParameter& parameter, const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            INFO("parameter " << parameter.getId() << ", set to " << row.set);
            owner.told.clear();
            parameter.setValue(row.set, AbstractPluginParameter::hostKnows);
            CHECK(parameter.value() == row.value);
            CHECK(owner.told == std::vector<int>(row.isTold ? 1 : 0, parameter.getId()));
        }
    };
    check(level, {{0.5f, 0.5f, false},
                  {0.5f + 1e-7f, 0.5f, false},
                  {0.5f + 3e-7f, 0.5f + 3e-7f, true},
                  {5.0f, 2.0f, true},
                  {3.0f, 2.0f, false},
                  {notANumber, 2.0f, false}});
    check(colour, {{1.9f, 1.0f, false},
                   {2.0f, 2.0f, true},
                   {1e30f, 2.0f, false},
                   {-0.5f, 0.0f, true},
                   {notANumber, 0.0f, false},
                   {1e30f, 2.0f, true},
                   {notANumber, 2.0f, false}});
}

TEST_CASE("Parameters: what is applied reaches every target, and leaves the value alone") {
    wave::Environment environment;
    wave::FloatParameter first(&environment, 0.0f), second(&environment, 0.0f);
    Property<Colour> property(Colour::Red);
    Owner owner;
    FloatParamPluginParameter level(&owner, "Level");
    PropPluginParameter<Colour> colour(&owner, "Colour", {0, 2, 1});
    level.addTarget(&first);
    level.addTarget(&second);
    colour.addProperty(&property);
    level.setValue(0.5f, AbstractPluginParameter::hostKnows);
    CHECK(first.getTarget() == 0.0f);
    level.applyValue(0.5f);
    colour.applyValue(2.0f);
    CHECK(first.getTarget() == 0.5f);
    CHECK(second.getTarget() == 0.5f);
    CHECK(property.get() == Colour::Blue);
    CHECK(colour.typedValue() == Colour::Green);
}

TEST_CASE("Parameters: denormalize inverts normalize, rounds to the nearest step and clamps") {
    Owner owner;
    FloatPluginParameter level(&owner, "Level", {-2.0f, 2.0f, 0.5f});
    CHECK(level.normalize(1.0f) == 0.75f);
    CHECK(level.denormalize(0.75f) == 1.0f);
    PropPluginParameter<int> steps(&owner, "Steps", {-4, 4, 0}), single(&owner, "One", {5, 5, 5});
    for (float value = -4.0f; value <= 4.0f; ++value) {
        CHECK(steps.denormalize(steps.normalize(value)) == value);
        CHECK(steps.denormalize((value + 3.5f) / 8.0f) == std::max(value, -4.0f));  // half way: up
    }
    CHECK(steps.denormalize(7.0f) == 4.0f);
    CHECK(steps.denormalize(notANumber) == -4.0f);
    CHECK(single.normalize(5.0f) == 0.0f);
    CHECK(single.denormalize(0.7f) == 5.0f);
}

}  // namespace
}  // namespace cinder
