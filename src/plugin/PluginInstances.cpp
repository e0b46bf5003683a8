// Names and numbers by which instances are told apart.
#include <algorithm>
#include <limits>

#include "plugin/GenericPlugin.h"

namespace cinder {

std::string GenericPlugin::getInstanceName() const {
    const ScopedLock inside(instanceLock());
    return instanceName;
}

std::int32_t GenericPlugin::getInstanceNumber() const {
    const ScopedLock inside(instanceLock());
    return instanceNumber;
}

/// A number that another instance holds stays with that one: a copied track brings it a second
/// time.
void GenericPlugin::takeInstanceNumber(std::int32_t number) {
    if (number == instanceNumber || number == -1) return;
    const bool isTaken = std::ranges::any_of(instances, [&](const GenericPlugin* other) {
        return other != this && other->instanceNumber == number;
    });
    if (isTaken) return;
    instanceNumber = number;
    const std::int32_t next =
        number == std::numeric_limits<std::int32_t>::max() ? number : number + 1;
    shared->nextInstanceNumber = std::max(shared->nextInstanceNumber, next);
}

void GenericPlugin::setTrackName(const std::string& name) {
    const ScopedLock inside(instanceLock());
    trackName = name;
    if (autoInstanceName) updateInstanceName("");
}

void GenericPlugin::updateInstanceName(const std::string& name) {
    if (!(features & isNamedAfterTrack)) return;
    const ScopedLock inside(instanceLock());
    if (!autoInstanceName && name.empty()) return;
    const std::string newName = autoInstanceName ? freeInstanceName() : name;
    if (newName == instanceName) return;
    instanceName = newName;
    notify(instanceNameNotification, 0);
}

bool GenericPlugin::isNameFree(const std::string& name) const {
    return std::ranges::none_of(instances, [&](const GenericPlugin* other) {
        return other != this && other->instanceName == name;
    });
}

std::string GenericPlugin::freeInstanceName() const {
    const std::string base = trackName.empty() ? shared->version.productName : trackName;
    std::string candidate = base;
    for (int number = 2; !isNameFree(candidate); ++number)
        candidate = base + " (" + std::to_string(number) + ")";
    return candidate;
}

}  // namespace cinder
