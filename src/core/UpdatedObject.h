#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

#include "core/NotifyEvent.h"

namespace cinder {

/// Coalesces change notifications: between `beginUpdate` and `endUpdate` any number of requests
/// leads to one `update()` at the end of the outermost bracket.
/// State   not synchronised, belongs to one thread; brackets nest
class UpdatedObject {
public:
    /// The base class fires each deferred event that waits, with its argument.
    virtual void update();
    virtual ~UpdatedObject() = default;

    /// Updates now, or at the end of the open bracket. A request during an update is ignored.
    void requestUpdate();
    void beginUpdate() { ++updateDepth; }
    void endUpdate();

    /// Adds an event that `deferEvent` fires at the next update; answers with its index.
    std::size_t addDeferredEvent();
    NotifyEvent& deferredEvent(std::size_t index) { return deferredEvents[index].event; }
    void deferEvent(std::size_t index, NotifyEvent::Argument argument);

private:
    enum class State : std::int32_t { Idle = 0, Pending = 1, Updating = 2 };
    struct DeferredEvent {
        NotifyEvent event;
        bool pending = false;
        NotifyEvent::Argument argument = nullptr;
    };

    void runUpdate();

    std::deque<DeferredEvent> deferredEvents;  // an event stays where it is when others come
    State updateState = State::Idle;
    std::int32_t updateDepth = 0;
};

/// Opens a bracket for its own lifetime.
class UpdateBracket {
public:
    explicit UpdateBracket(UpdatedObject& object) : object(object) { object.beginUpdate(); }
    ~UpdateBracket() { object.endUpdate(); }
    UpdateBracket(const UpdateBracket&) = delete;
    UpdateBracket& operator=(const UpdateBracket&) = delete;

private:
    UpdatedObject& object;
};

}  // namespace cinder
