#include <doctest/doctest.h>

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <new>

#include "core/platform/Denormals.h"
#include "processor/frame/TestProcessor.h"
#include "support/Rng.h"

namespace cinder::test {
namespace {

Buffers stereoNoise(Rng& rng, int numSamples) {
    return {rng.noise(numSamples), rng.noise(numSamples)};
}

bool sameBits(const Buffers& a, const Buffers& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.size() == y.size() && std::memcmp(x.data(), y.data(), x.size() * 4) == 0;
    });
}

float worstDifference(const Buffers& a, const Buffers& b) {
    float worst = 0.0f;
    for (std::size_t c = 0; c < a.size(); ++c)
        for (std::size_t i = 0; i < a[c].size(); ++i)
            worst = std::max(worst, std::abs(a[c][i] - b[c][i]));
    return worst;
}

/// A block of silence of this length.
void processSilence(TestProcessor& processor, int numSamples) {
    const std::vector<float> in(static_cast<std::size_t>(std::max(numSamples, 1)));
    std::vector<float> left(in.size()), right(in.size());
    const float* inputs[] = {in.data(), in.data()};
    float* outputs[] = {left.data(), right.data()};
    processGuarded(processor, inputs, 2, outputs, 2, numSamples);
}

/// Fixed counters: the adapter is called on the audio thread.
class AdapterLog final : public GenericPluginProcessor::ProcessorAdapter {
public:
    void programChanged(int bank, int program) noexcept override {
        lastBank = bank;
        lastProgram = program;
    }
    void midiProcessed(int controller) noexcept override {
        ++midiBlocks;
        lastController = controller;
    }
    void parameterValueChanged(int index) noexcept override {
        ++valueChanges;
        lastIndex = index;
    }
    int lastBank = -1, lastProgram = -1;
    int midiBlocks = 0, lastController = -2;
    int valueChanges = 0, lastIndex = -1;
};

TEST_CASE("Block loop: constant controls give the same bits for any cut of the host block") {
    Rng rng = Rng::fromEnvironment();
    const int numSamples = 9001;
    const Buffers in = stereoNoise(rng, numSamples);
    for (const int maxSubBlock : {256, 44, 4}) {
        TestProcessor reference(stereoLayout, 0, 8);
        const Buffers expected = Host(reference).render(in, {512});
        for (const auto& cuts : hostCuts(rng.seed(), numSamples)) {
            INFO("cut " << cuts[0] << ", sub-block " << maxSubBlock << ", seed " << rng.seed());
            TestProcessor processor(stereoLayout, 0, 8);
            processor.maxSubBlock = maxSubBlock;
            CHECK(sameBits(Host(processor).render(in, cuts), expected));
        }
    }
}

// A ramp's value is rounded to float where a sub-block starts, so bits agree where the sub-blocks
// do: for host blocks that are multiples of the longest sub-block.
TEST_CASE("Block loop: ramps agree to the bit for multiples of 256, closely for other cuts") {
    Rng rng = Rng::fromEnvironment();
    const int numSamples = 8192;
    const Buffers in = stereoNoise(rng, numSamples);
    const auto ramped = [&](const std::vector<int>& cuts) {
        TestProcessor processor;
        Host host(processor);
        Buffers warmUp = host.render({in[0], in[1]}, cuts);
        processor.gain.setValue(0.3f, 0);
        return host.render(in, cuts);
    };
    const Buffers expected = ramped({256});
    CHECK(sameBits(ramped({512, 1024, 4096}), expected));
    for (const auto& cuts : hostCuts(rng.seed(), numSamples)) {
        INFO("cut " << cuts[0] << ", seed " << rng.seed());
        CHECK(worstDifference(ramped(cuts), expected) < 2e-6f);
    }
}

TEST_CASE("Block loop: sub-blocks are cut at the product's limit and at events, late ones behind") {
    const struct {
        int limit;
        std::vector<int> offsets;          // in the order of arrival
        std::vector<std::uint64_t> heard;  // positions within the block
        std::vector<int> subBlocks;
    } rows[] = {
        {256, {}, {}, {256, 44}},
        {1000, {}, {}, {256, 44}},
        {0, {}, {}, std::vector<int>(300, 1)},
        {-5, {}, {}, std::vector<int>(300, 1)},
        {100, {0}, {0}, {100, 100, 100}},
        {256, {10, 10, 20}, {10, 10, 20}, {10, 10, 256, 24}},
        {256, {299}, {299}, {256, 43, 1}},
        {256, {300}, {300}, {256, 44}},
        {256, {301, 5000}, {300, 300}, {256, 44}},
        {256, {-7}, {0}, {256, 44}},
        {256, {100, 50}, {100, 100}, {100, 200}},
        {256, {256}, {256}, {256, 44}},
    };
    for (const auto& row : rows) {
        INFO("row " << &row - rows);
        TestProcessor processor;
        processSilence(processor, 1000);
        processor.cycles.sizes.clear();
        processor.maxSubBlock = row.limit;
        const auto blockId = processor.getEnvironment()->getBlockId();
        int note = 60;
        for (const int offset : row.offsets)
            processor.enqueueMidiEvent({0x90, static_cast<std::uint8_t>(note++), 100}, offset);
        processSilence(processor, 300);
        REQUIRE(processor.numNotesOn == static_cast<int>(row.offsets.size()));
        for (std::size_t i = 0; i < row.offsets.size(); ++i)
            CHECK(processor.notesOn[i] ==
                  TestProcessor::Note{60 + static_cast<int>(i), 1000 + row.heard[i]});
        CHECK(processor.cycles.sizes == row.subBlocks);
        CHECK(processor.getEnvironment()->getBlockId() - blockId == row.subBlocks.size());
        CHECK(processor.getEnvironment()->getPosition() == 1300);
    }
}

TEST_CASE("Block loop: an empty block renders nothing, but its events and parameters count") {
    for (const int numSamples : {0, -4096}) {
        TestProcessor processor;
        processor.enqueueMidiEvent({0x90, 60, 100}, 0);
        processor.invert.setValue(1.0f, AbstractPluginParameter::hostKnows);
        processGuarded(processor, nullptr, 0, nullptr, 0, numSamples);
        CHECK(processor.cycles.sizes.empty());
        CHECK(processor.numNotesOn == 1);
        CHECK(processor.inverted.get());
    }
}

TEST_CASE("Block loop: a mapped controller moves its parameter at the event's sample") {
    TestProcessor processor;
    AdapterLog adapter;
    processor.setAdapter(&adapter);
    processor.getControllerMapping().set(20, processor.invert.getId());
    processor.getControllerMapping().set(21, 12345);  // no such parameter
    processor.enqueueMidiEvent({0xb3, 20, 127}, 100);
    processor.enqueueMidiEvent({0xb3, 21, 127}, 150);
    processor.enqueueMidiEvent({0xb3, 20, 0}, 200);
    const Buffers out = Host(processor).render({std::vector<float>(300, 1.0f)}, {300});
    for (int i = 0; i < 300; ++i)
        REQUIRE(out[0][static_cast<std::size_t>(i)] == (i >= 100 && i < 200 ? -2.0f : 2.0f));
    CHECK(adapter.valueChanges == 2);
    CHECK(adapter.lastIndex == processor.invert.getId());
    CHECK(adapter.midiBlocks == 1);
    CHECK(adapter.lastController == 20);

    processor.enqueueMidiEvent({0xb0, 32, 5}, 0);
    processor.enqueueMidiEvent({0xc0, 3}, 0);
    processSilence(processor, 64);
    CHECK(adapter.lastBank == 5);
    CHECK(adapter.lastProgram == 3);
}

TEST_CASE("Block loop: outputs beyond the layout are left alone, and fewer than it are enough") {
    TestProcessor processor(monoLayout);
    const std::vector<float> in(300, 1.0f);
    Buffers out(3, std::vector<float>(300, 7.0f));
    const float* inputs[] = {in.data()};
    float* outputs[] = {out[0].data(), out[1].data(), out[2].data()};
    processGuarded(processor, inputs, 1, outputs, 3, 300);
    CHECK(out[0] == std::vector<float>(300, 2.0f));
    CHECK(out[1] == std::vector<float>(300, 7.0f));

    TestProcessor surround(6);  // six channels
    outputs[1] = nullptr;
    processGuarded(surround, inputs, 1, outputs, 3, 300);
    TestProcessor unknown(-1);
    processGuarded(unknown, inputs, 1, outputs, 3, 300);
    CHECK(out[2] == std::vector<float>(300, 2.0f));
    CHECK(unknown.getEnvironment()->getPosition() == 300);
}

TEST_CASE("Block loop: switches denormals off, whatever the host had") {
    const platform::FlushDenormalsScope restored;
    const std::uint64_t flushing = platform::floatingPointControl();
    std::fesetenv(FE_DFL_ENV);
    REQUIRE(platform::floatingPointControl() != flushing);
    TestProcessor processor;
    processSilence(processor, 1);
    CHECK(platform::floatingPointControl() == flushing);
}

TEST_CASE("Frame: the first one alive makes the shared tables, the last one frees them") {
    CHECK(TestProcessor::tablesAlive == 0);
    {
        TestProcessor first;
        { TestProcessor second; }
        CHECK(TestProcessor::tablesAlive == 1);
    }
    CHECK(TestProcessor::tablesAlive == 0);

    // What a product keeps in its channels may use the tables to the last.
    struct UsesTables final : GenericPluginProcessor::Channel {
        using Channel::Channel;
        ~UsesTables() override { CHECK(TestProcessor::tablesAlive == 1); }
    };
    struct Product final : TestProcessor {
        Product() { addChannel(std::make_unique<UsesTables>(this)); }
    };
    { Product product; }
    CHECK(TestProcessor::tablesAlive == 0);

    struct Failing final : GenericPluginProcessor {
        Failing() : GenericPluginProcessor(stereoLayout) {}
        std::unique_ptr<AbstractMusicEventReceiver> createEventReceiver() override {
            throw std::bad_alloc();
        }
        void createSharedTables() override { ++TestProcessor::tablesAlive; }
        void destroySharedTables() override { --TestProcessor::tablesAlive; }
        Initialized initialized{this};
    };
    CHECK_THROWS_AS(Failing(), std::bad_alloc);
    CHECK(TestProcessor::tablesAlive == 0);
}

TEST_CASE("Frame: a new rate reaches every channel, the same rate nobody") {
    struct Listening final : GenericPluginProcessor::Channel {
        using Channel::Channel;
        void sampleRateChanged() override { ++changes; }
        int changes = 0;
    };
    TestProcessor product;
    auto& last = static_cast<Listening&>(product.addChannel(std::make_unique<Listening>(&product)));
    product.getEnvironment()->setSampleRate(96000.0f);
    product.getEnvironment()->setSampleRate(96000.0f);
    CHECK(last.changes == 1);
}

}  // namespace
}  // namespace cinder::test
