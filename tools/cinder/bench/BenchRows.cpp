#include "cinder/bench/BenchRows.h"

#include "distortion/styles/StyleRecipes.h"

#include <cstddef>
#include <iterator>

namespace cinder {

namespace {

constexpr int mostBands = 6;
constexpr const char* drive = "50%";

/// One style of each kind, the cheapest and the dearest of them left out.
constexpr const char* spreadStyles[mostBands] = {
    "Warm Tube", "Warm Tape", "Crunchy Amp", "Heavy Saturation", "Rectify", "Destroy",
};
constexpr const char* spreadCrossovers[mostBands - 1] = {"100", "300", "1000", "3000", "8000"};

constexpr int bandCounts[] = {1, 2, 4, 6};
constexpr int slotCounts[] = {0, 10, 50};

/// What moving slots go to: band after band with the first of these, then with the next one.
constexpr const char* slotTargets[] = {
    "Drive", "Output Level", "Output Pan", "Drive Pan", "Dynamics",
    "Bass",  "Mid",          "Treble",     "Presence",
};
constexpr const char* slotSources[] = {"XLFO 1", "XLFO 2", "XLFO 3", "XLFO 4",
                                       "XLFO 5", "XLFO 6", "EF 1",   "EF 2"};

std::string withNumber(const char* before, int number, const char* after) {
    return before + std::to_string(number) + after;
}

void addBand(BenchRow& row, int number, const char* style) {
    row.settings.push_back({withNumber("Band ", number, " Style"), style});
    row.settings.push_back({withNumber("Band ", number, " Drive"), drive});
}

void addQuality(BenchRow& row, bool isHigh) {
    if (!isHigh) return;
    row.name += ", HQ";
    row.settings.push_back({"High Quality", "On"});
}

BenchRow spread(const char* group, int numBands, bool isHigh) {
    BenchRow row;
    row.group = group;
    row.name = std::to_string(numBands) + (numBands == 1 ? " band" : " bands");
    row.settings.push_back({"Num Active Bands", std::to_string(numBands)});
    for (int i = 0; i < numBands; ++i)
        addBand(row, i + 1, spreadStyles[i]);
    for (int i = 0; i + 1 < numBands; ++i)
        row.settings.push_back(
            {withNumber("Band ", i + 1, " Crossover Frequency"), spreadCrossovers[i]});
    addQuality(row, isHigh);
    return row;
}

/// All bands get a first slot before one gets a second; targets begin anew once all are taken.
void addSlots(BenchRow& row, int numBands, int numSlots) {
    if (numSlots == 0) return;
    row.name += ", " + std::to_string(numSlots) + " slots";
    for (int i = 0; i < numSlots; ++i) {
        const auto target = static_cast<std::size_t>(i / numBands) % std::size(slotTargets);
        const auto source = static_cast<std::size_t>(i) % std::size(slotSources);
        row.settings.push_back({withNumber("Slot ", i + 1, " Source"), slotSources[source]});
        row.settings.push_back({withNumber("Slot ", i + 1, " Target"),
                                withNumber("Band ", i % numBands + 1, " ") + slotTargets[target]});
    }
    row.settings.push_back({"Num Active Slots", std::to_string(numSlots)});
    for (int i = 1; i <= 6; ++i) {
        row.settings.push_back({withNumber("XLFO ", i, " Glide"), "1"});
        row.settings.push_back({withNumber("XLFO ", i, " Step 1 Value"), "-1"});
    }
}

void addSpreads(std::vector<BenchRow>& rows) {
    for (const int numSlots : slotCounts)
        for (const bool isHigh : {false, true})
            for (const int numBands : bandCounts) {
                rows.push_back(spread(numSlots == 0 ? "bands" : "slots", numBands, isHigh));
                addSlots(rows.back(), numBands, numSlots);
            }
}

void addLoops(std::vector<BenchRow>& rows) {
    for (const bool isHigh : {false, true})
        for (const int numBands : {1, 6}) {
            BenchRow& row = rows.emplace_back(spread("feedback", numBands, isHigh));
            row.name += ", feedback at 1 kHz";
            for (int i = 1; i <= numBands; ++i) {
                row.settings.push_back({withNumber("Band ", i, " Feedback Amount"), "30"});
                row.settings.push_back({withNumber("Band ", i, " Feedback Frequency"), "1000"});
            }
        }
}

void addStyles(std::vector<BenchRow>& rows) {
    for (const bool isHigh : {false, true})
        for (const StyleRecipe& style : styleRecipes) {
            BenchRow& row = rows.emplace_back();
            row.group = "styles";
            row.name = std::string(style.name);
            addBand(row, 1, row.name.c_str());
            addQuality(row, isHigh);
        }
}

void addIdle(std::vector<BenchRow>& rows) {
    const auto add = [&rows](const char* name) -> BenchRow& {
        BenchRow& row = rows.emplace_back(spread("idle", mostBands, true));
        row.name += std::string(", ") + name;
        return row;
    };
    BenchRow& muted = add("5 muted");
    for (int i = 2; i <= mostBands; ++i)
        muted.settings.push_back({withNumber("Band ", i, " State"), "Mute"});
    BenchRow& disabled = add("5 disabled");
    for (int i = 2; i <= mostBands; ++i)
        disabled.settings.push_back({withNumber("Band ", i, " Enabled"), "Disabled"});
    add("input auditioned").settings.push_back({"Audition Signal", "Input"});
    add("bypassed").bypassed = true;
    add("silence").signal = BenchRow::Signal::Silence;
}

}  // namespace

std::vector<BenchRow> benchRows() {
    std::vector<BenchRow> rows;
    addSpreads(rows);
    addLoops(rows);
    addStyles(rows);
    addIdle(rows);
    return rows;
}

}  // namespace cinder
