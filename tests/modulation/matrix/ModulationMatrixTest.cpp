#include "modulation/matrix/ModulationMatrix.h"

#include <doctest/doctest.h>

#include <cmath>
#include <deque>
#include <limits>
#include <vector>

#include "modulation/matrix/MatrixRig.h"
#include "modulation/matrix/SlotModel.h"

namespace cinder {
namespace {

using test::MatrixRig;
using test::ModelController;
using test::Rng;
using test::SlotChange;
using test::SlotModel;

constexpr int drive = 7, xlfo1 = 8, ef1 = 20, midi1 = 24, xlfo1Freq = 83;

/// The base values once more, each a smoothed value of its own.
struct Twins {
    Twins(MatrixRig& rig, const SlotModel& model) {
        const std::vector<bool> active = model.active();
        for (int t = 0; t < numModulationTargets; ++t) {
            const int slot = t - firstSlotTarget;
            const float scale = slot >= 0 ? model.depth(slot, active) : 1.0f;
            const ModulationTargetRange& range = *rig.shape.rangeOf(t);
            low.push_back(std::min(range.minimum * scale, range.maximum * scale));
            high.push_back(std::max(range.minimum * scale, range.maximum * scale));
            scales.push_back(scale);
            bases.emplace_back(&rig.environment, low.back(), low.back(), high.back());
            set(t, rig.matrix.getTarget(t).value);
        }
    }
    void set(int target, float value) {
        const auto t = static_cast<std::size_t>(target);
        bases[t].parameter.setValue(value * scales[t], wave::FloatParameter::automaticRamp);
    }

    std::vector<float> low, high, scales;
    std::deque<wave::FloatParameterSource> bases;
};

/// The formula, sample by sample, in double; and how exact the sum can be in float.
struct Formula {
    const MatrixRig& rig;
    const SlotModel& model;
    const Twins& twins;
    std::vector<bool> active = model.active();

    struct Result {
        double value, size;
    };
    Result at(int target, int sample) const {
        const auto t = static_cast<std::size_t>(target);
        const double base = static_cast<double>((*twins.bases[t].getOutput())[sample]);
        Result sum{base, std::abs(base)};
        for (std::size_t i = 0; i < model.slots.size(); ++i) {
            const SlotModel::Slot& slot = model.slots[i];
            if (slot.target != target || !active[i]) continue;
            const int variant = rig.shape.rangeOf(target)->usesSecondVariant ? 1 : 0;
            const auto& source =
                rig.sources[static_cast<std::size_t>(slot.source + variant * numModulationSources)];
            const Result level = at(rig.shape.levelTargetOf(static_cast<int>(i)), sample);
            const double x = static_cast<double>((*source.getOutput())[sample]);
            sum.value += x * level.value;
            sum.size += std::abs(x) * level.size;
        }
        const double low = static_cast<double>(twins.low[t]);
        sum.value = std::min(std::max(sum.value, low), static_cast<double>(twins.high[t]));
        return sum;
    }
};

/// Pulls every target for a block and compares.
void checkBlock(MatrixRig& rig, const SlotModel& model, Twins& twins, int n) {
    rig.environment.beginBlock();
    for (auto& base : twins.bases)
        base.pull(n);
    std::vector<wave::Producer*> outputs;
    for (int t = 0; t < numModulationTargets; ++t)
        outputs.push_back(rig.matrix.getTargetController(t));
    {
        const test::RealtimeGuard guard;
        for (wave::Producer* output : outputs)
            output->pull(n);
    }
    for (auto& source : rig.sources)
        source.pull(n);  // those that nobody has used, for the model
    const Formula formula{rig, model, twins};
    for (int t = 0; t < numModulationTargets; ++t) {
        const wave::BasicBlock<float>& block = *outputs[static_cast<std::size_t>(t)]->getOutput();
        double worst = 0.0;
        for (int i = 0; i < n; ++i) {
            const Formula::Result expected = formula.at(t, i);
            const double error = std::abs(static_cast<double>(block[i]) - expected.value);
            worst = std::max(worst, error / (expected.size + 1e-3));
            if (outputs[static_cast<std::size_t>(t)]->isConstant() && block[i] != block[0])
                worst = 1.0;
        }
        INFO("target " << t << " " << nameOfTarget(t));
        CHECK(worst < 2e-6);
    }
    rig.environment.render(n, 0);
}

TEST_CASE("ModulationMatrix: every target is base plus source times level, clamped as a whole") {
    Rng rng = Rng::fromEnvironment();
    CAPTURE(rng.seed());
    for (int round = 0; round < 12; ++round) {
        CAPTURE(round);
        MatrixRig rig(rng.next());
        SlotModel model{rig.shape};
        ModelController modelled(&model);
        const auto setAll = [&](int t) {
            const ModulationTargetRange& range = *rig.shape.rangeOf(t);
            const auto value = static_cast<float>(rng.real(range.minimum, range.maximum));
            rig.matrix.setTargetValue(t, value);
            return value;
        };
        for (int t = 0; t < numModulationTargets; ++t)
            setAll(t);
        for (int step = 0; step < 400; ++step) {
            const SlotChange change = SlotChange::random(rng, numModulationSlots);
            change.apply(rig.matrix.getController());
            change.apply(modelled);
        }
        Twins twins(rig, model);
        for (const int n : {64, 1, 5, 256})
            checkBlock(rig, model, twins, n);
        for (int t = 0; t < numModulationTargets; t += rng.integer(1, 3))
            twins.set(t, setAll(t));
        for (const int n : {200, 33, 256})  // on ramps
            checkBlock(rig, model, twins, n);
    }
}

TEST_CASE("ModulationMatrix: the same bits for any cut of the block") {
    Rng rng = Rng::fromEnvironment();
    CAPTURE(rng.seed());
    const auto played = [&](const std::vector<int>& pieces) {
        MatrixRig rig(7);
        Rng changes(11);
        for (int t = 0; t < numModulationTargets; ++t)
            rig.matrix.setTargetValue(t, static_cast<float>(changes.real(0.0, 1.0)));
        for (int step = 0; step < 400; ++step)
            SlotChange::random(changes, numModulationSlots).apply(rig.matrix.getController());
        return rig.play(pieces);
    };
    const auto whole = played({256, 256});
    CHECK(played(rng.pieces(512, 60)) == whole);
    CHECK(played(test::evenPieces(512, 1)) == whole);
}

TEST_CASE("ModulationMatrix: a target at rest costs a pointer, a constant sum one sample") {
    MatrixRig rig;
    wave::Producer* const output = rig.matrix.getTargetController(drive);
    const auto pull = [&] {
        rig.environment.beginBlock();
        return output->pull(16);
    };
    const auto baseBlock = [&] {
        bool isConstant = false;
        // Within the cycle this answers with the block that the target has been given.
        auto& base = const_cast<wave::FloatParameter&>(rig.matrix.getTarget(drive).base);
        return static_cast<wave::BasicBlock<float>*>(base.follow(16, &isConstant));
    };
    CHECK(pull() == baseBlock());
    CHECK(output->isConstant());

    // Sources 0, 3, ... are constants; one at level 0 is rendered all the same.
    rig.connect(0, 3, drive, 0.0f);
    CHECK(pull() != baseBlock());
    CHECK(output->isConstant());
    CHECK(rig.sources[3].renders == 1);
    rig.connect(1, 4, drive, 0.5f);
    pull();
    CHECK_FALSE(output->isConstant());
    rig.matrix.setSlotBypassed(0, true);
    rig.matrix.setSlotTarget(1, -1);
    CHECK(pull() == baseBlock());
    CHECK(output->isConstant());
}

TEST_CASE("ModulationMatrix: what is not a number stays out of the signal path") {
    MatrixRig rig;
    test::SignalSource broken(&rig.environment, std::numeric_limits<float>::quiet_NaN());
    rig.matrix.setSource(midi1, &broken);
    rig.connect(0, midi1, drive);
    rig.matrix.setTargetValue(drive + 1, std::numeric_limits<float>::quiet_NaN());
    const auto out = rig.play({40});
    for (const float x : out[drive])
        CHECK(x == 0.0f);
    for (const float x : out[drive + 1])
        CHECK(x == -1.0f);
}

TEST_CASE("ModulationMatrix: depths follow the kind of the source, down chains of levels") {
    MatrixRig rig;
    rig.connect(0, xlfo1, xlfo1Freq + 3);
    rig.connect(1, midi1, rig.shape.levelTargetOf(0));
    const auto scaleOf = [&](int slot) {
        return rig.matrix.getTarget(rig.shape.levelTargetOf(slot)).scale;
    };
    CHECK(scaleOf(0) == 25.0f);
    CHECK(scaleOf(1) == 25.0f);
    rig.matrix.setSourceKind(xlfo1, SourceKind::SnappedXLFO);
    CHECK(scaleOf(0) == 1.0f);
    CHECK(scaleOf(1) == 1.0f);
    rig.matrix.setSlotInverted(0, true);
    rig.matrix.setSlotSource(1, ef1);
    CHECK(scaleOf(1) == -2.0f);
}

}  // namespace
}  // namespace cinder
