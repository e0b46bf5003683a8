#pragma once

namespace cinder::wave {

/// Something whose size follows the maximum block size of its environment.
class DynamicMaxBlockSizeListener {
public:
    virtual void maxBlockSizeChanged() = 0;

protected:
    ~DynamicMaxBlockSizeListener() = default;
};

}  // namespace cinder::wave
