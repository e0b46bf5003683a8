#include "cinder/plot/Figure.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

namespace cinder {

namespace {

constexpr std::uint32_t emberStops[] = {0xeab354, 0xd9763a, 0xa83a3b, 0x4e1a2b};
constexpr std::uint32_t cutStops[] = {0x8f9aa3, 0x7fb2d8, 0x3f78b5, 0x1c3c6e};
constexpr std::uint32_t boostStops[] = {0x8f9aa3, 0xe5a04b, 0xc8562f, 0x6b1f2a};

/// On the line through the stops, 0 to 1.
Colour blended(std::span<const std::uint32_t> stops, double amount) {
    const double place = std::clamp(amount, 0.0, 1.0) * static_cast<double>(stops.size() - 1);
    const auto below = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    const double part = place - static_cast<double>(below);
    std::uint32_t rgb = 0;
    for (const unsigned shift : {16u, 8u, 0u}) {
        const auto a = static_cast<double>(stops[below] >> shift & 0xffu);
        const auto b = static_cast<double>(stops[below + 1] >> shift & 0xffu);
        rgb |= static_cast<std::uint32_t>(std::lround(a + (b - a) * part)) << shift;
    }
    return {rgb};
}

}  // namespace

Colour palette::ember(double amount) {
    return blended(emberStops, amount);
}

Colour palette::cutOrBoost(double amount) {
    return amount < 0.0 ? blended(cutStops, -amount) : blended(boostStops, amount);
}

Extent heightsOf(std::span<const Series> series) {
    Extent heights = {std::numeric_limits<double>::infinity(),
                      -std::numeric_limits<double>::infinity()};
    for (const Series& one : series)
        for (const Point& point : one.points) {
            if (std::isnan(point.y)) continue;
            heights.lowest = std::min(heights.lowest, point.y);
            heights.highest = std::max(heights.highest, point.y);
        }
    return heights;
}

void Figure::addPanel(std::string panelTitle, Axis x, Axis y, std::vector<Series> series) {
    Panel& panel = panels.emplace_back();
    panel.title = std::move(panelTitle);
    panel.x = std::move(x);
    panel.y = std::move(y);
    panel.series = std::move(series);
}

int Figure::numRows() const {
    return (static_cast<int>(panels.size()) + numColumns() - 1) / numColumns();
}

std::vector<const Series*> Figure::legend() const {
    std::vector<const Series*> entries;
    for (const Panel& panel : panels)
        for (const Series& series : panel.series) {
            const auto isKnown = [&](const Series* entry) { return entry->name == series.name; };
            if (!series.name.empty() && std::ranges::none_of(entries, isKnown))
                entries.push_back(&series);
        }
    return entries;
}

}  // namespace cinder
