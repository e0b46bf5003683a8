#include <doctest/doctest.h>

#include <cmath>

#include "distortion/drive/Smudger.h"
#include "modulation/sources/dynamics/SignalRig.h"
#include "support/Rng.h"

namespace cinder {
namespace {

using test::pullPieces;
using test::Rng;
using test::Signal;

/// The recipe in its plainest form; a drive in motion is read per piece, as in the stage.
class SlowSmudger {
public:
    SlowSmudger(double sampleRate, double rate)
        : sampleRate(sampleRate), rate(std::max(rate, 5.0)) {
        for (Grain& grain : grains)
            grain = Grain(static_cast<int>(sampleRate / this->rate));
    }
    std::vector<float> run(const std::vector<float>& in, const std::vector<float>& drives,
                           const std::vector<int>& pieces) {
        std::vector<float> out;
        for (std::size_t start = 0; const int length : pieces) {
            for (int done = 0; done < length;) {
                const auto now = start + static_cast<std::size_t>(done);
                const double d = static_cast<double>(drives[std::min(now, drives.size() - 1)]);
                const int period = static_cast<int>((0.25 / rate + d * d) * sampleRate);
                const int chunk = std::clamp(period - counter, 0, length - done);
                for (int i = 0; i < chunk; ++i, ++counter) {
                    const float x = in[now + static_cast<std::size_t>(i)];
                    const double a = grains[active].next(x), b = grains[1 - active].next(x);
                    const double w = static_cast<double>(counter) / period;
                    out.push_back(static_cast<float>(std::clamp((1.0 - w) * a + w * b, -1.0, 1.0)));
                }
                done += chunk;
                if (counter >= period) {
                    grains[active] = Grain(static_cast<int>(sampleRate / rate));
                    active = 1 - active;
                    counter = 0;
                    ++turns;
                }
            }
            start += static_cast<std::size_t>(length);
        }
        return out;
    }
    int turns = 0;

private:
    struct Grain {
        explicit Grain(int length = 0) : length(length) {}
        double next(float x) {
            if (static_cast<int>(buffer.size()) < length) buffer.push_back(x);
            const int half = length / 2, rest = length - half;
            double y = at(position);
            if (position >= half) {
                const int j = position - half;
                const double t = static_cast<double>(j) / rest;
                const double w = t > 0.1 ? std::pow(10.0, (t - 1.0) * 1.8) : t * 0.23988324;
                y = (1.0 - w) * y + w * at(j);
            }
            if (++position == length) position = rest;
            return y;
        }
        double at(int i) const { return static_cast<double>(buffer[static_cast<std::size_t>(i)]); }
        int length, position = 0;
        std::vector<float> buffer;
    };

    double sampleRate, rate;
    Grain grains[2];
    int active = 0, counter = 0;
};

struct SmudgerRig {
    SmudgerRig(float sampleRate, float rate, std::vector<float> samples, std::vector<float> drives)
        : input(&environment, std::move(samples)), drive(&environment, drives, drives.size() == 1) {
        smudger.rate = rate;
        environment.setSampleRate(sampleRate);
        smudger.reset();
        smudger.setInput(&input);
        smudger.drive.setSource(&drive);
    }
    wave::Environment environment;
    Signal input, drive;
    Smudger smudger{&environment};
};

TEST_CASE("Smudger: the recipe, to the rounding, at any rate and drive") {
    Rng rng = Rng::fromEnvironment();
    constexpr int total = 40000;
    const std::vector<float> samples = rng.noise(total, 1.2f);
    std::vector<float> sweep;
    for (int i = 0; i < total; ++i)
        sweep.push_back(0.3f + 0.3f * std::sin(static_cast<float>(i) * 0.003f));
    for (const auto& drives : {std::vector<float>{0.0f}, {0.4f}, sweep})
        for (const auto& [sampleRate, rate] : {std::pair{44100.0f, 11.0f},
                                               {44100.0f, 49.0f},
                                               {96000.0f, 1.0f},
                                               {48000.0f, 3000.0f},
                                               {8000.0f, 7.0f}}) {
            INFO("rate " << rate << " at " << sampleRate << ", drive " << drives[0] << " of "
                         << drives.size() << ", seed " << rng.seed());
            const std::vector<int> pieces = rng.pieces(total, 256);
            SlowSmudger twin(static_cast<double>(sampleRate), static_cast<double>(rate));
            SmudgerRig rig(sampleRate, rate, samples, drives);
            const auto expected = twin.run(samples, drives, pieces);
            const auto out = pullPieces(rig.environment, rig.smudger, pieces);
            float worst = 0.0f;
            for (std::size_t i = 0; i < out.size(); ++i)
                worst = std::max(worst, std::abs(out[i] - expected[i]));
            CHECK(worst < 1e-6f);
            CHECK(twin.turns > 0);
        }
}

TEST_CASE("Smudger: any cut of the block, a reset, and settings beyond all sense") {
    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    const std::vector<float> samples = rng.noise(20000);
    SmudgerRig whole(44100.0f, 11.0f, samples, {0.2f});
    SmudgerRig cut(44100.0f, 11.0f, samples, {0.2f});
    CHECK(pullPieces(whole.environment, whole.smudger, test::evenPieces(20000, 256)) ==
          pullPieces(cut.environment, cut.smudger, rng.pieces(20000, 100)));

    whole.smudger.reset();  // both grains start with what comes: the sound itself
    for (const float y : pullPieces(whole.environment, whole.smudger, {100}))
        REQUIRE(y == doctest::Approx(samples.back()).epsilon(1e-6));

    SmudgerRig broken(44100.0f, 11.0f, {NAN}, {0.0f});
    for (const float y : pullPieces(broken.environment, broken.smudger, {100}))
        REQUIRE(y == 0.0f);

    for (const float rate : {0.0f, -3.0f, 1e9f, NAN})
        for (const float sampleRate : {1.0f, 44100.0f}) {
            SmudgerRig rig(sampleRate, rate, samples, {5.0f, NAN, 0.0f, 1.0f, 0.0f});
            for (const float y : pullPieces(rig.environment, rig.smudger, rng.pieces(2000, 50)))
                REQUIRE(std::abs(y) <= 1.0f);
        }
}

}  // namespace
}  // namespace cinder
