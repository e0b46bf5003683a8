#include "analysis/AudioSourceProxy.h"

#include <doctest/doctest.h>

#include <atomic>
#include <cstdint>
#include <limits>
#include <numeric>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/Rng.h"

namespace cinder {
namespace {

/// A sample that tells frame, channel and place.
float sampleAt(int frame, int channel, int i) {
    return static_cast<float>(frame) + static_cast<float>(channel) * 0.25f +
           static_cast<float>(i) * 0x1p-12f;
}

std::string framesAsBytes(int channels, int frames, int size, int firstFrame) {
    std::ostringstream stream;
    for (const int word : {channels, frames, size})
        writeValue(stream, std::int32_t{word});
    for (int k = 0; k < frames; ++k)
        for (int c = 0; c < channels; ++c)
            for (int i = 0; i < size; ++i)
                writeValue(stream, sampleAt(firstFrame + k, c, i));
    return stream.str();
}

bool feed(AudioSourceProxy& proxy, const std::string& bytes) {
    std::istringstream stream(bytes);
    BinaryDataReader reader(stream);
    return proxy.read(reader);
}

bool feed(AudioSourceProxy& proxy, int channels, int frames, int size, int firstFrame) {
    return feed(proxy, framesAsBytes(channels, frames, size, firstFrame));
}

/// The numbers of the frames that wait, after a look at every sample; -1 for a damaged frame.
std::vector<int> take(AudioSourceProxy& proxy) {
    std::vector<int> numbers;
    proxy.lock();
    for (int k = 0; k < proxy.getFrameCount(); ++k) {
        const int number = static_cast<int>(proxy.getFrameData(k, 0)[0]);
        bool whole = true;
        for (int c = 0; c < proxy.getChannelCount(); ++c)
            for (int i = 0; i < proxy.getFrameSize(); ++i)
                whole = whole && proxy.getFrameData(k, c)[i] == sampleAt(number, c, i);
        numbers.push_back(whole ? number : -1);
    }
    proxy.unlock();
    return numbers;
}

TEST_CASE("AudioSourceProxy: frames come out once, in order, whole, the newest if it is lapped") {
    test::Rng rng = test::Rng::fromEnvironment();
    for (int channels : {1, 2, 11}) {
        INFO("channels " << channels << ", seed " << rng.seed());
        AudioSourceProxy proxy;
        // 44100 / 4 = 11025 samples: 12 frames of 1000, of which 11 can wait.
        int written = 0, waiting = 0;
        for (int round = 0; round < 60; ++round) {
            const int frames = rng.integer(0, 13);
            CHECK(feed(proxy, channels, frames, 1000, written));
            written += frames;
            waiting = (waiting + frames) % 12;  // the twelfth laps the reader
            if (rng.integer(0, 2) == 0) continue;
            std::vector<int> expected(static_cast<std::size_t>(waiting));
            std::iota(expected.begin(), expected.end(), written - waiting);
            CHECK(take(proxy) == expected);
            waiting = 0;
        }
        CHECK(proxy.getTotalFrames() == written);
    }
}

TEST_CASE("AudioSourceProxy: locks nest, and a new layout or rate drops what waits") {
    AudioSourceProxy proxy;
    CHECK(proxy.getFrameData(0, 0) == nullptr);
    feed(proxy, 2, 3, 512, 0);
    proxy.lock();
    proxy.lock();
    proxy.unlock();
    CHECK(proxy.getFrameCount() == 3);
    proxy.unlock();
    CHECK(proxy.getFrameCount() == 0);
    feed(proxy, 2, 3, 512, 3);
    for (int frame : {-1, 22, std::numeric_limits<int>::min()})
        CHECK(proxy.getFrameData(frame, 1) == proxy.getFrameData(0, 1));
    feed(proxy, 1, 2, 512, 7);
    CHECK(take(proxy) == std::vector{7, 8});
    feed(proxy, 1, 2, 512, 9);
    proxy.setSampleRate(192000.0f);
    CHECK(take(proxy).empty());
    feed(proxy, 1, 1, AudioSourceProxy::maxFrameSize, 0);
    CHECK(take(proxy).size() == 1);
}

TEST_CASE("AudioSourceProxy: the ring holds a quarter second; absurd rates are ignored or cut") {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const auto& [rate, capacity] : {std::pair{0.0f, 22},  // of 44100 Hz
                                         {-infinity, 22},
                                         {std::numeric_limits<float>::quiet_NaN(), 22},
                                         {192000.0f, 94},
                                         {infinity, 375},
                                         {768000.0f, 375},
                                         {1e-30f, 2}}) {
        INFO("rate " << rate);
        AudioSourceProxy proxy;
        proxy.setSampleRate(rate);
        feed(proxy, 1, 1, 512, 0);
        CHECK(proxy.getCapacity() == capacity);
        CHECK(take(proxy) == std::vector{0});
    }
}

TEST_CASE("AudioSourceProxy: every truncation keeps the whole frames and spoils no other") {
    std::string bytes = framesAsBytes(2, 3, 8, 4);
    bytes.replace(4, 4, "\xff\xff\xff\x7f");  // frames, as promised
    const std::size_t frameBytes = 2 * 8 * sizeof(float);
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
        INFO("length " << length);
        AudioSourceProxy proxy;
        proxy.setSampleRate(160.0f);  // room for 5 frames, of which 4 can wait
        feed(proxy, 2, 4, 8, 0);
        CHECK_FALSE(feed(proxy, bytes.substr(0, length)));
        const auto whole = length < 12 ? 0 : static_cast<int>((length - 12) / frameBytes);
        // One frame more laps the reader, and the count starts again.
        std::vector<int> expected = whole == 0 ? std::vector{0, 1, 2, 3} : std::vector<int>();
        for (int k = 5; k < 4 + whole; ++k)
            expected.push_back(k);
        CHECK(take(proxy) == expected);
        CHECK(feed(proxy, 2, 2, 8, 50));
        CHECK(take(proxy) == std::vector{50, 51});
    }
}

TEST_CASE("AudioSourceProxy: an impossible layout fails the stream and changes nothing") {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    struct Case {
        std::int32_t layout[3];  // channels, frames, size
        bool good;
    };
    for (const Case& c :
         {Case{{0, 5, 512}, true}, Case{{2, 0, 512}, true}, Case{{2, 5, 0}, true},
          Case{{-2, 5, 512}, false}, Case{{2, -5, 512}, false}, Case{{2, 5, -512}, false},
          Case{{17, 1, 512}, false}, Case{{2, 1, 65537}, false}, Case{{most, most, most}, false}}) {
        INFO(c.layout[0] << " channels, " << c.layout[1] << " frames of " << c.layout[2]);
        AudioSourceProxy proxy;
        feed(proxy, 2, 3, 8, 0);
        std::ostringstream stream;
        for (const std::int32_t word : c.layout)
            writeValue(stream, word);
        CHECK(feed(proxy, stream.str() + std::string(1000, 'x')) == c.good);
        CHECK(take(proxy) == std::vector{0, 1, 2});
    }
}

TEST_CASE("AudioSourceProxy: a reader on another thread never sees a torn frame") {
    AudioSourceProxy proxy;
    std::atomic<bool> finished = false;
    std::thread writer([&] {
        for (int frame = 0; frame < 2000; frame += 4)
            feed(proxy, 2, 4, 64, frame);
        finished = true;
    });
    bool ordered = true;
    int last = -1;
    for (bool again = true; again;) {
        again = !finished;
        for (int number : take(proxy)) {
            ordered = ordered && number > last;
            last = number;
        }
    }
    writer.join();
    CHECK(ordered);
}

}  // namespace
}  // namespace cinder
