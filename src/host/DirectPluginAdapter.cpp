#include "host/DirectPluginAdapter.h"

#include <bit>
#include <memory>

#include "params/AbstractPluginParameter.h"
#include "state/chunks/InstanceState.h"

namespace cinder {

DirectPluginAdapter::DirectPluginAdapter(std::int32_t channelLayout,
                                         std::optional<std::uint32_t> seed)
    : product(new CinderPlugin(channelLayout)),
      productProcessor(new CinderProcessor(channelLayout, seed)) {
    setHalves(std::unique_ptr<GenericPlugin>(product),
              std::unique_ptr<GenericPluginProcessor>(productProcessor));
    start();
    hostLatency = product->getLatency();
}

void DirectPluginAdapter::setSampleRate(float rate) {
    product->setSampleRate(rate);
    productProcessor->getEnvironment()->setSampleRate(rate);
}

/// Whoever has the lock last copies what both have set before, so the halves agree in the end.
void DirectPluginAdapter::setParameter(int id, float value) {
    AbstractPluginParameter* const parameter = product->parameter(id);
    if (!parameter) return;
    parameter->setValue(value, AbstractPluginParameter::hostKnows);
    const ScopedLock inside(*lock);
    setHostParameter(id, parameter->value());
}

void DirectPluginAdapter::setHostParameter(int id, float value) {
    productProcessor->getParameter(id)->setValue(value, AbstractPluginParameter::hostKnows);
}

void DirectPluginAdapter::latencyChanged() {
    hostLatency = product->getLatency();
}

void DirectPluginAdapter::process(const float* const* inputs, int numInputs, float* const* outputs,
                                  int numOutputs, int numSamples) noexcept CINDER_REALTIME {
    productProcessor->setBypass(hostBypass, GenericPluginProcessor::hostBypassIndex);
    productProcessor->process(inputs, numInputs, outputs, numOutputs, numSamples);
}

void DirectPluginAdapter::parameterValueChanged(int index) noexcept CINDER_REALTIME {
    const auto bit = static_cast<std::size_t>(index);
    processorChanges[bit / bitsPerWord].fetch_or(std::uint64_t{1} << (bit % bitsPerWord));
}

int DirectPluginAdapter::dispatch() {
    return echoProcessor() + product->dispatchEvents();
}

int DirectPluginAdapter::echoProcessor() {
    int numEchoes = 0;
    for (std::size_t word = 0; word < numWords; ++word)
        for (std::uint64_t bits = processorChanges[word].exchange(0); bits != 0; bits &= bits - 1) {
            const int id = static_cast<int>(word) * bitsPerWord + std::countr_zero(bits);
            const ScopedLock inside(*lock);
            product->parameter(id)->setValue(productProcessor->getParameter(id)->value(),
                                             AbstractPluginParameter::hostKnows);
            ++numEchoes;
        }
    return numEchoes;
}

bool DirectPluginAdapter::writeState(std::ostream& stream) const {
    return product->writePluginState(stream) && writeBypassState(stream, hostBypass);
}

bool DirectPluginAdapter::readState(std::istream& stream) {
    if (!readPluginSections(stream)) return false;
    if (const auto bypass = readBypassState(stream)) hostBypass = *bypass;
    return true;
}

}  // namespace cinder
