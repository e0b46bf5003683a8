#include "midi/ControllerMapping.h"

#include <string_view>

#include "state/BinaryData.h"

namespace cinder {

namespace {

constexpr std::string_view magic = "KNCM";
constexpr std::int32_t version = 1;

}  // namespace

ControllerMapping::ControllerMapping() : changeEvent(addDeferredEvent()) {
    for (auto& entry : targets)
        entry.store(none, std::memory_order_relaxed);
}

std::int32_t ControllerMapping::targetOf(int controller) const noexcept CINDER_REALTIME {
    if (!isController(controller)) return none;
    return targets[static_cast<std::size_t>(controller)].load(std::memory_order_relaxed);
}

int ControllerMapping::controllerOf(std::int32_t target) const noexcept CINDER_REALTIME {
    if (target == none) return none;
    for (int number = 0; number < numControllers; ++number)
        if (targetOf(number) == target) return number;
    return none;
}

void ControllerMapping::clear() {
    const UpdateBracket bracket(*this);
    for (int number = 0; number < numControllers; ++number)
        set(number, none);
}

void ControllerMapping::set(int controller, std::int32_t target) {
    if (!isController(controller) || targetOf(controller) == target) return;
    targets[static_cast<std::size_t>(controller)].store(target, std::memory_order_relaxed);
    deferEvent(changeEvent, this);
}

void ControllerMapping::assign(int controller, std::int32_t target) {
    if (controller != none && (!isController(controller) || targetOf(controller) == target)) return;
    const UpdateBracket bracket(*this);
    set(controllerOf(target), none);
    set(controller, target);
}

bool ControllerMapping::read(BinaryDataReader& reader) {
    if (reader.readHeader() != magic) return false;
    std::array<std::int32_t, numControllers> next{};
    for (std::int32_t& target : next)
        readValue(reader.getStream(), target);
    if (!reader.isGood()) return false;
    const UpdateBracket bracket(*this);
    for (int number = 0; number < numControllers; ++number)
        set(number, next[static_cast<std::size_t>(number)]);
    return true;
}

bool ControllerMapping::write(BinaryDataWriter& writer) const {
    writer.writeHeader(magic, version);
    for (int number = 0; number < numControllers; ++number)
        writeValue(writer.getStream(), targetOf(number));
    return writer.isGood();
}

}  // namespace cinder
