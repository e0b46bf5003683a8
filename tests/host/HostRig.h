#pragma once

#include <doctest/doctest.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "host/DirectPluginAdapter.h"
#include "params/AbstractPluginParameter.h"
#include "state/MemoryStream.h"
#include "support/ParameterValues.h"
#include "support/PluginHome.h"
#include "support/RealtimeGuard.h"

namespace cinder::test {

/// An instance in a home of its own, played in stereo, every block under the guard.
struct HostRig {
    static constexpr int blockSize = 256;

    HostRig() { host.setSampleRate(48000.0f); }

    /// A block of a constant; what comes out on the left.
    std::vector<float> play(float level = 0.5f) {
        std::vector<float> in(blockSize, level);
        std::array<std::vector<float>, 2> out{in, in};
        const std::array<const float*, 2> inputs{in.data(), in.data()};
        const std::array<float*, 2> outputs{out[0].data(), out[1].data()};
        const RealtimeReport report =
            guarded([&] { host.process(inputs.data(), 2, outputs.data(), 2, blockSize); });
        CHECK_MESSAGE(report.isClean(), report);
        return out[0];
    }
    void send(int status, int data1, int data2 = 0) {
        host.getProcessor().enqueueMidiEvent({static_cast<std::uint8_t>(status),
                                              static_cast<std::uint8_t>(data1),
                                              static_cast<std::uint8_t>(data2), 0});
    }
    bool halvesAgree() const { return valuesOf(host.getPlugin()) == valuesOf(host.getProcessor()); }

    std::string state() const {
        std::ostringstream out;
        REQUIRE(host.writeState(out));
        return std::move(out).str();
    }
    bool read(const std::string& bytes) {
        MemoryStream in(bytes);
        return host.readState(in);
    }
    template <typename Row>
    int idOf(Row row) const {
        return host.getPlugin()[row].getId();
    }

    PluginHome home;
    DirectPluginAdapter host{stereoLayout, 1};
};

}  // namespace cinder::test
