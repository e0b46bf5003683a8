#include "dsp/sr/IIRConverterStyle.h"

#include <doctest/doctest.h>

#include <algorithm>
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

struct CascadeRow {
    float rate;
    int requested, actual;
    std::vector<Design> stages;
    int latency;
};

const CascadeRow cascades[] = {
    {44100, 8, 8, {steep, relaxed, relaxed}, 4},
    {48000, 8, 8, {steepAt96, relaxed, relaxed}, 4},
    {44100, 4, 4, {lower, relaxed}, 4},
    {48000, 4, 4, {lower, relaxed}, 4},
    {44100, 2, 2, {lower}, 3},
    {48000, 2, 2, {lower}, 3},
    {88200, 8, 4, {relaxed, relaxed}, 3},
    {96000, 8, 4, {relaxed, relaxed}, 3},
    {88200, 4, 4, {relaxed, relaxed}, 3},
    {96000, 4, 4, {relaxed, relaxed}, 3},
    {88200, 2, 2, {relaxed}, 2},
    {96000, 2, 2, {relaxed}, 2},
    {176400, 8, 2, {relaxed}, 2},
    {192000, 8, 2, {relaxed}, 2},
    {176400, 4, 2, {relaxed}, 2},
    {192000, 4, 2, {relaxed}, 2},
    {176400, 2, 2, {relaxed}, 2},
    {192000, 2, 2, {relaxed}, 2},
    {200000, 8, 1, {}, 0},
    // Rates no host runs at, where other stages meet.
    {22050, 8, 8, {steep, steep, relaxed}, 4},
    {24000, 8, 8, {steep, steepAt96, relaxed}, 4},
    {11025, 8, 8, {steep, steep, steep}, 4},
    {22050, 4, 4, {lower, lower}, 4},
};

std::vector<float> coefficientsOf(const Design& design) {
    std::vector<double> exact(static_cast<std::size_t>(design.order / 2));
    sr::designHalfBand(design.order, static_cast<double>(design.edge), exact);
    return {exact.begin(), exact.end()};
}

/// Delay of an impulse on its way up and down, at frequency 0: sum n h[n] / sum h[n].
double measuredLatency(sr::IIRConverterStyle& style) {
    double sum = 0.0, moment = 0.0;
    for (double n = 0.0; const float h : test::roundTrip(style, test::impulse(4000))) {
        sum += static_cast<double>(h);
        moment += n++ * static_cast<double>(h);
    }
    return moment / sum;
}

}  // namespace

TEST_CASE("IIRConverterStyle: each rate and request has its cascade and its latency") {
    for (const CascadeRow& row : cascades) {
        INFO("rate " << row.rate << ", requested " << row.requested);
        test::StyleRig rig(row.rate, row.requested);
        CHECK(rig.style.getFactor() == row.actual);
        const auto stages = rig.style.getStages();
        REQUIRE(stages.size() == row.stages.size());
        for (std::size_t i = 0; i < stages.size(); ++i) {
            const auto expected = coefficientsOf(row.stages[i]);
            REQUIRE(stages[i].numCoefficients == static_cast<int>(expected.size()));
            CHECK(std::ranges::equal(expected,
                                     std::span(stages[i].coefficients).first(expected.size())));
        }
        CHECK(rig.style.getLatency(row.actual) == row.latency);
        if (row.actual > 1) CHECK(std::lround(measuredLatency(rig.style)) == row.latency);
    }
}

TEST_CASE("IIRConverterStyle: a request is rounded down to what there is") {
    test::StyleRig rig(44100.0f);
    CHECK(rig.style.getMaxFactor() == 8);
    const std::pair<int, int> requests[] = {{1, 1},  {2, 2},          {3, 2},  {4, 4}, {7, 4},
                                            {8, 8},  {9, 8},          {99, 8}, {0, 1}, {8, 8},
                                            {-5, 1}, {2147483647, 8}, {1, 1}};
    for (const auto& [requested, actual] : requests) {
        rig.style.setFactor(requested);
        INFO("requested " << requested);
        CHECK(rig.style.getFactor() == actual);
    }
    CHECK(sr::IIRConverterStyle(&rig.environment).getFactor() == 1);
}

TEST_CASE("IIRConverterStyle: limits of the rate are met in float") {
    const std::pair<float, int> limits[] = {{48000.125f, 8}, {48000.13f, 4}, {96000.25f, 4},
                                            {96000.26f, 2},  {192000.5f, 2}, {192000.52f, 1}};
    for (const auto& [rate, factor] : limits) {
        INFO("rate " << rate);
        CHECK(test::StyleRig(rate).style.getFactor() == factor);
    }
    // A pure function of rate and factor: it doesn't ask what is in force.
    const int expected[][4] = {
        {48001, 3, 4, 4}, {48002, 2, 3, 3}, {96002, 2, 2, 2}, {192002, 0, 0, 0}};
    for (const auto& row : expected) {
        test::StyleRig rig(static_cast<float>(row[0]), 1);
        INFO("rate " << row[0]);
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
    CHECK(rig.style.getNumDesigns() == 1);

    rig.environment.setSampleRate(96000.0f);
    test::Signal in(16, 1.0f), out(16 * 8);
    CHECK(test::guarded([&] {
              first.process(in.data(), out.data(), 16);
              second.process(in.data(), out.data(), 16);
              third.reset();
          }).isClean());
    CHECK(rig.style.getFactor() == 4);
    CHECK(rig.style.getNumDesigns() == 2);

    // Rate and request change together: neither change hides the other.
    rig.style.setFactor(0);
    rig.environment.setSampleRate(44100.0f);
    CHECK_FALSE(second.process(in.data(), out.data(), 16));
    rig.style.setFactor(8);
    CHECK(rig.style.getFactor() == 8);
    CHECK(rig.style.getNumDesigns() == 3);
}
