#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace cinder {

/// An event with one main handler and any number of further ones.
/// State   handlers, owned; adding and removing allocates, firing does not
/// Errors  none; a handler may remove itself or others while the event is being fired
class NotifyEvent {
public:
    /// Whatever the sender of an event wants to hand over; each event says what it is.
    using Argument = void*;

    class Handler {
    public:
        virtual ~Handler() = default;
        virtual void call(Argument argument) = 0;
        virtual bool equals(const Handler& other) const = 0;
    };

    /// Calls a member function of an object it does not own.
    template <typename T>
    class HandlerImpl final : public Handler {
    public:
        using Method = void (T::*)(Argument);

        HandlerImpl(T* object, Method method) : object(object), method(method) {}

        void call(Argument argument) override { (object->*method)(argument); }
        bool equals(const Handler& other) const override {
            const auto* same = dynamic_cast<const HandlerImpl*>(&other);
            return same && same->object == object && same->method == method;
        }

    private:
        T* object;
        Method method;
    };

    template <typename T>
    static std::unique_ptr<Handler> makeHandler(T* object, void (T::*method)(Argument)) {
        return std::make_unique<HandlerImpl<T>>(object, method);
    }

    void setMainHandler(std::unique_ptr<Handler> handler) { mainHandler = std::move(handler); }
    /// While the event is being fired, the new handler waits for the next time.
    void addHandler(std::unique_ptr<Handler> handler) { handlers.push_back({std::move(handler)}); }

    /// Removes every further handler that equals the given one.
    void removeHandler(const Handler& handler) {
        for (FurtherHandler& own : handlers)
            own.isRemoved = own.isRemoved || own.handler->equals(handler);
        if (firingDepth == 0) dropRemoved();
    }

    /// The main handler first, then the further ones from the last to the first.
    void fire(Argument argument) {
        ++firingDepth;
        std::size_t i = handlers.size();  // before the main handler, which may add some
        if (mainHandler) mainHandler->call(argument);
        while (i-- > 0)
            if (!handlers[i].isRemoved) handlers[i].handler->call(argument);
        if (--firingDepth == 0) dropRemoved();
    }

private:
    /// A handler that is removed while the event is being fired keeps its place until the end: the
    /// others keep theirs, and it may be the one that is running.
    struct FurtherHandler {
        std::unique_ptr<Handler> handler;
        bool isRemoved = false;
    };

    void dropRemoved() {
        std::erase_if(handlers, [](const FurtherHandler& own) { return own.isRemoved; });
    }

    std::unique_ptr<Handler> mainHandler;
    std::vector<FurtherHandler> handlers;
    int firingDepth = 0;
};

}  // namespace cinder
