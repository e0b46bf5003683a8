#include "cinder/BandSettings.h"

#include "cinder/OptionValues.h"
#include "cinder/UsageError.h"
#include "cinder/bands/BandsParameters.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace cinder {

namespace {

/// One of the options that take a list with commas.
struct ValueList {
    const char* option;
    int firstId;
    std::vector<std::string_view> values;  // of the text; empty where the option isn't given

    int size() const { return static_cast<int>(values.size()); }
};

ValueList listOf(const char* option, int firstId, const std::optional<std::string>& text) {
    ValueList list{option, firstId, {}};
    if (!text) return list;
    std::string_view rest = *text;
    for (auto comma = rest.find(','); comma != std::string_view::npos; comma = rest.find(',')) {
        list.values.push_back(withoutBlanks(rest.substr(0, comma)));
        rest.remove_prefix(comma + 1);
    }
    list.values.push_back(withoutBlanks(rest));
    return list;
}

std::string bandsText(int count) {
    return std::to_string(count) + (count == 1 ? " band" : " bands");
}

int numBandsIn(const ParameterSettings& settings) {
    return static_cast<int>(settings[bandsId]);
}

/// Where nobody says how many.
int bandsFor(const ValueList& crossovers, const ValueList& styles, const ValueList& drives) {
    const int wanted = std::max({1 + crossovers.size(), styles.size(), drives.size()});
    return std::min(wanted, maxBands);
}

void setCrossovers(ParameterSettings& settings, const ValueList& list) {
    const int numBands = numBandsIn(settings);
    const int count = numBands - 1;
    if (list.size() > 0 && list.size() != count)
        throw UsageError(std::string(list.option) + " takes " + std::to_string(count) +
                         (count == 1 ? " frequency" : " frequencies") + " for " +
                         bandsText(numBands) + ", not " + std::to_string(list.size()));
    for (int i = 0; i < count; ++i) {
        if (list.size() > 0)
            settings.suggest(list.firstId + i, list.values[static_cast<std::size_t>(i)]);
        else
            settings.suggest(list.firstId + i, evenCrossovers[count][i]);
    }
    for (int id = list.firstId; id < list.firstId + count - 1; ++id)
        if (!(settings[id] < settings[id + 1]))
            throw UsageError("crossovers ascend; " + settings.valueText(id) +
                             " can't stand before " + settings.valueText(id + 1));
}

void suggestStyle(ParameterSettings& settings, int id, std::string_view text) {
    const auto number = parseNumber(text);
    if (number && *number >= 0.0 && *number < numStyles && *number == static_cast<int>(*number))
        settings.suggest(id, static_cast<float>(*number));
    else
        settings.suggest(id, text);
}

template <typename Suggest>
void setForEachBand(ParameterSettings& settings, const ValueList& list, Suggest suggest) {
    const int numBands = numBandsIn(settings);
    if (list.size() > 1 && list.size() != numBands)
        throw UsageError(
            std::string(list.option) + " takes one value for all bands" +
            (numBands == 1 ? "" : ", or one for each of the " + std::to_string(numBands)) +
            ", not " + std::to_string(list.size()));
    for (int band = 0; band < numBands && list.size() > 0; ++band)
        suggest(settings, list.firstId + band,
                list.values[list.size() == 1 ? 0 : static_cast<std::size_t>(band)]);
}

/// The row that stands for all of its kind in a help text.
ParameterRow renamed(int id, const char* name) {
    ParameterRow row = bandsParameterRows[static_cast<std::size_t>(id)];
    row.name = name;
    return row;
}

}  // namespace

ParameterSettings bandSettings(const BandOptions& options, std::span<const std::string> texts) {
    ParameterSettings settings(bandsParameterRows, texts);
    const ValueList crossovers = listOf("--crossover", crossoverId, options.crossover);
    const ValueList styles = listOf("--style", bandStyleId, options.style);
    const ValueList drives = listOf("--drive", bandDriveId, options.drive);
    settings.suggest(bandsId, static_cast<float>(
                                  options.bands ? parseWhole("--bands", *options.bands, 1, maxBands)
                                                : bandsFor(crossovers, styles, drives)));
    setCrossovers(settings, crossovers);
    setForEachBand(settings, styles, suggestStyle);
    setForEachBand(settings, drives, [](ParameterSettings& all, int id, std::string_view text) {
        all.suggest(id, text);
    });
    return settings;
}

std::string bandText(const ParameterSettings& settings) {
    const int numBands = numBandsIn(settings);
    std::string text = bandsText(numBands) + ": ";
    for (int band = 0; band < numBands; ++band) {
        if (band > 0) text += " | " + settings.valueText(crossoverId + band - 1) + " | ";
        text +=
            settings.valueText(bandStyleId + band) + ' ' + settings.valueText(bandDriveId + band);
    }
    return text + ", Oversampling " + settings.valueText(bandsOversamplingId) + ", Bypass " +
           settings.valueText(bandsBypassId);
}

std::string bandHelp() {
    const ParameterRow rows[] = {
        renamed(bandsId, "Bands"),
        renamed(crossoverId, "Crossover 1..5"),
        renamed(bandStyleId, "Style 1..6"),
        renamed(bandDriveId, "Drive 1..6"),
        renamed(bandsOversamplingId, "Oversampling"),
        renamed(bandsBypassId, "Bypass"),
    };
    return parameterHelp(rows);
}

}  // namespace cinder
