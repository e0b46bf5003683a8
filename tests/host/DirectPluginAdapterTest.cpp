#include <algorithm>
#include <cmath>
#include <thread>

#include "host/HostRig.h"

namespace cinder::test {
namespace {

constexpr std::size_t valuesEnd = 12 + 899 * 4;  // of the first section of a state

TEST_CASE("DirectPluginAdapter: a value that is set on either half gets to the other") {
    HostRig rig;
    CHECK(rig.halvesAgree());
    const int quality = rig.idOf(GlobalChoiceParameter::HighQuality);
    rig.host.getPlugin().parameter(quality)->setValue(1.0f, 0);
    CHECK(rig.host.getLatency() == 8);
    for (const int id : {3, 899, -1})
        rig.host.setParameter(id, 0.5f);
    CHECK(rig.halvesAgree());
    std::thread([&] { rig.host.setParameter(quality, 0.0f); }).join();
    CHECK(rig.host.getLatency() == 8);
    CHECK(rig.host.dispatch() == 1);
    CHECK(rig.host.getLatency() == 0);

    // A controller that has learned a parameter moves it on the audio thread.
    const int mix = rig.idOf(GlobalTargetParameter::Mix);
    rig.host.getPlugin().getControllerMapping().assign(20, mix);
    rig.host.getPlugin().getCurrentPreset().setModified(false);
    rig.send(0xb0, 20, 0);
    rig.play();
    CHECK(rig.host.getProcessor().parameter(mix)->value() == 0.0f);
    CHECK(!rig.halvesAgree());
    CHECK(rig.host.dispatch() == 1);
    CHECK(rig.halvesAgree());
    CHECK(rig.host.getPlugin().getCurrentPreset().isModified());
    CHECK(rig.host.dispatch() == 0);
}

TEST_CASE("DirectPluginAdapter: a state comes back whole, and the same bytes again") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    HostRig rig;
    randomise(rig.host.getPlugin(), rng);
    rig.host.getPlugin().setPresetName("Gr\u00fc\u00dfe \\ 1", -1);
    rig.host.setBypassed(true);
    const std::string rich = rig.state();
    const auto values = valuesOf(rig.host.getPlugin());

    for (const bool fromAnotherThread : {false, true}) {
        DirectPluginAdapter fresh(stereoLayout, 1);
        MemoryStream in(rich);
        const auto read = [&] { CHECK(fresh.readState(in)); };
        if (fromAnotherThread)
            std::thread(read).join();
        else
            read();
        CHECK(valuesOf(fresh.getPlugin()) == values);
        CHECK(valuesOf(fresh.getProcessor()) == values);  // before anyone has dispatched
        CHECK(fresh.isBypassed());
        CHECK(fresh.getPlugin().getCurrentPreset().name() == "Gr\u00fc\u00dfe \\ 1");
        std::ostringstream again;
        CHECK(fresh.writeState(again));
        CHECK(again.str() == rich);
    }
    // An old state says nothing of bypass.
    rig.host.setBypassed(false);
    CHECK(rig.read(rich.substr(0, rich.size() - 12)));
    CHECK(!rig.host.isBypassed());
}

TEST_CASE("DirectPluginAdapter: whatever is wrong with a state, the halves stay alike") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    HostRig rig;
    randomise(rig.host.getPlugin(), rng);
    const std::string rich = rig.state();
    const auto before = valuesOf(rig.host.getPlugin());
    for (const std::size_t length : {std::size_t{0}, std::size_t{7}, std::size_t{11}}) {
        CHECK(!rig.read(rich.substr(0, length)));
        CHECK(valuesOf(rig.host.getPlugin()) == before);
    }
    std::string foreign = rich;
    foreign.replace(valuesEnd, 4, "KOth");
    for (const std::string& bytes :
         {rich.substr(0, 12), rich.substr(0, 2002), rich.substr(0, rich.size() - 15), foreign}) {
        randomise(rig.host.getPlugin(), rng);
        CHECK(!rig.read(bytes));
        CHECK(rig.halvesAgree());
    }
    CHECK(valuesOf(rig.host.getPlugin()) == before);

    // 900 values are cut, none at all are defaults.
    std::string longer = rich, none = rich;
    longer.replace(8, 4, std::string("\x84\x03\0\0", 4));
    longer.insert(valuesEnd, 4, 'x');
    none.replace(8, valuesEnd - 8, 4, '\0');
    randomise(rig.host.getPlugin(), rng);
    CHECK(rig.read(longer));
    CHECK(valuesOf(rig.host.getProcessor()) == before);
    CHECK(rig.read(none));
    for (int id = 0; id < 899; ++id)
        CHECK(rig.host.getProcessor().parameter(id)->value() ==
              rig.host.getProcessor().parameter(id)->defaultValue());
}

/// The start of a block when the input alternates in sign from block to block, which no removal of
/// DC silences.
float attack(HostRig& rig, int numBlocks) {
    float peak = 0.0f;
    static float level = 0.5f;
    for (int i = 0; i < numBlocks; ++i) {
        const auto out = rig.play(level = -level);
        peak = 0.0f;
        for (std::size_t n = 0; n < 16; ++n)
            peak = std::max(peak, std::abs(out[n]));
    }
    return peak;
}

TEST_CASE("DirectPluginAdapter: a state jumps, also a refused one, and a movement glides") {
    HostRig rig;
    const int gain = rig.idOf(GlobalTargetParameter::OutputGain);
    const auto& parameter = *rig.host.getPlugin().parameter(gain);
    rig.host.setParameter(gain, parameter.minimum());
    std::string silent = rig.state();
    silent.replace(valuesEnd, 4, "KOth");
    rig.host.setParameter(gain, parameter.defaultValue());
    const float loud = attack(rig, 40);
    REQUIRE(loud > 0.1f);

    rig.host.setParameter(gain, parameter.minimum());
    CHECK(attack(rig, 1) > 0.5f * loud);
    rig.host.setParameter(gain, parameter.defaultValue());
    REQUIRE(attack(rig, 40) > 0.1f);
    CHECK(!rig.read(silent));
    CHECK(attack(rig, 1) < 0.1f * loud);
}

TEST_CASE("DirectPluginAdapter: the host's bypass delays the input by the latency") {
    HostRig rig;
    rig.host.setParameter(rig.idOf(GlobalChoiceParameter::HighQuality), 1.0f);
    rig.host.setBypassed(true);
    for (int i = 0; i < 40; ++i)
        rig.play(0.25f);
    const auto out = rig.play(0.5f);
    REQUIRE(rig.host.getLatency() == 8);
    CHECK(out[7] == 0.25f);
    CHECK(out[8] == 0.5f);
}

}  // namespace
}  // namespace cinder::test
