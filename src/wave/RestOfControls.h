#pragma once

#include <vector>

#include "wave/FloatParameterBus.h"
#include "wave/Rest.h"

namespace cinder::wave {

/// The rest of a stage's control inputs. One that is pointed at another signal allows none.
/// State   while it lasts, the blocks that the controls gave last are right up to the largest size
class RestOfControls final : public Rest {
public:
    /// Before audio runs; the control lives as long as this.
    void add(FloatParameterBus& control);
    /// For a stage that has pulled all of them: begins where all stand still. [audio]
    void tryToBegin(int numSamples) noexcept CINDER_REALTIME;

protected:
    void ended(std::uint64_t position) noexcept CINDER_REALTIME override;

private:
    std::vector<FloatParameterBus*> controls;  // not owned
};

}  // namespace cinder::wave
