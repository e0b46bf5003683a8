#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "fuzz/FuzzTarget.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {
namespace {

namespace fs = std::filesystem;

/// At most this many of the truncations and flips of one input: a large one would take all day.
constexpr std::size_t maxVariants = 100;

TEST_CASE("Fuzz: what was found once is read well, whole, cut short and with a byte flipped") {
    keepFilesInMemory();
    for (const FuzzTarget& target : fuzzTargets()) {
        int numInputs = 0;
        for (const auto& entry :
             fs::directory_iterator(fs::path(CINDER_FUZZ_CORPUS) / target.name)) {
            INFO(entry.path());
            const std::string bytes = bytesOf(entry.path());
            target.run(bytes);
            const std::size_t step = 1 + bytes.size() / maxVariants;
            for (std::size_t at = 0; at < bytes.size(); at += step) {
                INFO("at " << at);
                target.run(std::string_view(bytes).substr(0, at));
                std::string flipped = bytes;
                flipped[at] = static_cast<char>(flipped[at] ^ (1 << at % 8));
                target.run(flipped);
            }
            ++numInputs;
        }
        INFO(target.name);
        CHECK(numInputs > 0);
    }
}

}  // namespace
}  // namespace cinder::test
