// The program of libFuzzer: --target=NAME, its own options, folders of inputs.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "fuzz/FuzzTarget.h"

namespace {

using cinder::test::FuzzTarget;

const FuzzTarget* target = nullptr;

/// libFuzzer keeps the input of a program that aborts.
void stop(const doctest::AssertData& failed) {
    std::fprintf(stderr, "%s:%d: %s does not hold: %s\n", failed.m_file, failed.m_line,
                 failed.m_expr, failed.m_decomp.c_str());
    std::abort();
}

void chooseTarget(std::string_view name) {
    const auto targets = cinder::test::fuzzTargets();
    const auto found = std::ranges::find(targets, name, &FuzzTarget::name);
    if (found != targets.end()) target = &*found;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* numArguments, char*** arguments) {
    static doctest::Context context;
    context.setAsDefaultForAssertsOutOfTestCases();
    context.setAssertHandler(stop);
    cinder::test::keepFilesInMemory();
    constexpr std::string_view option = "--target=";
    for (int i = 1; i < *numArguments; ++i) {
        const std::string_view argument = (*arguments)[i];
        if (argument.starts_with(option)) chooseTarget(argument.substr(option.size()));
    }
    if (target) return 0;
    std::fprintf(stderr, "--target=NAME is missing; the names:\n");
    for (const FuzzTarget& known : cinder::test::fuzzTargets())
        std::fprintf(stderr, "%s\n", known.name.data());
    std::exit(2);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t length) {
    target->run({reinterpret_cast<const char*>(bytes), length});
    return 0;
}
