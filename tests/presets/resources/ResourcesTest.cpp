#include "presets/resources/Resources.h"

#include <doctest/doctest.h>

namespace cinder::test {

TEST_CASE("Resources: what is not there says so") {
    for (const char* name : {"", ".", "NOSUCHTHING", "nosuchthing.bin"}) {
        CHECK_FALSE(resourceExists(name));
        CHECK_THROWS_WITH_AS(openResource(name), "Resource not found", EResource);
    }
}

}  // namespace cinder::test
