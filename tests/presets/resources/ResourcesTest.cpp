#include "presets/resources/Resources.h"

#include "presets/format/PresetMap.h"
#include "state/BinaryFile.h"

#include <doctest/doctest.h>

#include <iterator>
#include <string>

namespace cinder::test {

TEST_CASE("Resources: found in any case, with an ending or without, and whole") {
    for (const int version : {1, 2, 3}) {
        const std::string number = std::to_string(version);
        CHECK(resourceExists("PRESETMAP_KCND_" + number));
        const auto stream = openResource("PresetMap_KCnd_" + number + ".knpresetmap");
        const std::string bytes{std::istreambuf_iterator<char>(*stream), {}};
        CHECK(bytes == resourceBytes("presetmap_kcnd_" + number));
        BinaryResourceReader reader(bytes);
        CHECK(readPresetMap(reader) == presetMapOf(version));
        CHECK(reader.getStream().tellg() == 3636);
    }
}

TEST_CASE("Resources: what is not there says so") {
    for (const char* name :
         {"", ".", "PRESETMAP_KCND_", "PRESETMAP_KCND_4", "presetmap_kcnd_1.a.b"}) {
        INFO(name);
        CHECK_FALSE(resourceExists(name));
        CHECK_THROWS_WITH_AS(openResource(name), "Resource not found", EResource);
    }
}

}  // namespace cinder::test
