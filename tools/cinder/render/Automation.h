#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace cinder {

class StandaloneParameters;

/// A parameter that moves while the music plays. Between two points its stored value goes straight
/// from one to the other, so that a frequency moves evenly in octaves; a stepped parameter stays
/// where it is until the next point. Before the first point and behind the last it rests there.
struct AutomationLane {
    struct Point {
        double seconds;
        float value;
    };
    int parameter = 0;  // id
    bool isStepped = false;
    std::vector<Point> points;  // ascending; the last of those at one time counts from then on
};
using Automation = std::vector<AutomationLane>;

/// Reads lines of "seconds, parameter, value" with cells in quotes where they hold a comma (RFC
/// 4180), the points of a parameter in any order. Values are what a user would type. The first line
/// may hold titles.
/// Errors  UserError, with file and line
Automation readAutomation(const std::filesystem::path& file, const StandaloneParameters& tree);

/// A lane at a rate, followed from front to back.
class AutomationCursor {
public:
    /// Frames between two values on a slope. Shorter than any ramp that smooths a control, and
    /// counted from the start of the music and not of a host block: so the size of these does not
    /// matter to the sound.
    static constexpr std::int64_t slopeFrames = 64;

    AutomationCursor(const AutomationLane& lane, int sampleRate);

    int parameter() const { return id; }
    /// Goes on to that frame.
    float valueAt(std::int64_t frame);
    /// The first frame behind that of the last question where the value may be another.
    std::int64_t nextChange() const;

private:
    struct Point {
        std::int64_t frame;
        float value;
    };
    bool isSlope() const;

    int id;
    bool isStepped;
    std::vector<Point> points;
    std::size_t next = 0;  // the first point behind `position`
    std::int64_t position = 0;
};

}  // namespace cinder
