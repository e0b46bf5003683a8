#pragma once

#include <complex>

namespace cinder {

/// What a filter does at a frequency, for drawing.
class FrequencyResponseSource {
public:
    using Response = std::complex<float>;

    virtual ~FrequencyResponseSource() = default;
    /// At a frequency in Hz. This one does nothing: 1 everywhere. [ui]
    virtual Response getResponse(float /*hz*/) { return 1.0f; }
};

}  // namespace cinder
