#include "cinder/audio/ProgressBar.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace cinder {

namespace {

constexpr double secondsUntilShown = 0.5;
constexpr double secondsBetweenDraws = 0.1;
constexpr int widestBar = 40;
constexpr int narrowestBar = 4;
constexpr int defaultColumns = 80;

double steadySeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

bool canErase(int descriptor) {
    const char* terminal = std::getenv("TERM");
    return ::isatty(descriptor) == 1 && terminal != nullptr && std::string_view(terminal) != "dumb";
}

int columnsOf(int descriptor) {
    struct winsize size {};
    if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return defaultColumns;
    return size.ws_col;
}

std::string durationText(double seconds) {
    const auto whole = static_cast<long>(std::ceil(std::min(seconds, 1e6)));
    if (whole < 60) return std::to_string(whole) + " s";
    if (whole < 3600) return std::to_string((whole + 59) / 60) + " min";
    return std::to_string((whole + 1800) / 3600) + " h";
}

}  // namespace

ProgressBar::ProgressBar(std::string label, std::int64_t total)
    : ProgressBar(std::move(label), total, STDERR_FILENO, steadySeconds) {}

ProgressBar::ProgressBar(std::string label, std::int64_t total, int descriptor, Clock clock)
    : label(std::move(label)),
      total(std::max<std::int64_t>(total, 1)),
      descriptor(descriptor),
      clock(std::move(clock)),
      isTerminal(canErase(descriptor)),
      start(isTerminal ? this->clock() : 0.0),
      nextDraw(start + secondsUntilShown) {}

ProgressBar::~ProgressBar() {
    erase();
}

void ProgressBar::update(std::int64_t done) {
    if (!isTerminal) return;
    const double now = clock();
    if (now < nextDraw) return;
    nextDraw = now + secondsBetweenDraws;
    const double fraction =
        std::clamp(static_cast<double>(done) / static_cast<double>(total), 0.0, 1.0);
    draw(fraction, fraction > 0.0 ? (now - start) * (1.0 - fraction) / fraction : 0.0);
}

void ProgressBar::draw(double fraction, double secondsLeft) {
    std::string after = "  " + std::to_string(static_cast<int>(fraction * 100.0)) + " %";
    if (fraction > 0.0) after += ", " + durationText(secondsLeft) + " left";
    // Two brackets, two spaces, and the last column, which would wrap on some terminals.
    const int room = columnsOf(descriptor) - static_cast<int>(label.size() + after.size()) - 5;
    if (room < narrowestBar) return;
    const int width = std::min(room, widestBar);
    const auto filled = static_cast<size_t>(fraction * width);
    print("\r" + label + "  [" + std::string(filled, '#') +
          std::string(static_cast<size_t>(width) - filled, '.') + "]" + after + "\x1b[K");
    isShown = true;
}

void ProgressBar::erase() {
    if (isShown) print("\r\x1b[K");
    isShown = false;
}

void ProgressBar::print(const std::string& text) const {
    // One write, so that lines of other processes don't get in between. If it fails, so be it.
    [[maybe_unused]] const auto wrote = ::write(descriptor, text.data(), text.size());
}

}  // namespace cinder
