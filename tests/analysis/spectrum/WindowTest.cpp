#include "analysis/spectrum/Window.h"

#include <doctest/doctest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <utility>
#include <vector>

namespace cinder {
namespace {

std::vector<float> whole(WindowType type, int length, float attenuation = 0.0f,
                         double* sum = nullptr) {
    std::vector<float> values(static_cast<std::size_t>(length));
    window(type, values.data(), 0, length, length, attenuation, sum);
    return values;
}

/// The highest side lobe in dB below the main lobe.
double sideLobeDb(const std::vector<float>& values) {
    const auto response = [&](double turns) {
        std::complex<double> sum = 0.0;
        for (std::size_t n = 0; n < values.size(); ++n)
            sum += static_cast<double>(values[n]) *
                   std::polar(1.0, 2.0 * std::numbers::pi * turns * static_cast<double>(n));
        return std::abs(sum);
    };
    const double step = 0.03 / static_cast<double>(values.size());
    double x = 0.0;
    while (response(x + step) < response(x))
        x += step;
    double highest = 0.0;
    for (; x < 0.5; x += step)
        highest = std::max(highest, response(x));
    return 20.0 * std::log10(response(0.0) / highest);
}

TEST_CASE("window: symmetrical, 1 in the middle, with its sum, also in pieces") {
    struct Case {
        WindowType type;
        double end;
    };
    for (const Case& c : {Case{WindowType::Hann, 0.0}, Case{WindowType::Hamming, 0.08},
                          Case{WindowType::Kaiser, 0.00106}, Case{WindowType::Rectangle, 1.0},
                          Case{WindowType(0), 1.0}}) {
        INFO("type " << static_cast<int>(c.type));
        constexpr int length = 65;
        double sum = 0.0;
        const std::vector<float> values = whole(c.type, length, 72.0f, &sum);
        CHECK(values.front() == doctest::Approx(c.end).epsilon(0.01));
        CHECK(values[32] == doctest::Approx(1.0));
        for (std::size_t i = 0; i < 32; ++i)
            CHECK(values[i] == doctest::Approx(values[64 - i]));
        CHECK(sum == doctest::Approx(std::accumulate(values.begin(), values.end(), 0.0)));
        std::vector<float> pieces(length);
        double sumOfPieces = 100.0;
        for (const auto& [start, count] : {std::pair{0, 20}, {20, 1}, {21, 44}})
            window(c.type, &pieces[static_cast<std::size_t>(start)], start, count, length, 72.0f,
                   &sumOfPieces);
        CHECK(pieces == values);
        if (c.type == WindowType::Kaiser) CHECK(sumOfPieces == doctest::Approx(sum));
    }
    for (int length : {0, 1}) {
        float value = 0.0f;
        window(WindowType::Hann, &value, 0, 1, length, 0.0f, nullptr);
        CHECK(value == 1.0f);
    }
}

TEST_CASE("window: Kaiser side lobes are as far down as asked for") {
    CHECK(whole(WindowType::Kaiser, 64, 13.0f) == whole(WindowType::Rectangle, 64));
    for (float attenuation : {20.0f, 40.0f, 59.9f, 60.0f, 72.0f, 100.0f}) {
        const double measured = sideLobeDb(whole(WindowType::Kaiser, 256, attenuation));
        INFO("asked for " << attenuation << " dB, got " << measured);
        CHECK(std::abs(measured - static_cast<double>(attenuation)) < 1.0);
    }
}

}  // namespace
}  // namespace cinder
