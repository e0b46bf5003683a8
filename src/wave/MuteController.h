#pragma once

#include "core/Realtime.h"

namespace cinder::wave {

/// Something that knows whether what it controls can be skipped.
class MuteController {
public:
    virtual bool isMuted() const noexcept CINDER_REALTIME = 0;

protected:
    ~MuteController() = default;
};

}  // namespace cinder::wave
