#include "tests/plugin/HostView.h"

// The objects are not of this class: the calls rely only on positions in the virtual table. A separate
// translation unit keeps the compiler from deducing the real class.
#define HOST_VIEW_CALL __attribute__((no_sanitize("vptr")))

HostView* hostView(QObject* component)
{
    return reinterpret_cast<HostView*>(component);
}

HOST_VIEW_CALL GetterResults callGetters(const HostView* view)
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
