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
    CHECK(proxy.takeRequests() == 0);
    proxy.resetSecond();
    CHECK(proxy.takeRequests() == 2);
    proxy.resetFirst();
    feed(proxy, levelBytes({}, 0));
    proxy.resetSecond();
    CHECK(proxy.takeRequests() == 3);
    CHECK(proxy.takeRequests() == 0);
}

TEST_CASE("SpectrumSourceProxy: the maximum per bin since the last read") {
    SpectrumSourceProxy proxy;
    CHECK(proxy.getValues() == nullptr);
    CHECK(feed(proxy, spectrumBytes(1, {1.0f, 5.0f, 2.0f})));
    CHECK(feed(proxy, spectrumBytes(2, {4.0f, 3.0f, 2.5f})));
    CHECK(proxy.getFrameId() == 2);
    CHECK(look(proxy) == std::vector{4.0f, 5.0f, 2.5f});
    CHECK(look(proxy) == std::vector{4.0f, 5.0f, 2.5f});
    CHECK(feed(proxy, spectrumBytes(3, {0.5f, 0.25f, 0.0f})));
    CHECK(feed(proxy, spectrumBytes(4, {0.25f, 0.5f, 0.0f})));
    CHECK(look(proxy) == std::vector{0.5f, 0.5f, 0.0f});
}

TEST_CASE("SpectrumSourceProxy: another size takes the place of what was not read") {
    SpectrumSourceProxy proxy;
    feed(proxy, spectrumBytes(1, {9.0f, 9.0f}));
    feed(proxy, spectrumBytes(2, {1.0f, 2.0f, 3.0f}));
    CHECK(look(proxy) == std::vector{1.0f, 2.0f, 3.0f});
    CHECK(feed(proxy, spectrumBytes(3, {})));
    CHECK(proxy.getValues() == nullptr);
    CHECK(proxy.getSize() == 0);
    CHECK(proxy.getFrameId() == 3);
}

TEST_CASE("SpectrumSourceProxy: only the last unlock counts as having read") {
    SpectrumSourceProxy proxy;
    feed(proxy, spectrumBytes(1, {9.0f}));
    proxy.lock();
    proxy.lock();
    proxy.unlock();
    feed(proxy, spectrumBytes(2, {1.0f}));
    CHECK(proxy.getValues()[0] == 9.0f);
    proxy.unlock();
    feed(proxy, spectrumBytes(3, {1.0f}));
    CHECK(proxy.getValues()[0] == 1.0f);
}

TEST_CASE("SpectrumSourceProxy: a NaN loses against a number on either side") {
    SpectrumSourceProxy proxy;
    feed(proxy, spectrumBytes(1, {nan, 1.0f, nan}));
    feed(proxy, spectrumBytes(2, {2.0f, nan, nan}));
    const std::vector<float> seen = look(proxy);
    CHECK(seen[0] == 2.0f);
    CHECK(seen[1] == 1.0f);
    CHECK(std::isnan(seen[2]));
}

TEST_CASE("SpectrumSourceProxy: truncations and impossible counts change nothing") {
    std::vector<std::string> hostile;
    for (const std::vector<float>& values :
         {std::vector{7.0f, 8.0f}, std::vector{7.0f, 8.0f, 9.0f}}) {
        const std::string next = spectrumBytes(2, values);
        for (std::size_t length = 0; length < next.size(); ++length)
            hostile.push_back(next.substr(0, length));
    }
    for (std::int32_t count :
         {-1, std::numeric_limits<std::int32_t>::min(), SpectrumSourceProxy::maxSize + 1,
          std::numeric_limits<std::int32_t>::max()}) {
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
