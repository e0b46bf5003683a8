#include <doctest/doctest.h>

#include <limits>
#include <utility>
#include <vector>

#include "params/FloatParamPluginParameter.h"
#include "params/GenericParameterResponder.h"
#include "params/LimFloatPropPluginParameter.h"
#include "params/PropPluginParameter.h"
#include "params/TestOwner.h"
#include "support/RealtimeGuard.h"

namespace cinder {
namespace {

using test::TestOwner;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
enum class Colour : std::int32_t { Red, Green, Blue };

TEST_CASE("Parameters: clamp or cut to steps, and tell their owner of real changes alone") {
    struct Row {
        float set, value;
        bool isTold;
    };
    TestOwner owner;
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
            std::vector<TestOwner::Told> expected;
            if (row.isTold)
                expected = {{parameter.getId(), row.value, AbstractPluginParameter::hostKnows, 0}};
            CHECK(owner.told == expected);
        }
    };
    check(level, {{0.5f, 0.5f, false},
                  {0.5f + 1e-7f, 0.5f, false},
                  {0.5f + 3e-7f, 0.5f + 3e-7f, true},
                  {5.0f, 2.0f, true},
                  {infinity, 2.0f, false},
                  {notANumber, 2.0f, false},
                  {-infinity, -2.0f, true}});
    check(colour, {{1.9f, 1.0f, false},
                   {2.0f, 2.0f, true},
                   {1e30f, 2.0f, false},
                   {-infinity, 0.0f, true},
                   {-0.5f, 0.0f, false},
                   {infinity, 2.0f, true},
                   {notANumber, 2.0f, false}});
}

TEST_CASE("Parameters: what is applied reaches every target, and leaves the value alone") {
    struct Heard final : ParameterResponder {
        Heard() { values.reserve(8); }  // the audio thread fills it
        void valueChanged(float value, AbstractPluginParameter* parameter) override {
            values.emplace_back(parameter, value);
        }
        std::vector<std::pair<AbstractPluginParameter*, float>> values;
    };
    constexpr std::int32_t table[] = {7, 2, 0};
    wave::Environment environment;
    wave::FloatParameter first(&environment, 0.0f), second(&environment, 0.0f);
    Property<Colour> property(Colour::Red);
    Property<bool> isSet(false);
    LimitedProperty<float> limited(0.0f, -1.0f, 0.25f);
    TestOwner owner;
    FloatParamPluginParameter level(&owner, "Level");
    PropPluginParameter<Colour> colour(&owner, "Colour", {0, 2, 1});
    LimFloatPropPluginParameter share(&owner, "Share");
    PropPluginParameter<bool> tabled(&owner, "Tabled", {3, 5, 4});
    Heard heard;
    level.setTargetRange(-1.0f, 1.0f);
    level.addTarget(&first);
    level.addTarget(&second);
    colour.addProperty(&property);
    share.addProperty(&limited);
    tabled.setValueTable(table, 3);
    tabled.addProperty(&isSet);
    for (AbstractPluginParameter* parameter :
         {static_cast<AbstractPluginParameter*>(&level), owner.parameter(1), owner.parameter(2)})
        parameter->addResponder(&heard);
    level.setValue(0.5f, 0);
    CHECK(first.getTarget() == 0.0f);
    const auto report = test::guarded([&] {
        level.applyValue(0.75f);
        colour.applyValue(2.0f);
        share.applyValue(1.0f);
        tabled.applyValue(3.0f);
    });
    CHECK_MESSAGE(report.isClean(), report);
    CHECK(first.getTarget() == 0.5f);
    CHECK(second.getTarget() == 0.5f);
    CHECK(property.get() == Colour::Blue);
    CHECK(colour.typedValue() == Colour::Green);
    CHECK(limited.get() == 0.25f);
    CHECK(isSet.get());
    tabled.applyValue(9.0f);
    CHECK(!isSet.get());
    CHECK(heard.values == std::vector<std::pair<AbstractPluginParameter*, float>>{
                              {&level, 0.5f}, {&colour, 2.0f}, {&share, 1.0f}});
}

TEST_CASE("Parameters: denormalize inverts normalize, rounds to the nearest step and clamps") {
    TestOwner owner;
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

TEST_CASE("Parameters: an edit of several keeps the proportions that are displayed") {
    TestOwner owner;
    FloatPluginParameter share(&owner, "Share");
    share.setDisplayRange(0.0f, 100.0f);
    CHECK(share.rescale(0.2f, 0.4f, 0.6f) == doctest::Approx(0.3));
    CHECK(share.rescale(0.2f, 0.0f, 0.5f) == doctest::Approx(0.7));  // no proportion to 0
    share.setDisplayRange(-20.0f, 0.0f);
    CHECK(share.rescale(0.5f, 0.0f, 0.75f) == doctest::Approx(0.875));  // -10, by -20 to -5
}

}  // namespace
}  // namespace cinder
