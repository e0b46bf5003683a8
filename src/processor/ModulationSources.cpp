#include "processor/ModulationSources.h"

#include "modulation/matrix/GlobalModulationProducer.h"
#include "params/FloatParamPluginParameter.h"
#include "params/LimFloatPropPluginParameter.h"

namespace cinder {

namespace {

constexpr float triggerReleaseMs = 15.0f, triggerThreshold = 0.9f;
constexpr int inputLevel = 0, sideChainLevel = 1;  // inputs of the routers

/// First source of a kind, and the first target of its own.
constexpr int firstSource(SourceKind kind) {
    return sourceRows[static_cast<std::size_t>(kind)].first;
}

wave::Producer* targetOf(ModulationMatrix& matrix, TargetGroupId group, int member, int place) {
    return matrix.getTargetController(targetNumber(group, member, place));
}

void connect(Router& router, ModulationSources::Levels levels) {
    router.connect(inputLevel, levels.input);
    router.connect(sideChainLevel, levels.sideChain);
}

}  // namespace

struct ModulationSources::XYAxis {
    XYAxis(wave::Environment* environment, FloatParamPluginParameter& parameter)
        : source(environment, 0.0f, -1.0f, 1.0f), parameter(parameter) {
        parameter.addTarget(&source.parameter);
    }

    wave::FloatParameterSource source;
    const FloatParamPluginParameter& parameter;
};

struct ModulationSources::Oscillator {
    Oscillator(ModulationMatrix& matrix, XLFOParameterSet& set, int index)
        : xlfo(matrix.getEnvironment()),
          controller(&xlfo, targetOf(matrix, TargetGroupId::XLFO, index, 0)),
          midiTrigger(set.as<PropPluginParameter<bool>>(XLFOParameter::MidiTrigger)),
          snap(set.as<PropPluginParameter<bool>>(XLFOParameter::Snap)) {
        xlfo.glide.setSource(targetOf(matrix, TargetGroupId::XLFO, index, 1));
        xlfo.phaseOffset.setSource(targetOf(matrix, TargetGroupId::XLFO, index, 2));
        set.as<FloatParamPluginParameter>(XLFOParameter::FrequencyOffset)
            .addTarget(&controller.offset.getParameter());
        set.as<LimFloatPropPluginParameter>(XLFOParameter::Balance).addProperty(&xlfo.balance);
        set.as<PropPluginParameter<SyncMode>>(XLFOParameter::SyncMode)
            .addProperty(&controller.syncMode);
        set.steps.numActive.addProperty(&xlfo.numSteps);
        for (int i = 0; i < XLFO::maxSteps; ++i)
            addStep(xlfo.steps[static_cast<std::size_t>(i)], *set.steps.set(i), set);
    }

    static void addStep(XLFO::Step& step, XLFOParameterSet::StepParameterSet& set,
                        XLFOParameterSet& xlfoSet) {
        set.as<LimFloatPropPluginParameter>(XLFOStepParameter::Value).addProperty(&step.value);
        set.as<LimFloatPropPluginParameter>(XLFOStepParameter::Glide).addProperty(&step.glide);
        set.as<PropPluginParameter<GlideCurve>>(XLFOStepParameter::GlideFunction)
            .addProperty(&step.glideCurve);
        set.as<PropPluginParameter<bool>>(XLFOStepParameter::Random).addProperty(&step.random);
        xlfoSet.as<PropPluginParameter<bool>>(XLFOParameter::Snap).addProperty(&step.snap);
    }

    XLFO xlfo;
    XLFOFreqController controller;
    const PropPluginParameter<bool>& midiTrigger;
    const PropPluginParameter<bool>& snap;
};

struct ModulationSources::Generator {
    Generator(ModulationMatrix& matrix, EGParameterSet& set, int index, Levels levels,
              const EnvelopeCurves& curves)
        : router(matrix.getEnvironment(), 2),
          trigger(matrix.getEnvironment(), &router),
          generator(matrix.getEnvironment(), &curves),
          triggering(set.as<PropPluginParameter<Triggering>>(EGParameter::Triggering)) {
        connect(router, levels);
        trigger.releaseMs.assign(triggerReleaseMs);
        trigger.threshold.assign(triggerThreshold);
        set.as<LimFloatPropPluginParameter>(EGParameter::Threshold).addProperty(&trigger.threshold);
        generator.setTrigger(&trigger);
        // In the order of the targets.
        wave::FloatParameterBus* const buses[] = {&generator.hold,    &generator.delay,
                                                  &generator.attack,  &generator.decay,
                                                  &generator.sustain, &generator.release};
        int place = 0;
        for (wave::FloatParameterBus* bus : buses)
            bus->setSource(targetOf(matrix, TargetGroupId::EnvelopeGenerator, index, place++));
    }

    Router router;
    Trigger trigger;
    EnvelopeGenerator generator;
    const PropPluginParameter<Triggering>& triggering;
};

struct ModulationSources::Follower {
    Follower(ModulationMatrix& matrix, EFParameterSet& set, int index, Levels levels,
             FollowerLevels* shared)
        : router(matrix.getEnvironment(), 2), follower(matrix.getEnvironment(), shared) {
        connect(router, levels);
        set.as<PropPluginParameter<int>>(EFParameter::Input).addProperty(&router.selection);
        follower.setInput(&router);
        follower.attack.setSource(targetOf(matrix, TargetGroupId::EnvelopeFollower, index, 0));
        follower.release.setSource(targetOf(matrix, TargetGroupId::EnvelopeFollower, index, 1));
    }

    Router router;
    EnvelopeFollower follower;
};

/// The source, and its twin for targets that want a note at once.
struct ModulationSources::Midi {
    Midi(wave::Environment* environment, MidiModSource::Cache* cache, MidiSourceParameterSet& set)
        : ramped(environment, cache), immediate(environment, cache) {
        immediate.setNoteRampMs(0.0f);
        for (MidiModSource* source : {&ramped, &immediate}) {
            set.as<PropPluginParameter<MidiInput>>(MidiSourceParameter::Input)
                .addProperty(&source->midiInput);
            set.as<PropPluginParameter<int>>(MidiSourceParameter::ControllerNumber)
                .addProperty(&source->controllerNumber);
            set.as<PropPluginParameter<ResponseCurve>>(MidiSourceParameter::ResponseCurve)
                .addProperty(&source->responseCurve);
        }
    }

    MidiModSource ramped, immediate;
};

ModulationSources::ModulationSources(ModulationMatrix& matrix, CinderParameters& tree,
                                     Levels levels, const EnvelopeCurves& curves)
    : matrix(matrix), followerLevels(matrix.getEnvironment()) {
    addXYAxes(tree);
    addOscillators(tree);
    addGenerators(tree, levels, curves);
    addFollowers(tree, levels);
    addMidiSources(tree);
}

ModulationSources::~ModulationSources() = default;

void ModulationSources::addXYAxes(CinderParameters& tree) {
    for (int i = 0; i < tree.xyControllers.setCount(); ++i)
        for (const XYParameter axis : {XYParameter::Hor, XYParameter::Ver}) {
            xyAxes.push_back(std::make_unique<XYAxis>(
                matrix.getEnvironment(),
                tree.xyControllers.set(i)->as<FloatParamPluginParameter>(axis)));
            matrix.setSource(firstSource(SourceKind::XY) + static_cast<int>(xyAxes.size()) - 1,
                             &xyAxes.back()->source);
        }
}

void ModulationSources::addOscillators(CinderParameters& tree) {
    std::vector<wave::Producer*> producers;
    for (int i = 0; i < tree.xlfos.setCount(); ++i) {
        oscillators.push_back(std::make_unique<Oscillator>(matrix, *tree.xlfos.set(i), i));
        producers.push_back(&oscillators.back()->xlfo);
        matrix.setSource(firstSource(SourceKind::XLFO) + i, producers.back());
    }
    tree.xlfos.addProducers(producers);
}

void ModulationSources::addGenerators(CinderParameters& tree, Levels levels,
                                      const EnvelopeCurves& curves) {
    std::vector<wave::Producer*> producers;
    for (int i = 0; i < tree.egs.setCount(); ++i) {
        generators.push_back(
            std::make_unique<Generator>(matrix, *tree.egs.set(i), i, levels, curves));
        producers.push_back(&generators.back()->generator);
        matrix.setSource(firstSource(SourceKind::EnvelopeGenerator) + i, producers.back());
    }
    tree.egs.addProducers(producers);
}

void ModulationSources::addFollowers(CinderParameters& tree, Levels levels) {
    std::vector<wave::Producer*> producers;
    for (int i = 0; i < tree.efs.setCount(); ++i) {
        followers.push_back(
            std::make_unique<Follower>(matrix, *tree.efs.set(i), i, levels, &followerLevels));
        producers.push_back(&followers.back()->follower);
        matrix.setSource(firstSource(SourceKind::EnvelopeFollower) + i, producers.back());
    }
    tree.efs.addProducers(producers);
}

void ModulationSources::addMidiSources(CinderParameters& tree) {
    for (int i = 0; i < tree.midiSources.setCount(); ++i) {
        midiSources.push_back(
            std::make_unique<Midi>(matrix.getEnvironment(), &midiCache, *tree.midiSources.set(i)));
        const int source = firstSource(SourceKind::Midi) + i;
        matrix.setSource(source, &midiSources.back()->ramped);
        matrix.setSourceVariant(source, 1, &midiSources.back()->immediate);
    }
    // Velocity and note in the middle, until a key is pressed.
    constexpr int neutralNote = 48;
    constexpr float neutralVelocity = 0.5f;
    midiCache.noteOn(neutralNote, neutralVelocity);
}

void ModulationSources::seedRandom(std::uint32_t seed) {
    for (const auto& oscillator : oscillators)
        oscillator->xlfo.seedRandom(++seed);
}

void ModulationSources::setTempo(float tempo, float position) noexcept CINDER_REALTIME {
    for (const auto& oscillator : oscillators)
        oscillator->controller.setTempo(tempo, position);
}

void ModulationSources::noteOn(int note) noexcept CINDER_REALTIME {
    heldNotes = note != 0 ? heldNotes + 1 : 0;
    for (const auto& oscillator : oscillators)
        if (note != 0) oscillator->xlfo.trigger(oscillator->midiTrigger.typedValue());
    for (const auto& generator : generators) {
        if (generator->triggering.typedValue() != Triggering::Midi) continue;
        if (note != 0)
            generator->generator.requestStart();
        else
            generator->generator.close();
    }
}

void ModulationSources::noteOff() noexcept CINDER_REALTIME {
    if (heldNotes == 0 || --heldNotes > 0) return;
    for (const auto& generator : generators)
        generator->generator.close();
}

void ModulationSources::snapChanged(int xlfo) noexcept CINDER_REALTIME {
    const bool snaps = oscillators[static_cast<std::size_t>(xlfo)]->snap.typedValue();
    matrix.setSourceKind(firstSource(SourceKind::XLFO) + xlfo,
                         snaps ? SourceKind::SnappedXLFO : SourceKind::XLFO);
}

void ModulationSources::triggeringChanged(int eg) noexcept CINDER_REALTIME {
    Generator& generator = *generators[static_cast<std::size_t>(eg)];
    const Triggering triggering = generator.triggering.typedValue();
    generator.router.selection.assign(triggering == Triggering::SideChain ? sideChainLevel
                                                                          : inputLevel);
    generator.generator.setTriggering(triggering);
}

float ModulationSources::getSourceValue(int source) const {
    const auto place = [source](SourceKind kind) {
        return static_cast<std::size_t>(source - firstSource(kind));
    };
    switch (kindOfSource(source)) {
        case SourceKind::XY:
            return (xyAxes[place(SourceKind::XY)]->parameter.value() + 1.0f) * 0.5f;
        case SourceKind::XLFO:
        case SourceKind::SnappedXLFO:
            return oscillators[place(SourceKind::XLFO)]->xlfo.getSourceValue();
        case SourceKind::EnvelopeGenerator:
            return generators[place(SourceKind::EnvelopeGenerator)]->generator.getSourceValue();
        case SourceKind::EnvelopeFollower:
            return followers[place(SourceKind::EnvelopeFollower)]->follower.getSourceValue();
        case SourceKind::Midi:
            return midiSources[place(SourceKind::Midi)]->ramped.getSourceValue();
    }
    return 0.0f;
}

}  // namespace cinder
