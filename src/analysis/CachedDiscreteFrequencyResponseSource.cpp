#include "analysis/CachedDiscreteFrequencyResponseSource.h"

namespace cinder {

CachedDiscreteFrequencyResponseSource::CachedDiscreteFrequencyResponseSource(Mapping* mapping)
    : DiscreteFrequencyResponseSource(mapping), cache(mapping->getTableSize()) {}

FrequencyResponseSource::Response CachedDiscreteFrequencyResponseSource::getResponseAt(int index) {
    const auto at = static_cast<std::size_t>(index);
    if (index >= 0 && at < cacheCount) return cache[at];
    const Response response = computeResponse(index);
    if (index >= 0 && at == cacheCount && at < cache.size()) cache[cacheCount++] = response;
    return response;
}

void CachedDiscreteFrequencyResponseSource::resetCache() {
    cacheCount = 0;
    if (getMapping()->getTableSize() > cache.size()) cache.resize(getMapping()->getTableSize());
}

}  // namespace cinder
