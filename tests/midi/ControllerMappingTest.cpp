#include "midi/ControllerMapping.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "midi/ControllerMapFile.h"
#include "state/BinaryFile.h"
#include "support/Hex.h"
#include "support/Rng.h"
#include "support/TemporaryFolder.h"

namespace cinder {
namespace {

struct Changes {
    explicit Changes(ControllerMapping& mapping) {
        mapping.changed().addHandler(NotifyEvent::makeHandler(this, &Changes::heard));
    }
    void heard(NotifyEvent::Argument) { ++count; }
    int count = 0;
};

TEST_CASE("ControllerMapping: a table with one event for each bracket that changes it") {
    test::Rng rng = test::Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    constexpr int none = ControllerMapping::none;
    ControllerMapping mapping;
    Changes changes(mapping);
    std::map<int, int> model;  // the entries that are not `none`
    int numChanges = 0;
    for (int i = 0; i < 3000; ++i) {
        const int number = rng.integer(0, 9) == 0 ? 1 << 30 : rng.integer(-3, 130);
        const int target = rng.integer(none, 20);
        const auto before = model;
        const bool learns = rng.integer(0, 3) > 0;
        const bool isValid = number >= 0 && number < ControllerMapping::numControllers;
        const auto holder = [&] {
            return std::ranges::find_if(model, [&](auto entry) { return entry.second == target; });
        };
        const bool isThere = model.contains(number) && model[number] == target;
        if (learns && !isThere && (isValid || number == none) && holder() != model.end())
            model.erase(holder());
        if (isValid) model.erase(number);
        if (isValid && target != none) model[number] = target;
        if (i % 500 == 499) {
            model.clear();
            mapping.clear();
        } else {
            learns ? mapping.assign(number, target) : mapping.set(number, target);
        }
        numChanges += model != before;
        REQUIRE(changes.count == numChanges);
        for (int n = -2; n < 130; ++n)
            REQUIRE(mapping.targetOf(n) == (model.contains(n) ? model[n] : none));
        REQUIRE(mapping.controllerOf(target) == (holder() == model.end() ? none : holder()->first));
    }
}

std::string mapBytes() {
    std::string bytes = test::fromHex("4b 4e 43 4d [KNCM] 01 00 00 00 [version]");
    for (int number = 0; number < 128; ++number)
        bytes += test::fromHex(number == 1    ? "8b 02 00 00 [651]"
                               : number == 74 ? "00 00 00 00 [0]"
                                              : "ff ff ff ff");
    return bytes;
}

TEST_CASE("ControllerMapping: the file's bytes are fixed, and all of them count") {
    const test::TemporaryFolder folder;
    const auto path = folder / "made/on the way/" / controllerMapFileName;
    ControllerMapping written, mapping;
    CHECK(!readControllerMapFile(path, mapping));
    written.set(1, 651);
    written.set(74, 0);
    REQUIRE(writeControllerMapFile(path, written));
    const std::string bytes = test::bytesOf(path);
    REQUIRE(bytes == mapBytes());
    REQUIRE(bytes.size() == 520);

    mapping.set(2, 5);
    Changes changes(mapping);
    const auto targets = [](const ControllerMapping& map) {
        std::vector<int> all;
        for (int number = 0; number < ControllerMapping::numControllers; ++number)
            all.push_back(map.targetOf(number));
        return all;
    };
    const auto before = targets(mapping);
    const auto read = [&](std::string_view from) {
        BinaryResourceReader reader(from);
        return mapping.read(reader);
    };
    for (std::size_t length = 0; length < bytes.size(); ++length)
        CHECK(!read(std::string_view(bytes).substr(0, length)));
    CHECK(targets(mapping) == before);
    CHECK(changes.count == 0);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        std::string flipped = bytes;
        flipped[at] = static_cast<char>(flipped[at] ^ 0x81);
        CHECK(read(flipped) == (at >= 4));
        auto expected = targets(written);
        if (at >= 8) expected[(at - 8) / 4] ^= static_cast<int>(0x81u << (at % 4 * 8));
        if (at >= 4) CHECK(targets(mapping) == expected);
    }
    CHECK(readControllerMapFile(path, mapping));
    CHECK(targets(mapping) == targets(written));
    const int count = changes.count;
    CHECK(readControllerMapFile(path, mapping));
    CHECK(changes.count == count);

    test::putBytes(path, std::string(520, 'x') + "tail");
    CHECK(writeControllerMapFile(path, written));
    CHECK(test::bytesOf(path) == bytes + "tail");
}

}  // namespace
}  // namespace cinder
