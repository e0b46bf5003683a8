#include <doctest/doctest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <vector>

#include "support/Rng.h"
#include "wave/Cycle.h"
#include "wave/Delay.h"
#include "wave/FloatParameter.h"

namespace cinder::wave {
namespace {

/// An environment whose block size varies. The block of silence is older than the list, so it is
/// put on it by hand.
class VariableEnvironment final : public Environment {
public:
    VariableEnvironment() { listeners.push_back(getZeroBlock()); }
    std::int32_t getMaxBlockSize() const override { return size; }
    void addDynamicMaxBlockSizeListener(DynamicMaxBlockSizeListener* listener) override {
        listeners.push_back(listener);
    }
    void removeDynamicMaxBlockSizeListener(DynamicMaxBlockSizeListener* listener) override {
        std::erase(listeners, listener);
    }
    void setMaxBlockSize(std::int32_t newSize) {
        size = newSize;
        for (DynamicMaxBlockSizeListener* listener : listeners)
            listener->maxBlockSizeChanged();
    }
    std::size_t numListeners() const { return listeners.size(); }

private:
    std::int32_t size = 256;
    std::vector<DynamicMaxBlockSizeListener*> listeners;
};

TEST_CASE("AlignedBuffer: aligned, padded, and what is new is zero") {
    AlignedBuffer<float> buffer;
    std::vector<float> kept;
    for (int size : {1, 7, 8, 9, 256, 3, 0, 5, -4, 33}) {
        INFO("size " << size);
        buffer.resize(size);
        CHECK(buffer.size() == size);
        kept.resize(static_cast<std::size_t>(std::max(size, 0)));
        if (size <= 0) CHECK(buffer.data() == nullptr);
        CHECK(reinterpret_cast<std::uintptr_t>(buffer.data()) % 32 == 0);
        CHECK(std::equal(kept.begin(), kept.end(), buffer.data()));
        // Up to the next multiple of 32 bytes it may be written: a sanitizer watches.
        std::fill_n(buffer.data(), std::max(size + 7, 0) / 8 * 8, 9.0f);
        std::iota(kept.begin(), kept.end(), 1.0f);
        std::copy(kept.begin(), kept.end(), buffer.data());
    }
}

TEST_CASE("Variable block size: blocks follow and keep their meaning, fixed ones do not") {
    VariableEnvironment environment;
    {
        ConstValueBlock constant(&environment, 0.25f);
        BasicBlock<double> doubles(&environment);
        BasicBlock<float> fixed(1024);
        FloatParameter parameter(&environment, 0.5f);
        bool isConstant = false;
        for (int size : {512, 64, 1000, 1, 256}) {
            INFO("size " << size);
            environment.setMaxBlockSize(size);
            CHECK(doubles.size() == size);
            CHECK(fixed.size() == 1024);
            const float* const silence = environment.getZeroBlock()->data();
            parameter.render(1, &isConstant);  // the rest is filled in by the next one
            const float* const values = parameter.render(size, &isConstant)->data();
            CHECK(std::count(silence, silence + size, 0.0f) == size);
            CHECK(std::count(constant.data(), constant.data() + size, 0.25f) == size);
            CHECK(std::count(values, values + size, 0.5f) == size);
        }
    }
    CHECK(environment.numListeners() == 1);
}

TEST_CASE("Variable block size: a delay stays inside its ring, and is right again once refilled") {
    test::Rng rng = test::Rng::fromEnvironment();
    VariableEnvironment environment;
    Delay delay(&environment, 100);
    delay.setReadAhead(7);
    std::vector<float> block(2048), out(2048);
    float next = 1.0f;
    for (int round = 0; round < 200; ++round) {
        const int size = rng.integer(1, 2048);
        environment.setMaxBlockSize(size);
        INFO("round " << round << ", size " << size << ", seed " << rng.seed());
        CHECK(delay.getSize() >= 100 + size);
        CHECK(delay.getReadBase() == delay.getSize() + 7);
        CHECK(delay.getTapBase() == delay.getReadBase() - 101);
        int refilled = 0;
        for (int cycles = rng.integer(1, 4); cycles > 0; --cycles) {
            const int n = rng.integer(1, size);
            std::iota(block.begin(), block.begin() + n, next);
            next += static_cast<float>(n);
            delay.write(block.data(), n);
            refilled += n;
            delay.read(107, out.data(), n);
            int wrong = 0;
            for (int i = std::max(0, n + 100 - refilled); i < n; ++i)
                wrong += out[i] != next - static_cast<float>(n + 100 - i);
            CHECK(wrong == 0);
        }
    }
}

}  // namespace
}  // namespace cinder::wave
