#pragma once

#include "cinder/ParameterSettings.h"

#include <optional>
#include <span>
#include <string>

namespace cinder {

/// What --bands, --crossover, --style and --drive say, as typed.
struct BandOptions {
    std::optional<std::string> bands;
    std::optional<std::string> crossover;
    std::optional<std::string> style;
    std::optional<std::string> drive;

    bool areGiven() const { return bands || crossover || style || drive; }
};

/// The parameters of the bands, as the options and then the texts NAME=VALUE set them. Without a
/// number of bands there are as many as the longest list is for; without crossovers the bands span
/// as many octaves each.
/// Errors  UsageError: a list that is for another number of bands, crossovers that don't ascend,
///         and what ParameterSettings refuses
ParameterSettings bandSettings(const BandOptions& options, std::span<const std::string> texts);

/// "2 bands: Warm Tube 50 % | 850 Hz | Destroy 100 %, Oversampling 8, Bypass 0"
std::string bandText(const ParameterSettings& settings);

/// Parameters and styles, for --help.
std::string bandHelp();

}  // namespace cinder
