// Compares portable SIMD layers on the two kernels of Kernels.h: times by the clock as ratios from
// interleaved runs, or one pass over known data for counting instructions:
//
//   simd_layers                                   the table of times
//   simd_layers count arcTan vectortypes x86v3    1024 x 1024 samples of one kernel, nothing else
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Kernels.h"
#include "core/simd/InstructionSet.h"

namespace {

using ArcTan = void (*)(const float*, float*, int) noexcept;
using Allpass = void (*)(float*, int, const float*, float*) noexcept;

struct Row {
    const char* layer;
    const char* set;
    cinder::simd::InstructionSet needs;
    ArcTan arcTan;
    Allpass allpass;
};

#define ROW(layer, set) \
    { #layer, #set, cinder::simd::InstructionSet::set, layer::set::arcTan, layer::set::allpass }
#define LAYER_ROWS(set) ROW(vectortypes, set), ROW(highway, set), ROW(xsimdbatch, set)
constexpr Row rows[] = {LAYER_ROWS(baseline), LAYER_ROWS(x86v3), LAYER_ROWS(x86v4)};

constexpr int blockSize = 1024;
constexpr int numFrames = blockSize / 4;

struct Data {
    std::vector<float> in = std::vector<float>(blockSize), out = std::vector<float>(blockSize);
    std::array<float, 4 * numSections> coefficients{};
    std::array<float, 4 * (numSections + 1)> state{};

    Data() {
        for (int i = 0; i < blockSize; ++i)
            in[i] = 4.0f * std::sin(0.37f * static_cast<float>(i));
        for (int i = 0; i < 4 * numSections; ++i)
            coefficients[i] = 0.08f + 0.035f * static_cast<float>(i);
    }
    void arcTan(const Row& row) { row.arcTan(in.data(), out.data(), blockSize); }
    void allpass(const Row& row) {
        row.allpass(out.data(), numFrames, coefficients.data(), state.data());
    }
};

double nsPerSample(auto&& kernel) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 2000; ++i)
        kernel();
    const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / (2000.0 * blockSize);
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

void printTimes() {
    std::puts("                            arcTan           allpass cascade");
    std::puts(
        "layer        set         ns/sample  ratio   ns/sample  ratio   (ratio to vectortypes)");
    Data data;
    constexpr int rounds = 31;
    std::vector<double> times[std::size(rows)][2];
    for (int round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < std::size(rows); ++i) {
            if (rows[i].needs > cinder::simd::activeSet()) continue;
            times[i][0].push_back(nsPerSample([&] { data.arcTan(rows[i]); }));
            times[i][1].push_back(nsPerSample([&] { data.allpass(rows[i]); }));
        }
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        if (times[i][0].empty()) continue;
        const std::size_t first = i - i % 3;
        std::printf("%-12s %-10s", rows[i].layer, rows[i].set);
        for (int kernel = 0; kernel < 2; ++kernel) {
            std::vector<double> ratios;
            for (int round = 0; round < rounds; ++round)
                ratios.push_back(times[i][kernel][round] / times[first][kernel][round]);
            std::printf("  %9.4f  %5.2f", median(times[i][kernel]), median(ratios));
        }
        std::puts("");
    }
}

int runOnce(const std::string& kernel, const char* layer, const char* set) {
    Data data;
    for (const Row& row : rows)
        if (std::strcmp(row.layer, layer) == 0 && std::strcmp(row.set, set) == 0) {
            for (int i = 0; i < 1024; ++i)
                kernel == "arcTan" ? data.arcTan(row) : data.allpass(row);
            return 0;
        }
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 5 && std::strcmp(argv[1], "count") == 0) return runOnce(argv[2], argv[3], argv[4]);
    printTimes();
}
