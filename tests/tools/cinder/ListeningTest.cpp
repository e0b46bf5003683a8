#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"
#include "tools/cinder/Program.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace cinder::test {

TEST_CASE("Listening: every file of settings renders, and is heard") {
    const TemporaryFolder folder;
    const auto in = (folder / "in.wav").string(), out = (folder / "out.wav").string();
    Rng rng(1);
    writeFile(in, {rng.noise(24000, 0.3f), rng.noise(24000, 0.3f)}, 48000);
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(CINDER_LISTENING_FOLDER)) {
        INFO(entry.path().string());
        const Program::Outcome outcome =
            Program::run({"render", in, out, "--params", entry.path().string()});
        CHECK(outcome.err.empty());
        REQUIRE(outcome.status == 0);
        CHECK(outcome.out.find("no sample") != std::string::npos);  // none clipped
        const Audio rendered = readFile(out);
        const auto louder = [](float a, float b) { return std::abs(a) < std::abs(b); };
        const float peak =
            std::abs(*std::max_element(rendered[0].begin(), rendered[0].end(), louder));
        CHECK(peak > 0.05f);
        ++files;
    }
    CHECK(files == 10);
}

}  // namespace cinder::test
