#pragma once

#include <cstdint>
#include <vector>

#include "analysis/RealtimeSources.h"
#include "state/BinaryData.h"

namespace cinder {

/// The interface's copy of a spectrum: the maximum per bin of all that came in since the last read.
///
///     stream  frame id, count, then the values
///
/// Range   0..2^20 values
/// State   the values; read and written under the lock of the real-time data. The last unlock marks
///         them as seen, so that the next spectrum takes their place
/// Errors  a short stream changes nothing; a count out of range fails the stream besides. A NaN
///         loses against a number
class SpectrumSourceProxy final : public SpectrumSource {
public:
    static constexpr std::int32_t maxSize = 1 << 20;

    /// Takes in one spectrum. Answers whether the stream is still good.
    bool read(BinaryDataReader& reader);

    void lock() override { ++lockCount; }
    void unlock() override;
    const float* getValues() const override { return values.empty() ? nullptr : values.data(); }
    std::int32_t getSize() const override { return static_cast<std::int32_t>(values.size()); }
    std::int32_t getFrameId() const override { return header; }

private:
    bool consumed = false;
    std::vector<float> incoming, values;
    std::int32_t header = 0;
    std::int32_t lockCount = 0;
};

}  // namespace cinder
