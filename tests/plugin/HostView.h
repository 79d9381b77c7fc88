#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

class QQmlApplicationEngine;

/// A component as a host's headers declare it: fourteen virtual functions after those of QObject. Declared
/// independently of the library's header, so that reordering that header fails a test.
class HostView : public QObject
{
public:
    virtual QString slot1() const = 0;
    virtual QString slot2() const = 0;
    virtual QString slot3() const = 0;
    virtual QString slot4() const = 0;
    virtual QString slot5() const = 0;
    virtual void slot6() = 0;
    virtual bool slot7() const = 0;
    virtual QVariantList slot8() const = 0;
    virtual void slot9(QString resourceName) = 0;
    virtual void slot10(QQmlApplicationEngine* engine) = 0;
    virtual QQmlApplicationEngine* slot11() const = 0;
    virtual QVariantMap slot12() const = 0;
    virtual void slot13() = 0;
    virtual void slot14() = 0;
};

struct GetterResults
{
    QString displayName;
    QString icon;
    QString name;
    QString reservedText;
    QString source;
    bool canLayout = false;
    QVariantList reservedList;
    QQmlApplicationEngine* engine = nullptr;
    QVariantMap resProperty;
};

HostView* hostView(QObject* component);
GetterResults callGetters(const HostView* view);
void callInit(HostView* view);
void callLoadResource(HostView* view, const QString& name);
void callSetEngine(HostView* view, QQmlApplicationEngine* engine);
void callRelease(HostView* view);
void callRetranslate(HostView* view);
