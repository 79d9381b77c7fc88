#include "tests/plugin/HostView.h"

// The objects behind the pointers are not of this class, which is the point of it: a host knows the places in
// the virtual table and nothing else. In a file of its own, so that the compiler knows no more either.
#define HOST_VIEW_CALL __attribute__((no_sanitize("vptr")))

HostView* hostView(QObject* component)
{
    return reinterpret_cast<HostView*>(component);
}

HOST_VIEW_CALL HostAnswers callGetters(const HostView* view)
{
    return {view->slot1(), view->slot2(), view->slot3(),  view->slot4(), view->slot5(),
            view->slot7(), view->slot8(), view->slot11(), view->slot12()};
}

HOST_VIEW_CALL void callInit(HostView* view)
{
    view->slot6();
}

HOST_VIEW_CALL void callLoadResource(HostView* view, const QString& name)
{
    view->slot9(name);
}

HOST_VIEW_CALL void callSetEngine(HostView* view, QQmlApplicationEngine* engine)
{
    view->slot10(engine);
}

HOST_VIEW_CALL void callRelease(HostView* view)
{
    view->slot13();
}

HOST_VIEW_CALL void callRetranslate(HostView* view)
{
    view->slot14();
}
