#include "analysis/buffer/RealTimeAudioBuffer.h"

#include <doctest/doctest.h>

#include <atomic>
#include <cstdint>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

#include "support/RealtimeGuard.h"
#include "support/Rng.h"

namespace cinder {
namespace {

/// Sample i of the stream is `first` + i, exact up to 2^24.
class Counter final : public wave::Source {
public:
    Counter(wave::Environment* environment, int first) : Source(environment), first(first) {}
    void render(wave::BasicBlock<float>* block, int numSamples, unsigned) noexcept override {
        std::iota(block->data(), block->data() + numSamples,
                  static_cast<float>(environment->getPosition()) + static_cast<float>(first));
    }

private:
    int first;
};

/// Two channels that count, the second from 0.5 million.
struct Rig {
    static constexpr int frameSize = 64;
    static constexpr int distance = 500000;

    explicit Rig(int baseFrameCount = 20)
        : buffer(&environment, &left, 2, frameSize, baseFrameCount) {
        measurement = buffer.createMeasurement();
        measurement->setInput(1, &right);
    }

    void run(int numSamples) {
        const test::RealtimeGuard guard;
        environment.beginBlock();
        environment.render(numSamples, 0);
    }

    /// The first sample of each frame that waits, after a look at all of it; -1 for a torn one.
    std::vector<int> take() {
        std::vector<int> starts;
        measurement->lock();
        for (int frame = 0; frame < measurement->getFrameCount(); ++frame) {
            const float* const a = measurement->getFrameData(frame, 0);
            const float* const b = measurement->getFrameData(frame, 1);
            bool whole = true;
            for (int i = 0; i < frameSize; ++i) {
                const float expected = a[0] + static_cast<float>(i);
                whole = whole && a[i] == expected && b[i] == expected + distance;
            }
            starts.push_back(whole ? static_cast<int>(a[0]) : -1);
        }
        measurement->unlock();
        return starts;
    }

    wave::Environment environment;
    Counter left{&environment, 0};
    Counter right{&environment, distance};
    RealTimeAudioBuffer buffer;
    RealTimeAudioBuffer::Measurement* measurement;
};

std::vector<int> framesFrom(int start, int count) {
    std::vector<int> starts;
    for (int i = 0; i < count; ++i)
        starts.push_back(start + i * Rig::frameSize);
    return starts;
}

TEST_CASE("RealTimeAudioBuffer: frames arrive whole, once and in order for any cut of the blocks") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    for (int longest : {1, 63, 64, 256}) {
        INFO("blocks up to " << longest);
        Rig rig;
        int written = 0, taken = 0;
        for (int round = 0; round < 2000; ++round) {
            const int n = rng.integer(1, longest);
            rig.run(n);
            written += n;
            if (rng.integer(0, 3) > 0 && written - taken < 15 * Rig::frameSize) continue;
            const int whole = (written - taken) / Rig::frameSize;
            CHECK(rig.take() == framesFrom(taken, whole));
            taken += whole * Rig::frameSize;
        }
    }
}

TEST_CASE("RealTimeAudioBuffer: a reader that was away finds nothing, then what is new") {
    Rig rig(4);
    for (int i = 0; i < 100; ++i)
        rig.run(100);
    CHECK(rig.take().empty());
    // It has stopped between two frames, so the first new one starts with the next block.
    const auto position = static_cast<int>(rig.environment.getPosition());
    for (int i = 0; i < 2; ++i)
        rig.run(100);
    CHECK(rig.take() == framesFrom(position, 3));
    // All four full, and none asked for: that is no gap yet.
    rig.run(4 * Rig::frameSize - 8);
    CHECK(rig.take() == framesFrom(position + 3 * Rig::frameSize, 4));
}

TEST_CASE("RealTimeAudioBuffer: without blocking the newest frames stay") {
    Rig rig(4);
    rig.buffer.blocking = false;
    for (int i = 0; i < 64; ++i)
        rig.run(100);
    // 6400 samples are 100 frames.
    CHECK(rig.take() == framesFrom(96 * Rig::frameSize, 4));
    rig.measurement->lock();
    rig.run(64);
    CHECK(rig.measurement->getFrameCount() == 0);
    rig.measurement->unlock();
    CHECK(rig.take() == framesFrom(6400, 1));
}

TEST_CASE("RealTimeAudioBuffer: locks nest over all measurements, and only the last gives back") {
    Rig rig(2);
    auto* const other = rig.buffer.createMeasurement();
    other->setInput(0, nullptr);
    rig.run(128);
    rig.measurement->lock();
    other->lock();
    rig.measurement->unlock();
    rig.run(128);  // no frame is free
    REQUIRE(other->getFrameCount() == 2);
    CHECK(other->getFrameData(1, 0)[0] == 0.0f);
    CHECK(other->getFrameData(1, 1)[63] == 127.0f);
    CHECK(rig.measurement->getFrameData(1, 1)[63] == 127.0f + Rig::distance);
    for (const auto& [frame, channel] :
         {std::pair{-1, 0}, std::pair{2, 0}, std::pair{0, -1}, std::pair{0, 2}})
        CHECK(other->getFrameData(frame, channel) == nullptr);
    other->unlock();
    CHECK(other->getFrameCount() == 0);
    CHECK(rig.take().empty());
    rig.run(128);
    CHECK(rig.take() == framesFrom(256, 2));
}

TEST_CASE("RealTimeAudioBuffer: frames follow the rate upwards, under a reader's eyes") {
    constexpr auto layout = RealTimeAudioBuffer::getFrameLayout();
    CHECK(layout.frameSize == 512);
    CHECK(layout.frameCount == 20);
    Rig rig(layout.frameCount);
    rig.run(128);
    rig.measurement->lock();
    const float* const held = rig.measurement->getFrameData(1, 0);
    for (const auto& [rate, frames] :
         {std::pair{8000.0f, 20}, std::pair{96000.0f, 20}, std::pair{176400.0f, 37},
          std::pair{192000.0f, 40}, std::pair{44100.0f, 40}, std::pair{768000.0f, 160},
          std::pair{3e9f, 160}}) {
        INFO("rate " << rate);
        rig.environment.setSampleRate(rate);
        CHECK(rig.buffer.getFrameTotal() == frames);
        CHECK(rig.measurement->getFrameData(1, 0) == held);
    }
    CHECK(held[0] == 64.0f);
    rig.measurement->unlock();
    for (int i = 0; i < 160; ++i)
        rig.run(Rig::frameSize);
    CHECK(rig.take() == framesFrom(128, 160));  // every frame is there, once
}

TEST_CASE("RealTimeAudioBuffer: absurd layouts are clamped") {
    wave::Environment environment;
    environment.setSampleRate(768000.0f);
    RealTimeAudioBuffer smallest(&environment, nullptr, -1, 0, -5);
    CHECK(smallest.createMeasurement()->getChannelCount() == 1);
    RealTimeAudioBuffer most(&environment, nullptr, 1, 1, 1 << 30);
    auto* const measurement = most.createMeasurement();
    measurement->setInput(1, nullptr);
    CHECK(most.getFrameTotal() == 1016);
    environment.beginBlock();
    for (int i = 0; i < 8; ++i)
        environment.render(256, 0);
    measurement->lock();  // all were full
    CHECK(measurement->getFrameCount() == 0);
    measurement->unlock();
}

TEST_CASE("RealTimeAudioBuffer: runs while a measurement is enabled, and comes back clean") {
    Rig rig;
    rig.run(100);
    rig.measurement->enabled = false;
    CHECK_FALSE(rig.buffer.isActive());
    rig.run(100);
    rig.measurement->enabled = true;
    rig.run(100);
    CHECK(rig.take() == framesFrom(200, 1));
    rig.environment.reset(wave::Environment::ResetMode::ActiveOnly);
    rig.run(100);
    CHECK(rig.take() == framesFrom(300, 1));
}

TEST_CASE("RealTimeAudioBuffer: two threads never tear or swap a frame, and hide no gap") {
    for (bool withResets : {false, true}) {
        INFO("resets and rates " << withResets);
        Rig rig(3);
        std::atomic<int> looks = 0;
        std::atomic<bool> finished = false;
        std::thread audio([&] {
            test::Rng rng(7);
            for (int i = 0; i < 500; ++i) {
                if (withResets && i % 9 == 8)
                    rig.environment.reset(wave::Environment::ResetMode::All);
                if (withResets && i == 250) rig.environment.setSampleRate(192000.0f);
                // Some stretches fit into the frames there are, others overrun them.
                for (int n : rng.pieces(rng.integer(1, 800), 48))
                    rig.run(n);
                for (const int before = looks; looks == before;)
                    std::this_thread::yield();
            }
            finished = true;
        });
        bool ordered = true;
        int last = -1, seen = 0;
        for (bool again = true; again; ++looks) {
            again = !finished;
            const std::vector<int> starts = rig.take();
            for (int start : starts) {
                ordered = ordered && start > last;
                last = start;
                ++seen;
            }
            // Frames of one look belong together, unless a reset came in between.
            if (!withResets && !starts.empty())
                ordered = ordered &&
                          starts == framesFrom(starts.front(), static_cast<int>(starts.size()));
        }
        audio.join();
        CHECK(ordered);
        CHECK(seen > 0);
    }
}

}  // namespace
}  // namespace cinder
