#include "params/tree/ParameterRows.h"

#include <type_traits>

#include "modulation/matrix/ModulationTargetParameter.h"
#include "modulation/vocabulary/SourceParameters.h"
#include "params/FloatParamPluginParameter.h"
#include "params/FloatPluginParameterUnit.h"
#include "params/GenericPluginBase.h"
#include "params/LimFloatPropPluginParameter.h"
#include "params/PropPluginParameter.h"
#include "params/tree/BandRows.h"

namespace cinder {

namespace {

void setUpUnit(FloatPluginParameter& parameter, RowUnit unit) {
    switch (unit) {
        case RowUnit::Plain:
            return;
        case RowUnit::Decibels:
            return parameter.setUnit(units::dB);
        case RowUnit::Percent:
            return parameter.setUnit(units::percent);
        case RowUnit::LongPercent:
            return parameter.setUnitWords(units::percent);
        case RowUnit::Hertz:
            return parameter.setUnit(units::hz);
        case RowUnit::Log2Hertz:
            return parameter.setUnit(units::expFreq);
        case RowUnit::Seconds:
            return parameter.setUnit(units::sec);
    }
}

void setUpContinuous(FloatPluginParameter& parameter, const ParameterRow& row) {
    parameter.setRange({row.minimum, row.maximum, row.defaultValue});
    setUpUnit(parameter, row.unit);
    const auto install = [](FloatDisplay::Function& step, Taper::Function from) {
        if (from) step = from;  // a unit's own step stays where the taper has none
    };
    install(parameter.display.toTarget, row.scale.taper->toTarget);
    install(parameter.display.fromTarget, row.scale.taper->fromTarget);
    install(parameter.display.toDisplay, row.scale.taper->toDisplay);
    install(parameter.display.fromDisplay, row.scale.taper->fromDisplay);
    if (row.scale.target) parameter.setTargetRange(row.scale.target->low, row.scale.target->high);
    if (row.scale.display)
        parameter.setDisplayRange(row.scale.display->low, row.scale.display->high);
}

template <typename Parameter>
void setUpStepped(Parameter& parameter, const ParameterRow& row) {
    parameter.setRange({static_cast<std::int32_t>(row.minimum),
                        static_cast<std::int32_t>(row.maximum),
                        static_cast<std::int32_t>(row.defaultValue)});
    if (row.role.choices) parameter.setNames(row.role.choices);
}

/// What a kind's class is made with.
struct Maker {
    using Parameter = std::unique_ptr<AbstractPluginParameter>;
    Parameter (*make)(GenericParameterOwner* owner, const std::string& name, TargetPlace targets,
                      int target);
    void (*setUp)(AbstractPluginParameter& parameter, const ParameterRow& row);
};

template <typename Parameter>
constexpr Maker makerOf() {
    return {[](GenericParameterOwner* owner, const std::string& name, TargetPlace targets,
               int target) -> Maker::Parameter {
                if constexpr (std::is_same_v<Parameter, ModulationTargetParameter>)
                    return std::make_unique<Parameter>(owner, name, targets.owner,
                                                       targets.firstTarget + target);
                else
                    return std::make_unique<Parameter>(owner, name);
            },
            [](AbstractPluginParameter& parameter, const ParameterRow& row) {
                auto& own = static_cast<Parameter&>(parameter);
                if constexpr (std::is_base_of_v<FloatPluginParameter, Parameter>)
                    setUpContinuous(own, row);
                else
                    setUpStepped(own, row);
            }};
}

const Maker& makerOf(ParameterKind kind) {
    // In the order of the kinds.
    static constexpr Maker makers[] = {
        makerOf<ModulationTargetParameter>(),
        makerOf<FloatParamPluginParameter>(),
        makerOf<LimFloatPropPluginParameter>(),
        makerOf<PropPluginParameter<int>>(),
        makerOf<PropPluginParameter<bool>>(),
        makerOf<PropPluginParameter<GenericPluginBase::MidiState>>(),
        makerOf<PropPluginParameter<SoloMuteState>>(),
        makerOf<PropPluginParameter<SyncMode>>(),
        makerOf<PropPluginParameter<GlideCurve>>(),
        makerOf<PropPluginParameter<Triggering>>(),
        makerOf<PropPluginParameter<MidiInput>>(),
        makerOf<PropPluginParameter<ResponseCurve>>(),
    };
    static_assert(std::size(makers) == numParameterKinds);
    return makers[static_cast<std::size_t>(kind)];
}

}  // namespace

ParameterRows::ParameterRows(GenericParameterOwner* owner, const std::string& setName,
                             std::span<const ParameterRow> rows, TargetPlace targets)
    : rows(rows) {
    parameters.reserve(rows.size());
    for (const ParameterRow& row : rows)
        parameters.push_back(
            makerOf(row.role.kind).make(owner, setName + row.suffix, targets, row.role.target));
}

void ParameterRows::initialize() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        AbstractPluginParameter& parameter = *parameters[i];
        makerOf(rows[i].role.kind).setUp(parameter, rows[i]);
        parameter.automatable = rows[i].automatable;
        if (rows[i].hint) parameter.hint = rows[i].hint;
    }
}

}  // namespace cinder
