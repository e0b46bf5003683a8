#pragma once

#include <array>
#include <cstdint>
#include <utility>

#include "analysis/RealtimeSources.h"
#include "state/BinaryData.h"

namespace cinder {

/// The interface's copy of a meter's levels. Requests to reset travel the other way.
/// State   values, status and requests; read and written under the lock of the real-time data
/// Errors  a short stream changes nothing
class LevelSourceProxy final : public LevelSource {
public:
    static constexpr std::uint32_t firstRequest = 1;
    static constexpr std::uint32_t secondRequest = 2;

    /// Takes in five values and the status. Answers whether the stream is still good.
    bool read(BinaryDataReader& reader);
    /// What is to be reset at the other end; asking clears it.
    std::uint32_t takeRequests() { return std::exchange(requests, 0u); }

    std::uint32_t getStatus() const override { return status; }
    float getValue(std::int32_t index) const override;
    void resetFirst() override { requests |= firstRequest; }
    void resetSecond() override { requests |= secondRequest; }

private:
    std::uint32_t status = 0;
    std::array<float, numValues> values{};
    std::uint32_t requests = 0;
};

}  // namespace cinder
