#include "midi/DefaultEventReceiver.h"

#include <algorithm>
#include <utility>

namespace cinder {

DefaultEventReceiver::DefaultEventReceiver(std::unique_ptr<AbstractChannelEventReceiver> receiver)
    : receiver(std::move(receiver)) {
    slot(currentSlot) = this->receiver.get();
}

void DefaultEventReceiver::propertyChanged(AbstractProperty*) {
    slot(currentSlot) = nullptr;
    currentSlot = std::clamp<int>(channel, allChannels, numSlots - 1);
    slot(currentSlot) = receiver.get();
}

}  // namespace cinder
