#include <doctest/doctest.h>

#include <cmath>
#include <vector>

#include "analysis/CachedDiscreteFrequencyResponseSource.h"

namespace cinder {
namespace {

using Mapping = DiscreteFrequencyResponseSource::Mapping;
using Response = FrequencyResponseSource::Response;

/// Counts what it computes. Its response is the frequency, and the index turned by 90 degrees.
struct Counted final : CachedDiscreteFrequencyResponseSource {
    using CachedDiscreteFrequencyResponseSource::CachedDiscreteFrequencyResponseSource;
    Response computeResponse(int index) override {
        ++computed;
        return {getMapping()->getFrequency(index), static_cast<float>(index)};
    }
    int sweep(int first, int last) {
        computed = 0;
        std::vector<Response> responses(static_cast<std::size_t>(last - first + 1));
        getResponses(first, responses.data(), last - first + 1);
        for (int i = first; i <= last; ++i) {
            const Response expected = {getMapping()->getFrequency(i), static_cast<float>(i)};
            CHECK(responses[static_cast<std::size_t>(i - first)] == expected);
        }
        return computed;
    }
    int computed = 0;
};

TEST_CASE("Frequency responses: both grids run from end to end, and find their points again") {
    for (const bool logarithmic : {false, true}) {
        INFO("logarithmic " << logarithmic);
        Mapping mapping;
        mapping.logarithmic = logarithmic;
        CHECK(mapping.getTableSize() == 256);
        CHECK(mapping.getFrequency(0) == 20.0f);
        CHECK(mapping.getFrequency(255) == doctest::Approx(20000.0).epsilon(1e-5));
        for (const int i : {-3, 0, 1, 100, 255, 300})
            CHECK(mapping.getIndex(mapping.getFrequency(i)) == i);
        const float third = (mapping.getFrequency(10) * 2.0f + mapping.getFrequency(11)) / 3.0f;
        CHECK(mapping.getIndex(third) == 10);
        CHECK(mapping.getIndex(std::nanf("")) < 0);
    }
    Mapping mapping;
    mapping.lowFrequency = 0.0f;
    mapping.highFrequency = 255.0f;
    CHECK(mapping.getIndex(2.5f) == 3);
    CHECK(mapping.getIndex(-2.5f) == -3);
}

TEST_CASE("Frequency responses: a second sweep computes nothing, one out of order keeps nothing") {
    Mapping mapping;
    Counted source(&mapping);
    CHECK(source.sweep(10, 255) == 246);
    CHECK(source.sweep(0, 255) == 256);
    CHECK(source.sweep(0, 255) == 0);
    CHECK(source.sweep(-5, -1) == 5);
    CHECK(source.getPower(7) == doctest::Approx(std::norm(source.getResponseAt(7))));
    CHECK(source.getResponse(mapping.getFrequency(20) + 1.0f) == source.getResponseAt(20));
}

TEST_CASE("Frequency responses: a grid that changes says so, and caches follow it") {
    struct Follower {
        void follow(NotifyEvent::Argument argument) {
            CHECK(argument == mapping);
            source->resetCache();
        }
        Mapping* mapping;
        Counted* source;
    };
    Mapping mapping;
    Counted source(&mapping);
    Follower follower = {&mapping, &source};
    mapping.changed.setMainHandler(NotifyEvent::makeHandler(&follower, &Follower::follow));
    source.sweep(0, 255);
    mapping.steps.assign(400);
    CHECK(source.sweep(0, 400) == 401);
    CHECK(source.sweep(0, 400) == 0);
    mapping.lowFrequency = 40.0f;
    mapping.steps.assign(100);
    CHECK(source.sweep(0, 100) == 101);
}

TEST_CASE("Frequency responses: a source that does nothing has the response 1") {
    Mapping mapping;
    DiscreteFrequencyResponseSource source(&mapping);
    float powers[256];
    source.getPowers(0, powers, 256);
    for (const float power : powers)
        CHECK(power == 1.0f);
}

}  // namespace
}  // namespace cinder
