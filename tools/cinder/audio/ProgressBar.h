#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace cinder {

/// A line on a terminal that shows how far a long work has come:
/// "rendering  [##########..........]  50 %, 12 s left". It shows itself only once the work has
/// taken half a second, and is gone at the end. On anything but a terminal it writes nothing.
class ProgressBar {
public:
    using Clock = std::function<double()>;  // seconds

    ProgressBar(std::string label, std::int64_t total);
    /// To another descriptor, by another clock.
    ProgressBar(std::string label, std::int64_t total, int descriptor, Clock clock);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    void update(std::int64_t done);

    /// Takes the line away, so that something else can be printed. The next update() brings it
    /// back.
    void erase();

private:
    void draw(double fraction, double secondsLeft);
    void print(const std::string& text) const;

    const std::string label;
    const std::int64_t total;
    const int descriptor;
    const Clock clock;
    const bool isTerminal;
    const double start;
    double nextDraw;
    bool isShown = false;
};

}  // namespace cinder
