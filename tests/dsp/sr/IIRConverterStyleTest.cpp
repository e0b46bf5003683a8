#include "dsp/sr/IIRConverterStyle.h"

#include <doctest/doctest.h>

#include <cmath>
#include <vector>

#include "ConverterRig.h"
#include "dsp/sr/EllipticDesign.h"

using namespace cinder;

namespace {

struct Design {
    int order;
    float edge;
};
constexpr Design steep = {13, 1.4891149f};
constexpr Design steepAt96 = {11, 1.3948672f};
constexpr Design relaxed = {7, 1.0367255f};
constexpr Design lower = {13, 1.3823007f};

const struct {
    std::vector<float> rates;
    std::vector<int> requested;
    int actual;
    std::vector<Design> stages;
    int latency;
} cascades[] = {
    {{44100}, {8}, 8, {steep, relaxed, relaxed}, 4},
    {{48000}, {8}, 8, {steepAt96, relaxed, relaxed}, 4},
    {{44100, 48000}, {4}, 4, {lower, relaxed}, 4},
    {{44100, 48000}, {2}, 2, {lower}, 3},
    {{88200, 96000}, {4, 8}, 4, {relaxed, relaxed}, 3},
    {{88200, 96000}, {2}, 2, {relaxed}, 2},
    {{176400, 192000}, {2, 4, 8}, 2, {relaxed}, 2},
    {{200000}, {8}, 1, {}, 0},
    // Rates no host runs at, where other stages meet.
    {{22050}, {8}, 8, {steep, steep, relaxed}, 4},
    {{24000}, {8}, 8, {steep, steepAt96, relaxed}, 4},
    {{11025}, {8}, 8, {steep, steep, steep}, 4},
    {{22050}, {4}, 4, {lower, lower}, 4},
};

/// Delay of an impulse on its way up and down, at frequency 0: sum n h[n] / sum h[n].
double measuredLatency(sr::IIRConverterStyle& style) {
    test::Signal impulse(4000);
    impulse[0] = 1.0f;
    double sum = 0.0, moment = 0.0;
    for (double n = 0.0; const float h : test::roundTrip(style, impulse)) {
        sum += static_cast<double>(h);
        moment += n++ * static_cast<double>(h);
    }
    return moment / sum;
}

void checkCascade(float rate, int requested, const auto& row) {
    INFO("rate " << rate << ", requested " << requested);
    test::StyleRig rig(rate, requested);
    CHECK(rig.style.getFactor() == row.actual);
    const auto stages = rig.style.getStages();
    REQUIRE(stages.size() == row.stages.size());
    for (std::size_t i = 0; i < stages.size(); ++i) {
        std::vector<double> exact(static_cast<std::size_t>(row.stages[i].order / 2));
        sr::designHalfBand(row.stages[i].order, static_cast<double>(row.stages[i].edge), exact);
        REQUIRE(stages[i].numCoefficients == static_cast<int>(exact.size()));
        for (std::size_t c = 0; c < exact.size(); ++c)
            CHECK(stages[i].coefficients[c] == static_cast<float>(exact[c]));
    }
    CHECK(rig.style.getLatency(row.actual) == row.latency);
    if (row.actual > 1) CHECK(std::lround(measuredLatency(rig.style)) == row.latency);
}

}  // namespace

TEST_CASE("IIRConverterStyle: each rate and request has its cascade and its latency") {
    for (const auto& row : cascades)
        for (const float rate : row.rates)
            for (const int requested : row.requested)
                checkCascade(rate, requested, row);
}

TEST_CASE("IIRConverterStyle: requests are rounded down, limits of the rate met in float") {
    test::StyleRig rig(44100.0f, 1);
    const std::pair<int, int> requests[] = {{2, 2}, {3, 2}, {7, 4},  {9, 8},
                                            {0, 1}, {8, 8}, {-5, 1}, {2147483647, 8}};
    for (const auto& [requested, actual] : requests) {
        INFO("requested " << requested);
        rig.style.setFactor(requested);
        CHECK(rig.style.getFactor() == actual);
    }
    CHECK(sr::IIRConverterStyle(&rig.environment).getFactor() == 1);

    const std::pair<float, int> limits[] = {{48000.125f, 8}, {48000.13f, 4}, {96000.25f, 4},
                                            {96000.26f, 2},  {192000.5f, 2}, {192000.52f, 1}};
    for (const auto& [rate, factor] : limits) {
        INFO("rate " << rate);
        CHECK(test::StyleRig(rate).style.getFactor() == factor);
    }
}

TEST_CASE("IIRConverterStyle: the latency of a factor doesn't ask which one is in force") {
    const int expected[][4] = {
        {48001, 3, 4, 4}, {48002, 2, 3, 3}, {96002, 2, 2, 2}, {192002, 0, 0, 0}};
    for (const auto& row : expected) {
        INFO("rate " << row[0]);
        test::StyleRig rig(static_cast<float>(row[0]), 1);
        for (int i = 1; i <= 3; ++i)
            CHECK(rig.style.getLatency(1 << i) == row[i]);
        for (const int other : {0, 1, 3, 16, -2})
            CHECK(rig.style.getLatency(other) == 0);
    }
}

TEST_CASE("IIRConverterStyle: a new rate is noticed once, by whoever comes first") {
    test::StyleRig rig(44100.0f);
    sr::IIRInterpolator first(&rig.style), second(&rig.style);
    sr::IIRDecimator third(&rig.style);
    // Rate and request change together: neither change hides the other.
    rig.style.setFactor(0);
    rig.environment.setSampleRate(96000.0f);
    rig.style.setFactor(8);
    const test::Signal in(16, 1.0f);
    CHECK(test::sameBits(test::raise(first, in, 4), test::raise(second, in, 4)));
    third.reset();
    CHECK(rig.style.getFactor() == 4);
    CHECK(rig.style.getNumDesigns() == 2);
}
