#include "dsp/sr/IIRPhaseCompensator.h"

#include <doctest/doctest.h>

#include "ConverterRig.h"
#include "support/Rng.h"
#include "wave/Input.h"

using namespace cinder;
using test::Signal;

namespace {

struct CompensatorRig : test::StyleRig {
    CompensatorRig(float rate, int factor) : StyleRig(rate, factor) {
        compensator.setInput(&input);
    }

    Signal render(const Signal& in, const std::vector<int>& pieces) {
        Signal out;
        input.setBuffer(in.data(), static_cast<int>(in.size()));
        for (const int n : pieces) {
            environment.beginBlock();
            const float* block = nullptr;
            CHECK(test::guarded([&] { block = compensator.pull(n)->data(); }).isClean());
            out.insert(out.end(), block, block + n);
            environment.render(n, 0);
        }
        return out;
    }

    wave::Input input{&environment};
    sr::IIRPhaseCompensator compensator{&style};
};

}  // namespace

TEST_CASE("IIRPhaseCompensator: nulls against the trip through an oversampled stage") {
    auto rng = test::Rng::fromEnvironment();
    for (const float rate : {44100.0f, 48000.0f, 96000.0f, 192000.0f})
        for (const int requested : {2, 4, 8}) {
            INFO("rate " << rate << ", requested " << requested << ", seed " << rng.seed());
            CompensatorRig rig(rate, requested);
            const Signal in = rng.noise(1000);
            const Signal expected = test::roundTrip(rig.style, in);
            for (int run = 0; run < 2; ++run) {
                CHECK(test::sameBits(rig.render(in, rng.pieces(1000, 256)), expected));
                rig.environment.reset(wave::Environment::ResetMode::All);
            }
        }
}

TEST_CASE("IIRPhaseCompensator: at factor 1 the output is the input block itself") {
    for (const auto& [rate, requested] : {std::pair{44100.0f, 1}, std::pair{200000.0f, 8}}) {
        CompensatorRig rig(rate, requested);
        const Signal in(64, 0.5f);
        CHECK(test::sameBits(rig.render(in, {64}), in));
        CHECK(rig.compensator.getOutput() == rig.input.getOutput());
        rig.environment.setSampleRate(44100.0f);
        rig.style.setFactor(8);
        CHECK_FALSE(test::sameBits(rig.render(in, {64}), in));  // in its own block again
        CHECK(rig.compensator.getOutput() != rig.input.getOutput());
    }
}
