#include "dsp/filters/crossover/CrossoverMultiBandModel.h"

#include <doctest/doctest.h>

#include "dsp/filters/crossover/SplitRig.h"

namespace cinder {
namespace {

using Model = CrossoverMultiBandModel;
using test::Rng;
using test::SplitRig;

TEST_CASE("CrossoverMultiBandModel: the middle crossover is the root, bands are the leaves") {
    constexpr auto none = Model::noCrossover;
    struct Case {
        int root;
        std::vector<Model::Place> crossovers;
        std::vector<Model::Place> bands;
        std::vector<std::array<int, 2>> sizes;
    };
    using enum Model::Side;
    const Case cases[] = {
        {none, {}, {{none, Low}}, {}},
        {0, {{none, Low}}, {{0, Low}, {0, High}}, {{0, 0}}},
        {1, {{1, Low}, {none, Low}}, {{0, Low}, {0, High}, {1, High}}, {{0, 0}, {1, 0}}},
        {1,
         {{1, Low}, {none, Low}, {1, High}},
         {{0, Low}, {0, High}, {2, Low}, {2, High}},
         {{0, 0}, {1, 1}, {0, 0}}},
        {2,
         {{1, Low}, {2, Low}, {none, Low}, {2, High}},
         {{0, Low}, {0, High}, {1, High}, {3, Low}, {3, High}},
         {{0, 0}, {1, 0}, {2, 1}, {0, 0}}},
        {2,
         {{1, Low}, {2, Low}, {none, Low}, {4, Low}, {2, High}},
         {{0, Low}, {0, High}, {1, High}, {3, Low}, {3, High}, {4, High}},
         {{0, 0}, {1, 0}, {2, 2}, {0, 0}, {1, 0}}},
    };
    Model model;
    for (int pass = 0; pass < 2; ++pass)
        for (int bands = 6; bands >= 1; --bands) {
            INFO("bands " << bands);
            model.bandCount.assign(bands);
            const Case& expected = cases[bands - 1];
            CHECK(model.getRoot() == expected.root);
            for (int i = 0; i < bands; ++i)
                CHECK(model.getBand(i).getPlace() == expected.bands[static_cast<std::size_t>(i)]);
            for (int i = 0; i < bands - 1; ++i) {
                const auto at = static_cast<std::size_t>(i);
                CHECK(model.getCrossover(i).getPlace() == expected.crossovers[at]);
                CHECK(model.getCrossover(i).getSubtreeSize(Low) == expected.sizes[at][0]);
                CHECK(model.getCrossover(i).getSubtreeSize(High) == expected.sizes[at][1]);
            }
        }
}

TEST_CASE("CrossoverMultiBandModel: tells of every change once, of a bracket once") {
    struct Counter {
        void count(NotifyEvent::Argument) { ++calls; }
        int calls = 0;
    } counter;
    Model model;
    model.changed().addHandler(NotifyEvent::makeHandler(&counter, &Counter::count));
    const auto callsFor = [&](auto change) {
        counter.calls = 0;
        change();
        return counter.calls;
    };
    CHECK(callsFor([&] { model.bandCount.assign(3); }) == 1);
    CHECK(callsFor([&] { model.bandCount.assign(3); }) == 0);
    CHECK(callsFor([&] { model.getCrossover(1).slope = 48.0f; }) == 1);
    CHECK(callsFor([&] { model.getBand(2).active = false; }) == 1);
    CHECK(callsFor([&] { model.getMapping().logarithmic = true; }) == 1);
    CHECK(callsFor([&] {
              UpdateBracket bracket(model);
              model.bandCount.assign(6);
              model.getCrossover(0).frequency = 7.0f;
          }) == 1);
}

TEST_CASE("CrossoverMultiBandModel: warped responses are the magnitudes of the real bands") {
    Rng rng = Rng::fromEnvironment();
    for (const auto slope : test::allSlopes)
        for (const int bands : {1, 2, 4, 6}) {
            INFO("slope " << static_cast<int>(slope) << ", bands " << bands << ", seed "
                          << rng.seed());
            SplitRig rig(44100.0f, test::impulse(32768));
            rig.set(bands, slope, test::ascendingHz(rng, bands - 1, 100.0, 15000.0));
            auto& mapping = rig.model.getMapping();
            mapping.logarithmic = true;
            rig.model.processingMode = Model::ProcessingMode::Warped;
            const SplitRig::Bands measured = rig.play(32768);
            double worst = 0.0;
            for (int band = 0; band < bands; ++band)
                for (const int point : {0, 60, 110, 150, 180, 200, 220, 245, 255}) {
                    const double cycles = static_cast<double>(mapping.getFrequency(point)) / 44100;
                    const double power = std::norm(
                        test::responseOf(measured[static_cast<std::size_t>(band)], cycles));
                    const float theory = rig.model.getBand(band).getPower(point);
                    worst = std::max(worst, std::abs(power - static_cast<double>(theory)));
                }
            CHECK(worst < 1e-4);
        }
}

TEST_CASE("CrossoverMultiBandModel: analog responses go by the slope, half at the crossover") {
    Model model;
    model.bandCount.assign(2);
    auto& source = model.getCrossover(0).getResponseSource();
    model.getMapping().logarithmic = true;
    const int point = model.getMapping().getIndex(1000.0f);
    const float hz = model.getMapping().getFrequency(point);
    for (const float slope : {6.0f, 24.0f, 30.0f}) {
        model.getCrossover(0).slope = slope;
        model.getCrossover(0).frequency = std::log2(hz);
        CHECK(source.getResponseAt(point).real() == doctest::Approx(0.5));
        model.getCrossover(0).frequency = std::log2(hz) - 1.0f;  // an octave below
        const double expected = 1.0 / (std::pow(2.0, static_cast<double>(slope) / 6.0) + 1.0);
        CHECK(model.getBand(0).getResponseAt(point).real() == doctest::Approx(expected));
        CHECK(model.getBand(1).getResponseAt(point).real() == doctest::Approx(1.0 - expected));
    }

    model.getMapping().logarithmic = false;
    model.getCrossover(0).slope = 24.0f;
    CHECK(model.getMapping().getFrequency(-1) < 0.0f);
    CHECK(model.getBand(0).getResponseAt(-1).real() == doctest::Approx(1.0).epsilon(1e-3));
}

}  // namespace
}  // namespace cinder
