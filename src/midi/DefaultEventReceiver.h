#pragma once

#include <memory>

#include "midi/AbstractMusicEventReceiver.h"

namespace cinder {

/// Keeps one channel receiver in the slot that `channel` names: 0 to hear all channels, n for
/// channel n alone. A number out of range is clamped.
class DefaultEventReceiver final : public AbstractMusicEventReceiver, private PropertyOwner {
public:
    explicit DefaultEventReceiver(std::unique_ptr<AbstractChannelEventReceiver> receiver);

    AbstractChannelEventReceiver& getReceiver() const { return *receiver; }

    Property<int> channel{allChannels, this};

private:
    void propertyChanged(AbstractProperty* property) override;

    int currentSlot = allChannels;
    std::unique_ptr<AbstractChannelEventReceiver> receiver;
};

}  // namespace cinder
