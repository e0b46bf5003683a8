#include <doctest/doctest.h>

#include <array>
#include <cstring>
#include <sstream>

#include "fuzz/FuzzTarget.h"
#include "midi/ControllerMapping.h"
#include "state/BinaryFile.h"

namespace cinder::test {

namespace {

using Table = std::array<std::int32_t, ControllerMapping::numControllers>;

Table tableOf(const ControllerMapping& mapping) {
    Table table{};
    for (int number = 0; number < ControllerMapping::numControllers; ++number)
        table[static_cast<std::size_t>(number)] = mapping.targetOf(number);
    return table;
}

struct Changes {
    void heard(NotifyEvent::Argument) { ++count; }
    int count = 0;
};

}  // namespace

void fuzzControllerMap(std::string_view bytes) {
    ControllerMapping mapping;
    mapping.set(7, 600);
    Table expected = tableOf(mapping);
    const Table before = expected;
    const bool isMap = bytes.starts_with("KNCM") && bytes.size() >= 8 + sizeof expected;
    if (isMap) std::memcpy(expected.data(), bytes.data() + 8, sizeof expected);

    Changes changes;
    mapping.changed().addHandler(NotifyEvent::makeHandler(&changes, &Changes::heard));
    BinaryResourceReader reader(bytes);
    CHECK(mapping.read(reader) == isMap);
    CHECK((tableOf(mapping) == expected));
    CHECK(changes.count == (expected != before));
    for (const std::int32_t target : expected)
        CHECK(mapping.targetOf(mapping.controllerOf(target)) == target);

    std::ostringstream written;
    BinaryDataWriter writer(written);
    CHECK(mapping.write(writer));
    if (isMap) CHECK(written.view().substr(8) == bytes.substr(8, sizeof expected));
}

}  // namespace cinder::test
