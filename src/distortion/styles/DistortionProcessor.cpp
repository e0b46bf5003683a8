#include "distortion/styles/DistortionProcessor.h"

#include <cmath>
#include <iterator>
#include <random>

#include "core/Constants.h"

namespace cinder {

namespace {

using enum FilterShape;

// clang-format off
constexpr FilterRow toneRows[] = {
    // Hz       dB     Q     shape
    { 120.0f,   0.0f,  0.3f, LowShelf },
    { 600.0f,   0.0f,  0.5f, Bell     },
    {2500.0f,   0.0f,  0.5f, HighShelf},
    {7000.0f,   0.0f,  1.0f, HighShelf},
};
// clang-format on
static_assert(std::size(toneRows) == DistortionProcessor::numTones);

constexpr float crusherBits = 24.0f;  // the crusher holds samples and takes no bits away

}  // namespace

DistortionProcessor::DistortionProcessor(sr::IIRConverterStyle* converterStyle,
                                         const Capacitor::Style* capacitorStyle,
                                         std::optional<std::uint32_t> noiseSeed)
    : FilterBase(converterStyle->getEnvironment(), true),
      drive(environment, 0.0f, 0.0f, 1.0f),
      bitCrusher(environment),
      clipper(converterStyle),
      driveForwarder(environment, &drive),
      preEq(environment),
      postEq(environment),
      inputForwarder(environment, this),
      noiseFilter(environment, capacitorStyle,
                  noiseSeed ? *noiseSeed : std::random_device()() + 1u),
      smudgeRouter(environment, 2),
      crushRouter(environment, 2),
      clipRouter(environment, 2),
      smudger(environment),
      toneEq(environment) {
    preEq.setInput(&inputForwarder);
    smudger.setInput(&preEq);
    smudgeRouter.connect(0, &preEq);
    smudgeRouter.connect(1, &smudger);
    bitCrusher.setInput(&smudgeRouter);
    crushRouter.connect(0, &smudgeRouter);
    crushRouter.connect(1, &bitCrusher);
    noiseFilter.setInput(&crushRouter);
    clipper.setInput(&noiseFilter);
    clipRouter.connect(0, &crushRouter);
    clipRouter.connect(1, &clipper);
    postEq.setInput(&clipRouter);
    toneEq.setInput(&postEq);

    for (wave::FloatParameterBus* bus : {&smudger.drive, &bitCrusher.drive, &clipper.drive})
        bus->setSource(&driveForwarder);
    bitCrusher.bitDepth = crusherBits;
    for (const FilterRow& row : toneRows)
        toneEq.addFilter(row);
    resetToNeutral();
}

void DistortionProcessor::render(wave::BasicBlock<float>*, int numSamples,
                                 unsigned) noexcept CINDER_REALTIME {
    passOn(toneEq.pull(numSamples));
    setConstant(toneEq.isConstant());
}

void DistortionProcessor::setUp(const DistortionSetup& setup) noexcept CINDER_REALTIME {
    preEq.clear();
    for (const FilterRow& row : setup.pre)
        preEq.addFilter(row);
    postEq.clear();
    for (const FilterRow& row : setup.post)
        postEq.addFilter(row);

    if (setup.path.smudge == 1) startAnew(smudger);
    if (setup.path.crush == 1) startAnew(bitCrusher);
    if (setup.path.clip == 1) {
        startAnew(noiseFilter);
        startAnew(clipper);
    }
    smudgeRouter.selection = setup.path.smudge;
    crushRouter.selection = setup.path.crush;
    clipRouter.selection = setup.path.clip;
    const double level = std::exp(static_cast<double>(setup.noiseDb) * logPerDecibel);
    noiseFilter.level.assign(static_cast<float>(level));
}

/// Nothing that was heard before a stage went out of the path, unless it is still fading.
void DistortionProcessor::startAnew(wave::Producer& stage) noexcept CINDER_REALTIME {
    if (stage.getLastBlockId() != environment->getBlockId()) stage.reset();
}

void DistortionProcessor::link(DistortionProcessor& other) {
    preEq.link(other.preEq);
    postEq.link(other.postEq);
    toneEq.link(other.toneEq);
    noiseFilter.setPartner(other.noiseFilter);
    clipper.setPartner(&other.clipper);
    clipper.link();
}

}  // namespace cinder
