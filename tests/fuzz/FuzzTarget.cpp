#include "fuzz/FuzzTarget.h"

#include <stdlib.h>
#include <unistd.h>

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

void keepFilesInMemory() {
    constexpr const char* inMemory = "/dev/shm";
    constexpr int onlyIfMissing = 0;
    if (::access(inMemory, W_OK | X_OK) == 0) ::setenv("TMPDIR", inMemory, onlyIfMissing);
}

}  // namespace cinder::test
