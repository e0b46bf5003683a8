#pragma once

#include <cstddef>
#include <vector>

#include "analysis/DiscreteFrequencyResponseSource.h"

namespace cinder {

/// Keeps the responses that an ascending sweep from point 0 has asked for. One that is asked for
/// out of order is answered, and not kept.
/// State   the responses, until resetCache()
class CachedDiscreteFrequencyResponseSource : public DiscreteFrequencyResponseSource {
public:
    explicit CachedDiscreteFrequencyResponseSource(Mapping* mapping);

    Response getResponseAt(int index) override;
    /// What the responses depend on has changed, or the grid; memory is taken only for a grid that
    /// has grown. [any]
    void resetCache();

protected:
    virtual Response computeResponse(int index) = 0;

private:
    std::vector<Response> cache;
    std::size_t cacheCount = 0;  // valid ones, from the first
};

}  // namespace cinder
