#include <doctest/doctest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "processor/frame/TestProcessor.h"
#include "support/RealtimeGuard.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

/// One channel of the gains that a block of ones comes out with.
std::vector<float> gains(TestProcessor& processor, int numSamples) {
    const Buffers ones(2, std::vector<float>(static_cast<std::size_t>(numSamples), 1.0f));
    return Host(processor).render(ones, {numSamples})[0];
}

TEST_CASE("Parameter queue: values take effect at the next block, in order, once each") {
    TestProcessor processor;
    gains(processor, 64);
    processor.invert.setValue(1.0f, 0);
    processor.gain.setValue(3.0f, 0);
    processor.invert.setValue(1.0f, 0);  // no change
    processor.bypass.setValue(0.0f, 0);  // no change
    processor.invert.setValue(0.0f, 0);
    CHECK(processor.numChanges == 0);
    CHECK_FALSE(processor.inverted.get());
    const std::vector<float> out = gains(processor, 64);
    CHECK(processor.numChanges == 3);
    CHECK(processor.changes[1] == processor.gain.getId());
    CHECK_FALSE(processor.inverted.get());
    CHECK(processor.gainSource.parameter.getTarget() == 3.0f);
    CHECK(out[0] == 2.0f);  // ramps from where it was
}

TEST_CASE("Parameter queue: behind a discontinuity a value jumps, before it it ramps") {
    TestProcessor processor;
    gains(processor, 64);
    processor.gain.setValue(3.0f, 0);
    CHECK(gains(processor, 64)[63] < 2.5f);
    processor.gain.setValue(1.0f, 0);
    processor.requestDiscontinuity();
    processor.gain.setValue(4.0f, 0);
    CHECK(gains(processor, 64) == std::vector<float>(64, 4.0f));
    processor.gain.setValue(3.0f, 0);
    CHECK(gains(processor, 64)[0] == 4.0f);

    // One that stands alone ends the ramp that is under way.
    processor.requestDiscontinuity();
    CHECK(gains(processor, 64) == std::vector<float>(64, 3.0f));
}

TEST_CASE("Parameter queue: what is set while suspended waits, through blocks and resets") {
    TestProcessor processor;
    gains(processor, 64);
    processor.suspendParameterUpdates();
    processor.suspendParameterUpdates();
    processor.gain.setValue(3.0f, AbstractPluginParameter::hostKnows);
    processor.requestDiscontinuity();
    processor.invert.setValue(1.0f, AbstractPluginParameter::hostKnows);
    processor.resumeParameterUpdates();
    CHECK(gains(processor, 64) == std::vector<float>(64, 2.0f));
    processor.reset();
    processor.enqueueMidiEvent({0x90, 60, 1}, 10);
    CHECK(gains(processor, 64) == std::vector<float>(64, 2.0f));
    processor.resumeParameterUpdates();
    CHECK(gains(processor, 64) == std::vector<float>(64, -3.0f));
}

TEST_CASE("Parameter queue: the value stored last wins, whatever a full queue has dropped") {
    TestProcessor processor;
    processor.suspendParameterUpdates();
    for (int i = 0; i < 70000; ++i)
        processor.setParameterValue(processor.gain.getId(), i % 2 ? 3.0f : 1.0f, 1);
    processor.invert.setValue(1.0f, 1);
    processor.resumeParameterUpdates();
    gains(processor, 64);
    CHECK(processor.inverted.get());
    CHECK(processor.gainSource.parameter.getTarget() == 3.0f);

    processor.gain.setValue(2.5f, 1);
    processor.gain.storeValue(1.0f);  // a thread that was stopped before it could queue
    gains(processor, 64);
    CHECK(processor.gainSource.parameter.getTarget() == 1.0f);
}

TEST_CASE("Parameter queue: a parameter without an object is ignored, any value is clamped") {
    TestProcessor processor;
    for (const int index : {-1, 4, 1 << 30})
        processor.setParameterValue(index, 1.0f, 0);
    processor.setParameterValue(processor.gain.getId(), 1e9f, 0);
    processor.setParameterValue(processor.invert.getId(), -1e9f, 0);
    gains(processor, 64);
    CHECK(processor.numChanges == 2);
    CHECK(processor.gain.value() == 4.0f);
    CHECK(processor.gainSource.parameter.getTarget() == 4.0f);
}

TEST_CASE("Parameter queue: responders hear what takes effect, forwarded events come once") {
    using Values = std::vector<std::pair<AbstractPluginParameter*, float>>;
    struct Heard final : ParameterResponder {
        Heard() { values.reserve(8); }  // the audio thread fills it
        void valueChanged(float value, AbstractPluginParameter* parameter) override {
            values.emplace_back(parameter, value);
            event.fire(nullptr);
        }
        void delivered(NotifyEvent::Argument) { ++numDelivered; }
        int numDelivered = 0;
        Values values;
        NotifyEvent event;
    };
    TestProcessor processor;
    Heard heard;
    GenericParameterOwner& owner = processor;
    owner.addResponder(&heard);
    processor.forwarders.forward(heard.event, NotifyEvent::makeHandler(&heard, &Heard::delivered));
    processor.invert.setValue(1.0f, 0);
    processor.gain.setValue(0.5f, 0);
    CHECK(heard.values.empty());
    gains(processor, 64);
    CHECK(heard.values == Values{{&processor.invert, 1.0f}, {&processor.gain, 0.5f}});
    CHECK(heard.numDelivered == 1);
}

// Run under the thread sanitizer as well. Afterwards graph and parameters must agree, whichever
// thread came last.
TEST_CASE("Parameter queue: threads set values while the processor runs") {
    TestProcessor processor;
    for (int round = 0; round < 20; ++round) {
        std::atomic<int> running{3};
        const auto setValues = [&](std::uint64_t seed) {
            Rng rng(seed);
            for (int i = 0; i < 500; ++i) {
                processor.gain.setValue(static_cast<float>(rng.integer(0, 8)) * 0.5f, 1);
                processor.setParameterValue(processor.invert.getId(),
                                            static_cast<float>(rng.integer(0, 1)), 0);
                if (i % 100 == 0) processor.requestDiscontinuity();
            }
            --running;
        };
        const auto suspend = [&] {
            for (int i = 0; i < 200; ++i) {
                processor.suspendParameterUpdates();
                processor.receiveMidi.setValue(static_cast<float>(i % 2), 1);
                processor.enqueueMidiEvent({0xb0, 1, 64}, i);
                processor.resumeParameterUpdates();
            }
            --running;
        };
        const auto first = static_cast<std::uint64_t>(round) * 2;
        std::thread a(setValues, first), b(setValues, first + 1), c(suspend);
        int numBlocks = 0;
        while (running > 0 || numBlocks < 4) {
            gains(processor, 256);
            ++numBlocks;
        }
        a.join();
        b.join();
        c.join();
        gains(processor, 256);
        REQUIRE(processor.gainSource.parameter.getTarget() == processor.gain.value());
        REQUIRE(processor.inverted.get() == processor.invert.typedValue());
        REQUIRE(processor.getMidiState() == static_cast<int>(processor.receiveMidi.value()));
    }
}

}  // namespace
}  // namespace cinder::test
