#include "core/UpdatedObject.h"

#include <doctest/doctest.h>

#include <string>

#include "core/EventForwarderList.h"

namespace cinder {
namespace {

/// Writes down what it hears, and may answer by firing another event.
struct Listener {
    void heardA(NotifyEvent::Argument argument) { note('a', argument); }
    void heardB(NotifyEvent::Argument argument) { note('b', argument); }
    void note(char name, NotifyEvent::Argument argument) {
        log += name;
        if (argument) log += *static_cast<const char*>(argument);
        if (name == 'a' && answer) answer->fire(nullptr);
    }
    std::string log;
    NotifyEvent* answer = nullptr;
};

char one[] = "1";
char two[] = "2";

TEST_CASE("NotifyEvent: main handler first, the others from the last to the first") {
    Listener main, first, second;
    NotifyEvent event;
    std::string order;
    struct Named {
        void call(NotifyEvent::Argument) { *log += name; }
        std::string* log;
        char name;
    };
    Named m{&order, 'm'}, a{&order, 'a'}, b{&order, 'b'};
    event.addHandler(NotifyEvent::makeHandler(&a, &Named::call));
    event.addHandler(NotifyEvent::makeHandler(&b, &Named::call));
    event.setMainHandler(NotifyEvent::makeHandler(&m, &Named::call));
    event.fire(nullptr);
    CHECK(order == "mba");
    event.removeHandler(NotifyEvent::HandlerImpl<Named>(&b, &Named::call));
    event.fire(nullptr);
    CHECK(order == "mbama");
}

TEST_CASE("NotifyEvent: handlers equal in object and member function are one and the same") {
    Listener x, y;
    using Impl = NotifyEvent::HandlerImpl<Listener>;
    CHECK(Impl(&x, &Listener::heardA).equals(Impl(&x, &Listener::heardA)));
    CHECK_FALSE(Impl(&x, &Listener::heardA).equals(Impl(&y, &Listener::heardA)));
    CHECK_FALSE(Impl(&x, &Listener::heardA).equals(Impl(&x, &Listener::heardB)));
}

struct CountingUpdate final : UpdatedObject {
    void update() override {
        ++updates;
        if (updates < 5) requestUpdate();  // must be ignored: an update is running
        UpdatedObject::update();
    }
    int updates = 0;
};

TEST_CASE("UpdatedObject: one update per outermost bracket, none for a bracket without requests") {
    CountingUpdate object;
    object.requestUpdate();
    CHECK(object.updates == 1);
    {
        UpdateBracket outer(object);
        {
            UpdateBracket inner(object);
            object.requestUpdate();
        }
        object.requestUpdate();
        CHECK(object.updates == 1);
    }
    CHECK(object.updates == 2);
    { UpdateBracket idle(object); }
    CHECK(object.updates == 2);
}

TEST_CASE("UpdatedObject: a deferred event fires once a bracket, with its last argument") {
    UpdatedObject object;
    Listener listener;
    const std::size_t index = object.addDeferredEvent();
    object.deferredEvent(index).addHandler(NotifyEvent::makeHandler(&listener, &Listener::heardA));
    {
        UpdateBracket bracket(object);
        object.deferEvent(index, one);
        object.deferEvent(index, two);
        CHECK(listener.log.empty());
    }
    CHECK(listener.log == "a2");
    { UpdateBracket bracket(object); }
    CHECK(listener.log == "a2");
}

TEST_CASE("EventForwarderList: delivers in the order of firing, also what a handler fires itself") {
    EventForwarderList list;
    Listener listener;
    NotifyEvent a, b;
    list.forward(a, NotifyEvent::makeHandler(&listener, &Listener::heardA));
    list.forward(b, NotifyEvent::makeHandler(&listener, &Listener::heardB));
    {
        UpdateBracket bracket(list);
        b.fire(one);
        a.fire(one);
        b.fire(two);
        CHECK(listener.log.empty());
    }
    CHECK(listener.log == "b2a1");
    listener.log.clear();
    listener.answer = &b;
    a.fire(two);
    CHECK(listener.log == "a2b");
}

}  // namespace
}  // namespace cinder
