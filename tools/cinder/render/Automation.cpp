#include "cinder/render/Automation.h"

#include "cinder/OptionValues.h"
#include "cinder/UsageError.h"
#include "cinder/render/TextFile.h"
#include "cinder/vocabulary/ParameterList.h"
#include "params/tree/StandaloneParameters.h"
#include "presets/format/ParameterText.h"
#include "presets/format/TextLines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace cinder {

namespace {

constexpr std::size_t numCells = 3;
constexpr double longestSeconds = 1e7;

/// Takes a cell and the comma behind it.
std::string takeCell(std::string_view& rest) {
    rest = withoutBlanks(rest);
    std::string cell;
    if (rest.starts_with('"')) {
        for (rest.remove_prefix(1); !rest.starts_with('"') || rest.starts_with("\"\"");) {
            if (rest.empty()) throw UsageError("a quote is not closed");
            cell += rest.front();
            rest.remove_prefix(rest.front() == '"' ? 2 : 1);
        }
        rest = withoutBlanks(rest.substr(1));
        if (!rest.empty() && !rest.starts_with(','))
            throw UsageError("a comma is missing behind \"" + cell + "\"");
    } else {
        cell = withoutBlanks(rest.substr(0, rest.find(',')));
        rest.remove_prefix(std::min(rest.find(','), rest.size()));
    }
    return cell;
}

std::vector<std::string> cellsOf(std::string_view line) {
    std::vector<std::string> cells = {takeCell(line)};
    while (line.starts_with(',')) {
        line.remove_prefix(1);
        cells.push_back(takeCell(line));
    }
    if (cells.size() != numCells)
        throw UsageError("there are " + std::to_string(cells.size()) +
                         " cells and not three: seconds, parameter, value");
    return cells;
}

AutomationLane& laneOf(Automation& automation, const AbstractPluginParameter& parameter) {
    for (AutomationLane& lane : automation)
        if (lane.parameter == parameter.getId()) return lane;
    automation.push_back({parameter.getId(), parameter.isDiscrete(), {}});
    return automation.back();
}

void addPoint(Automation& automation, const std::vector<std::string>& cells,
              const StandaloneParameters& tree) {
    const auto seconds = parseNumber(cells[0]);
    if (!seconds || *seconds < 0.0 || *seconds > longestSeconds)
        throw UsageError("\"" + cells[0] + "\" is no time in seconds, 0 or above");
    const AbstractPluginParameter& parameter = findParameter(tree, cells[1]);
    laneOf(automation, parameter).points.push_back({*seconds, valueOf(parameter, cells[2])});
}

bool areTitles(const std::vector<std::string>& cells, const StandaloneParameters& tree) {
    return !parseNumber(cells[0]) && !parameterNamed(tree, cells[1]);
}

}  // namespace

Automation readAutomation(const std::filesystem::path& file, const StandaloneParameters& tree) {
    const std::string text = readWhole(file);
    Automation automation;
    bool isFirst = true;
    for (const auto& [number, line] : linesOf(text)) {
        try {
            const std::vector<std::string> cells = cellsOf(line);
            if (!isFirst || !areTitles(cells, tree)) addPoint(automation, cells, tree);
        } catch (const UsageError& error) {
            throw errorInLine(file, number, error.what());
        }
        isFirst = false;
    }
    for (AutomationLane& lane : automation)
        std::ranges::stable_sort(lane.points, {}, &AutomationLane::Point::seconds);
    return automation;
}

AutomationCursor::AutomationCursor(const AutomationLane& lane, int sampleRate)
    : id(lane.parameter), isStepped(lane.isStepped) {
    for (const auto& [seconds, value] : lane.points)
        points.push_back({std::llround(seconds * sampleRate), value});
}

float AutomationCursor::valueAt(std::int64_t frame) {
    position = frame;
    while (next < points.size() && points[next].frame <= frame)
        ++next;
    if (next == 0) return points.front().value;
    const Point& from = points[next - 1];
    if (!isSlope()) return from.value;
    const Point& to = points[next];
    const double part =
        static_cast<double>(frame - from.frame) / static_cast<double>(to.frame - from.frame);
    return static_cast<float>(
        std::lerp(static_cast<double>(from.value), static_cast<double>(to.value), part));
}

bool AutomationCursor::isSlope() const {
    return !isStepped && next > 0 && next < points.size() &&
           points[next].value != points[next - 1].value;
}

std::int64_t AutomationCursor::nextChange() const {
    if (next == points.size()) return std::numeric_limits<std::int64_t>::max();
    if (!isSlope()) return points[next].frame;
    return std::min(points[next].frame, (position / slopeFrames + 1) * slopeFrames);
}

}  // namespace cinder
