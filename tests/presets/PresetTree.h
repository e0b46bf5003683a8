#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "presets/PresetManager.h"
#include "support/TemporaryFolder.h"

namespace cinder::test {

/// A tree of empty files for one test.
class PresetTree {
public:
    /// Names below the root, with "/"; one that ends in "/" is a folder.
    void add(const std::vector<std::string>& names) const;
    /// As the system has it inside, with its backslash.
    std::string root() const;

    TemporaryFolder folder;
};

/// A timer by which every look at it takes a while, and nothing else does.
class SlowTimer final : public IntervalTimer {
public:
    explicit SlowTimer(std::uint32_t& clockMs, std::uint32_t msPerLook)
        : clockMs(clockMs), msPerLook(msPerLook), startMs(clockMs) {}

    static PresetFolder::TimerFactory factory(std::uint32_t& clockMs, std::uint32_t msPerLook) {
        return [&clockMs, msPerLook] { return std::make_unique<SlowTimer>(clockMs, msPerLook); };
    }

    void reset() override { startMs = clockMs; }
    std::uint32_t elapsed() const override { return (clockMs += msPerLook) - startMs; }

private:
    std::uint32_t& clockMs;
    std::uint32_t msPerLook;
    std::uint32_t startMs;
};

/// For trees that a slow machine must not cut short.
PresetFolder::TimerFactory noTime();

std::vector<std::string> namesOf(const PresetManager& manager);
std::size_t numFoldersIn(const PresetFolder& folder);

}  // namespace cinder::test
