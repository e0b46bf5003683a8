#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "analysis/LevelSourceProxy.h"
#include "analysis/SpectrumSourceProxy.h"

namespace cinder {
namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();

template <typename Proxy>
bool feed(Proxy& proxy, const std::string& bytes) {
    std::istringstream stream(bytes);
    BinaryDataReader reader(stream);
    return proxy.read(reader);
}

std::string levelBytes(const std::array<float, 5>& values, std::uint32_t status) {
    std::ostringstream stream;
    writeValues(stream, values.data(), values.size());
    writeValue(stream, status);
    return stream.str();
}

std::string spectrumBytes(std::int32_t header, const std::vector<float>& values) {
    std::ostringstream stream;
    writeValue(stream, header);
    writeValue(stream, static_cast<std::int32_t>(values.size()));
    writeValues(stream, values.data(), values.size());
    return stream.str();
}

/// What the interface sees between a lock and its unlock.
std::vector<float> look(SpectrumSourceProxy& proxy) {
    proxy.lock();
    const float* first = proxy.getValues();
    std::vector<float> values =
        first ? std::vector(first, first + proxy.getSize()) : std::vector<float>();
    proxy.unlock();
    return values;
}

TEST_CASE("LevelSourceProxy: shows the last whole packet") {
    LevelSourceProxy proxy;
    CHECK(feed(proxy, levelBytes({1, 2, 3, 4, 5}, 0xfedcba98u)));
    const std::string next = levelBytes({6, 7, 8, 9, 10}, 1);
    for (std::size_t length = 0; length < next.size(); ++length) {
        INFO("length " << length);
        CHECK_FALSE(feed(proxy, next.substr(0, length)));
        CHECK(proxy.getStatus() == 0xfedcba98u);
        for (int i = 0; i < 5; ++i)
            CHECK(proxy.getValue(i) == static_cast<float>(i + 1));
    }
    for (int index : {-1, 5, std::numeric_limits<int>::max()})
        CHECK(proxy.getValue(index) == 0.0f);
}

TEST_CASE("LevelSourceProxy: requests add up until they are taken") {
    LevelSourceProxy proxy;
    proxy.resetSecond();
    CHECK(proxy.takeRequests() == 2);
    proxy.resetFirst();
    feed(proxy, levelBytes({}, 0));
    proxy.resetSecond();
    CHECK(proxy.takeRequests() == 3);
    CHECK(proxy.takeRequests() == 0);
}

TEST_CASE("SpectrumSourceProxy: the maximum per bin since the last unlock, of numbers") {
    SpectrumSourceProxy proxy;
    CHECK(proxy.getValues() == nullptr);
    CHECK(feed(proxy, spectrumBytes(1, {1.0f, 5.0f, nan, 1.0f, nan})));
    CHECK(feed(proxy, spectrumBytes(2, {4.0f, 3.0f, 2.0f, nan, nan})));
    CHECK(proxy.getFrameId() == 2);
    proxy.lock();
    std::vector<float> seen = look(proxy);  // an inner lock, which counts as no look
    CHECK(std::isnan(seen.back()));
    seen.pop_back();
    CHECK(seen == std::vector{4.0f, 5.0f, 2.0f, 1.0f});
    CHECK(feed(proxy, spectrumBytes(3, {9.0f, 0.0f, 0.0f, 0.0f, 0.0f})));
    CHECK(look(proxy) == std::vector{9.0f, 5.0f, 2.0f, 1.0f, 0.0f});
    proxy.unlock();
    CHECK(look(proxy) == std::vector{9.0f, 5.0f, 2.0f, 1.0f, 0.0f});
    CHECK(feed(proxy, spectrumBytes(4, {0.5f, 0.0f, 0.0f, 0.0f, 0.0f})));
    CHECK(feed(proxy, spectrumBytes(5, {1.0f, 2.0f, 3.0f})));  // takes the place of the other size
    CHECK(look(proxy) == std::vector{1.0f, 2.0f, 3.0f});
    CHECK(feed(proxy, spectrumBytes(6, {})));
    CHECK(proxy.getValues() == nullptr);
    CHECK(proxy.getFrameId() == 6);
}

TEST_CASE("SpectrumSourceProxy: truncations and impossible counts change nothing") {
    std::vector<std::string> hostile;
    for (const std::vector<float>& values :
         {std::vector{7.0f, 8.0f}, std::vector{7.0f, 8.0f, 9.0f}}) {
        const std::string next = spectrumBytes(2, values);
        for (std::size_t length = 0; length < next.size(); ++length)
            hostile.push_back(next.substr(0, length));
    }
    for (std::int32_t count : {-1, SpectrumSourceProxy::maxSize + 1, 0x7fffffff}) {
        std::ostringstream stream;
        writeValue(stream, std::int32_t{2});
        writeValue(stream, count);
        hostile.push_back(stream.str() + std::string(100, '\x3f'));
    }
    for (bool seen : {false, true})
        for (const std::string& bytes : hostile) {
            INFO("bytes " << bytes.size() << ", seen before " << seen);
            SpectrumSourceProxy proxy;
            feed(proxy, spectrumBytes(1, {3.0f, 4.0f}));
            if (seen) look(proxy);
            CHECK_FALSE(feed(proxy, bytes));
            CHECK(proxy.getFrameId() == 1);
            CHECK(look(proxy) == std::vector{3.0f, 4.0f});
        }
}

}  // namespace
}  // namespace cinder
