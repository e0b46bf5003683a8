#include "fuzz/FuzzTarget.h"

namespace cinder::test {

std::span<const FuzzTarget> fuzzTargets() {
    static constexpr FuzzTarget targets[] = {
        {"archive", fuzzArchive},
        {"controller_map", fuzzControllerMap},
        {"preset", fuzzPreset},
        {"preset_map", fuzzPresetMap},
        {"preset_text", fuzzPresetText},
        {"settings", fuzzSettings},
        {"state", fuzzState},
    };
    return targets;
}

}  // namespace cinder::test
