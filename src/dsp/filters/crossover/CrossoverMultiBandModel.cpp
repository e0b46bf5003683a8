#include "dsp/filters/crossover/CrossoverMultiBandModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "dsp/filters/Bilinear.h"
#include "dsp/filters/crossover/CrossoverTables.h"

namespace cinder {

using Model = CrossoverMultiBandModel;

Model::CrossoverResponseSource::CrossoverResponseSource(Crossover* crossover)
    : CachedDiscreteFrequencyResponseSource(&crossover->model->mapping), crossover(crossover) {}

FrequencyResponseSource::Response Model::CrossoverResponseSource::computeResponse(int index) {
    return crossover->responseAt(getMapping()->getFrequency(index));
}

Model::Crossover::Crossover(Model* model, int index)
    : model(model), index(index), responseSource(std::make_unique<CrossoverResponseSource>(this)) {}

void Model::Crossover::propertyChanged(AbstractProperty*) {
    update();
    model->notify();
}

void Model::Crossover::update() {
    inverseHz = std::exp2(-static_cast<double>(frequency.get()));
    inverseTangent =
        1.0 / static_cast<double>(bilinearTangent(angularFrequency(frequency, model->sampleRate)));
    responseSource->resetCache();
}

FrequencyResponseSource::Response Model::Crossover::responseAt(float hz) const {
    const auto lowPass = [](double ratio, double power) {
        return static_cast<float>(1.0 / (std::pow(ratio, power) + 1.0));
    };
    if (model->processingMode == ProcessingMode::Analog)
        // As a float the power of a usual slope is a whole number, which a point of the grid below
        // 0 Hz has an answer for.
        return lowPass(static_cast<double>(hz) * inverseHz,
                       static_cast<double>(slope * 0.16666667f));

    constexpr float practicallyInfinite = 199.0f;
    const float omega = 2.0f * std::numbers::pi_v<float> * std::max(hz, 1.0f) / model->sampleRate;
    const float tangent = bilinearTangent(omega);
    if (tangent >= practicallyInfinite) return 0.0f;
    const double ratio = static_cast<double>(tangent) * inverseTangent;
    const int order = rowOfSlope(slope).order;
    if (order > 1) return lowPass(ratio, order);
    const std::complex<double> first = 1.0 / std::complex<double>(1.0, ratio);
    return {static_cast<float>(first.real()), static_cast<float>(first.imag())};
}

Model::Band::Band(Model* model, int index)
    : DiscreteFrequencyResponseSource(&model->mapping), model(model), index(index) {}

FrequencyResponseSource::Response Model::Band::getResponseAt(int point) {
    Response product = 1.0f;
    for (Place at = place; at.parent != noCrossover;) {
        Crossover& crossover = model->getCrossover(at.parent);
        const Response low = crossover.getResponseSource().getResponseAt(point);
        product *= at.side == High ? 1.0f - low : low;
        at = crossover.getPlace();
    }
    return product;
}

void Model::Band::propertyChanged(AbstractProperty*) {
    model->notify();
}

Model::CrossoverMultiBandModel() : changedEvent(addDeferredEvent()) {
    mapping.changed.setMainHandler(NotifyEvent::makeHandler(this, &Model::mappingChanged));
    for (int i = 0; i < maxCrossovers; ++i)
        crossovers[static_cast<std::size_t>(i)] = std::make_unique<Crossover>(this, i);
    for (int i = 0; i < maxBands; ++i)
        bands[static_cast<std::size_t>(i)] = std::make_unique<Band>(this, i);
    for (const auto& crossover : crossovers)
        crossover->update();
    buildTree();
}

void Model::propertyChanged(AbstractProperty* property) {
    if (property == &bandCount) {
        buildTree();
        notify();
    } else {
        updateCrossovers();
    }
}

void Model::mappingChanged(NotifyEvent::Argument) {
    updateCrossovers();
}

void Model::updateCrossovers() {
    for (const auto& crossover : crossovers)
        crossover->update();
    notify();
}

void Model::buildTree() {
    numPlacedBands = 0;
    root = bandCount > 1 ? (bandCount - 1) / 2 : noCrossover;
    placeSubtree(0, bandCount - 1, {});
}

/// A subtree of `count` crossovers, from number `start` on; without any it is a band.
void Model::placeSubtree(int start, int count, Place place) {
    if (place.parent != noCrossover) getCrossover(place.parent).subtreeSizes[place.side] = count;
    if (count == 0) {
        getBand(numPlacedBands++).place = place;
        return;
    }
    const int middle = start + count / 2;
    getCrossover(middle).place = place;
    placeSubtree(start, count / 2, {middle, Low});
    placeSubtree(middle + 1, count - count / 2 - 1, {middle, High});
}

}  // namespace cinder
