#include "cinder/measure/SpectralLines.h"
#include "cinder/measure/StyleTable.h"

#include <doctest/doctest.h>

#include <cmath>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

namespace cinder {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int styleStride = 5;  // they take ten times as long
#else
constexpr int styleStride = 1;
#endif

/// What stands in the page between the two markers.
std::vector<std::string> tableOfPage() {
    std::ifstream page(CINDER_STYLES_PAGE);
    std::vector<std::string> lines;
    bool inside = false;
    for (std::string line; std::getline(page, line);) {
        if (line.starts_with("<!-- end of the table")) break;
        if (inside) lines.push_back(line);
        if (line.starts_with("<!-- table")) inside = true;
    }
    return lines;
}

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells;
    for (std::size_t start = 2, end; (end = line.find(" |", start)) != std::string::npos;
         start = end + 3)
        cells.push_back(line.substr(start, end - start));
    return cells;
}

/// Instruction sets round differently, and noise is drowned in the last bits of a loud tone.
bool areAlike(const std::string& a, const std::string& b, const std::string& unit) {
    if (a == b) return true;
    if (a == "none" || b == "none") return false;
    const double percent = 0.05, decibels = 0.4;
    return std::abs(std::stod(a) - std::stod(b)) < (unit == "%" ? percent : decibels);
}

TEST_CASE("Styles page: the table holds what the styles measure") {
    const std::vector<std::string> lines = tableOfPage();
    REQUIRE(lines.size() == numStyles + 2);
    CHECK(lines[0] + '\n' + lines[1] + '\n' == styleMarkdownHead());
    const auto columns = styleColumns();
    const StyleSet styles;
    for (int i = 0; i < numStyles; i += styleStride) {
        const auto written = cellsOf(lines[static_cast<std::size_t>(i) + 2]);
        const auto measured = styleCells(StyleId{i}, measureStyle(styles, StyleId{i}, {}), {});
        REQUIRE(written.size() == columns.size() + 1);
        CHECK(written[0] == measured[0]);
        for (std::size_t k = 1; k < written.size(); ++k) {
            const StyleColumn& column = columns[k - 1];
            INFO(written[0] << ", " << column.what << ' ' << column.which << ": " << written[k]
                            << " stands there, " << measured[k] << " it is");
            CHECK((column.hangsOnMachine || areAlike(written[k], measured[k], column.unit)));
        }
    }
}

TEST_CASE("spectralLines: sines come out with their amplitude and phase, and nowhere else") {
    constexpr int length = 4410;  // no power of two
    std::vector<float> samples;
    for (int n = 0; n < length; ++n) {
        const double turn = 2.0 * std::numbers::pi * n / length;
        samples.push_back(
            static_cast<float>(0.5 * std::cos(7.0 * turn + 1.0) + 0.001 * std::sin(1999.0 * turn)));
    }
    const auto lines = spectralLines(samples, 1, 2000);
    CHECK(std::abs(lines[6] - std::polar(0.5, 1.0)) < 1e-7);
    CHECK(std::abs(lines[1998] - std::polar(0.001, -0.5 * std::numbers::pi)) < 1e-7);
    for (const std::size_t i : {0u, 5u, 7u, 1000u, 1997u, 1999u})
        CHECK(std::abs(lines[i]) < 1e-7);
    CHECK(std::abs(spectralLines(samples, 7, 2, 1992)[1] - lines[1998]) < 1e-9);
}

}  // namespace
}  // namespace cinder
