#include "cinder/plot/Axis.h"

#include <doctest/doctest.h>

#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace cinder::test {

namespace {

std::vector<std::string> labels(const Axis& axis, int most) {
    std::vector<std::string> all;
    for (const Tick& tick : axis.ticks(most))
        if (!tick.label.empty()) all.push_back(tick.label);
    return all;
}

using Labels = std::vector<std::string>;

}  // namespace

TEST_CASE("Axis: any range gets ticks that differ, fit and lie inside it") {
    using enum Axis::Kind;
    for (const Axis::Kind kind : {Plain, Decibels, Degrees})
        for (const double from : {-997.3, -60.0, -0.3, 0.0, 12.0, 5000.0})
            for (const double length : {1.5, 7.0, 24.0, 100.0, 6000.0})
                for (const int most : {3, 6, 9}) {
                    const Axis axis = {"", kind, from, from + length};
                    const Labels all = labels(axis, most);
                    INFO("kind " << static_cast<int>(kind) << ", from " << from << ", length "
                                 << length << ", most " << most);
                    CHECK(static_cast<int>(all.size()) <= most);
                    CHECK(std::set<std::string>(all.begin(), all.end()).size() == all.size());
                    for (const Tick& tick : axis.ticks(most)) {
                        CHECK(axis.placeOf(tick.value) > -1e-6);
                        CHECK(axis.placeOf(tick.value) < 1.0 + 1e-6);
                    }
                }
}

TEST_CASE("Axis: ticks are the numbers that people count in") {
    const auto minus = [](const char* digits) { return "\xe2\x88\x92" + std::string(digits); };
    CHECK(labels({"", Axis::Kind::Decibels, -25.0, 14.0}, 5) ==
          Labels{minus("24"), minus("12"), "0", "12"});
    CHECK(labels({"", Axis::Kind::Degrees, -180.0, 180.0}, 5) ==
          Labels{minus("180"), minus("90"), "0", "90", "180"});
    CHECK(labels({"", Axis::Kind::Plain, -0.3, 0.3}, 7) ==
          Labels{minus("0.3"), minus("0.2"), minus("0.1"), "0.0", "0.1", "0.2", "0.3"});
    CHECK(labels({"", Axis::Kind::Hertz, 20.0, 20000.0}, 12) ==
          Labels{"20", "50", "100", "200", "500", "1k", "2k", "5k", "10k", "20k"});
    CHECK(labels({"", Axis::Kind::Hertz, 20.0, 20000.0}, 6) == Labels{"100", "1k", "10k"});
}

TEST_CASE("Axis: octaves are of equal width in Hertz, units elsewhere") {
    const Axis hertz = {"", Axis::Kind::Hertz, 20.0, 20000.0};
    CHECK(hertz.placeOf(20.0) == doctest::Approx(0.0));
    CHECK(hertz.placeOf(20000.0) == doctest::Approx(1.0));
    CHECK(hertz.placeOf(2000.0) - hertz.placeOf(1000.0) ==
          doctest::Approx(hertz.placeOf(80.0) - hertz.placeOf(40.0)));
    CHECK(Axis{"", Axis::Kind::Decibels, -60.0, 20.0}.placeOf(0.0) == doctest::Approx(0.75));
}

}  // namespace cinder::test
