#include "core/UpdatedObject.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "core/EventForwarderList.h"

namespace cinder {
namespace {

/// Writes down what it hears, and may answer an A by firing another event inside a bracket of its
/// own, as a handler does that changes several things.
struct Listener {
    void heardA(NotifyEvent::Argument argument) {
        note('a', argument);
        if (!answer || log.size() > 20) return;  // instead of a stack overflow
        UpdateBracket bracket(*object);
        answer->fire(nullptr);
        object->requestUpdate();
    }
    void heardB(NotifyEvent::Argument argument) { note('b', argument); }
    void note(char name, NotifyEvent::Argument argument) {
        log += name;
        if (argument) log += *static_cast<const char*>(argument);
    }
    std::string log;
    UpdatedObject* object = nullptr;
    NotifyEvent* answer = nullptr;
};

char one[] = "1";
char two[] = "2";

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
    void otherCall(NotifyEvent::Argument) {}
    char name;
    NotifyEvent* event;
    std::string* log;
    std::vector<Remover*> victims = {};
    Remover* newcomer = nullptr;
};

TEST_CASE("NotifyEvent: the main handler, then from last to first whoever is still there") {
    struct Case {
        char remover;         // who removes while the event is fired the first time
        std::string victims;  // whom
        std::string first;    // calls of that time
        std::string second;   // and of the next one
    };
    for (const Case& c : {Case{'c', "c", "mdcba", "mndba"},
                          {'c', "a", "mdcb", "mndcb"},
                          {'c', "d", "mdcba", "mncba"},
                          {'d', "abcd", "md", "mn"},
                          {'m', "b", "mdca", "mndca"}}) {
        INFO(std::string(1, c.remover) << " removes " << c.victims);
        NotifyEvent event;
        std::string log;
        std::vector<Remover> handlers;
        for (char name : {'a', 'b', 'c', 'd', 'm', 'n'})
            handlers.push_back({name, &event, &log});
        for (int i = 0; i < 4; ++i)
            event.addHandler(NotifyEvent::makeHandler(&handlers[i], &Remover::call));
        event.setMainHandler(NotifyEvent::makeHandler(&handlers[4], &Remover::call));
        event.removeHandler(Remover::Impl(&handlers[0], &Remover::otherCall));  // is not there
        Remover& remover = handlers[c.remover == 'm' ? 4 : c.remover - 'a'];
        for (char victim : c.victims)
            remover.victims.push_back(&handlers[victim - 'a']);
        remover.newcomer = &handlers[5];  // waits for the next time
        for (const std::string& expected : {c.first, c.second}) {
            log.clear();
            event.fire(nullptr);
            CHECK(log == expected);
        }
    }
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
    struct Adder {
        void heard(NotifyEvent::Argument) {
            if (++calls > 10) return;  // instead of a stack overflow
            UpdateBracket bracket(*object);
            for (int i = 0; i < 100; ++i)
                object->addDeferredEvent();
            object->requestUpdate();
        }
        UpdatedObject* object;
        int calls = 0;
    };
    UpdatedObject object;
    Listener listener;
    Adder adder{&object};
    const std::size_t index = object.addDeferredEvent();
    NotifyEvent& event = object.deferredEvent(index);
    event.addHandler(NotifyEvent::makeHandler(&listener, &Listener::heardA));
    event.addHandler(NotifyEvent::makeHandler(&adder, &Adder::heard));
    {
        UpdateBracket bracket(object);
        object.deferEvent(index, one);
        object.deferEvent(index, two);
        CHECK(listener.log.empty());
    }
    CHECK(listener.log == "a2");
    { UpdateBracket bracket(object); }
    CHECK(listener.log == "a2");
    CHECK(adder.calls == 1);                        // its own bracket does not call it again
    CHECK(&object.deferredEvent(index) == &event);  // whatever its handlers have added
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
    listener.object = &list;
    listener.answer = &b;
    a.fire(two);
    a.fire(nullptr);
    CHECK(listener.log == "b2a1a2bab");  // and nothing twice
}

}  // namespace
}  // namespace cinder
