#include "core/UpdatedObject.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

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

/// Takes handlers out of an event, and puts one in, while the event is being fired.
struct Remover {
    using Impl = NotifyEvent::HandlerImpl<Remover>;
    void call(NotifyEvent::Argument) {
        *log += name;
        for (Remover* victim : victims)
            event->removeHandler(Impl(victim, &Remover::call));
        if (newcomer) event->addHandler(std::make_unique<Impl>(newcomer, &Remover::call));
        newcomer = nullptr;
    }
    char name;
    NotifyEvent* event;
    std::string* log;
    std::vector<Remover*> victims = {};
    Remover* newcomer = nullptr;
};

TEST_CASE(
    "NotifyEvent: handlers that come and go while it is fired are called once or not at all") {
    struct Case {
        char remover;         // who removes while the event is fired the first time
        std::string victims;  // whom
        std::string first;    // calls of that time
        std::string second;   // and of the next one
    };
    for (const Case& c : {Case{'c', "c", "dcba", "dba"},
                          {'c', "a", "dcb", "dcb"},
                          {'c', "b", "dca", "dca"},
                          {'c', "d", "dcba", "cba"},
                          {'c', "ab", "dc", "dc"},
                          {'d', "abcd", "d", ""},
                          {'a', "dcb", "dcba", "a"}}) {
        INFO(std::string(1, c.remover) << " removes " << c.victims);
        NotifyEvent event;
        std::string log;
        std::vector<Remover> handlers;
        for (char name : {'a', 'b', 'c', 'd'})
            handlers.push_back({name, &event, &log});
        for (Remover& handler : handlers)
            event.addHandler(NotifyEvent::makeHandler(&handler, &Remover::call));
        for (char victim : c.victims)
            handlers[c.remover - 'a'].victims.push_back(&handlers[victim - 'a']);
        event.fire(nullptr);
        CHECK(log == c.first);
        log.clear();
        event.fire(nullptr);
        CHECK(log == c.second);
    }
}

TEST_CASE("NotifyEvent: a handler that is added while it is fired waits for the next time") {
    NotifyEvent event;
    std::string log;
    Remover newcomer{'n', &event, &log}, host{'h', &event, &log, {}, &newcomer};
    event.addHandler(NotifyEvent::makeHandler(&host, &Remover::call));
    event.fire(nullptr);
    CHECK(log == "h");
    event.fire(nullptr);
    CHECK(log == "hnh");
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

/// Answers an event inside a bracket of its own, as a handler does that changes several things.
struct BracketingListener {
    void heard(NotifyEvent::Argument) {
        ++calls;
        if (calls > 10) return;  // instead of a stack overflow
        UpdateBracket bracket(*object);
        if (answer) answer->fire(nullptr);
        object->requestUpdate();
    }
    UpdatedObject* object;
    NotifyEvent* answer = nullptr;
    int calls = 0;
};

TEST_CASE("UpdatedObject: a handler's own bracket does not call that handler again") {
    UpdatedObject object;
    BracketingListener listener{&object};
    const std::size_t index = object.addDeferredEvent();
    object.deferredEvent(index).addHandler(
        NotifyEvent::makeHandler(&listener, &BracketingListener::heard));
    object.deferEvent(index, nullptr);
    CHECK(listener.calls == 1);
}

TEST_CASE("EventForwarderList: a handler's own bracket delivers what it fired, and nothing twice") {
    EventForwarderList list;
    NotifyEvent a, b;
    Listener listener;
    BracketingListener bracketing{&list, &b};
    list.forward(a, NotifyEvent::makeHandler(&bracketing, &BracketingListener::heard));
    list.forward(b, NotifyEvent::makeHandler(&listener, &Listener::heardB));
    a.fire(nullptr);
    CHECK(bracketing.calls == 1);
    CHECK(listener.log == "b");
    a.fire(nullptr);
    CHECK(bracketing.calls == 2);
    CHECK(listener.log == "bb");
}

TEST_CASE("UpdatedObject: an event keeps its place when others are added, even by its handler") {
    struct Adder {
        void heard(NotifyEvent::Argument) {
            for (int i = 0; i < 100; ++i)
                object->addDeferredEvent();
            ++calls;
        }
        UpdatedObject* object;
        int calls = 0;
    };
    UpdatedObject object;
    Adder adder{&object};
    const std::size_t index = object.addDeferredEvent();
    NotifyEvent& event = object.deferredEvent(index);
    for (int i = 0; i < 2; ++i)
        event.addHandler(NotifyEvent::makeHandler(&adder, &Adder::heard));
    object.deferEvent(index, nullptr);
    CHECK(&object.deferredEvent(index) == &event);
    CHECK(adder.calls == 2);
}

}  // namespace
}  // namespace cinder
