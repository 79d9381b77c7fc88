#pragma once

#include <QtCore/QVariantMap>
#include <QtGui/QWindow>
#include <QtQml/QQmlApplicationEngine>

#include <functional>

/// The partition page of a host that takes everything and does nothing.
class BenchPage : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE bool doFunFromAI(int, QVariantMap) { return true; }
    Q_INVOKABLE bool isWin11CheckerEnable() { return false; }
    Q_INVOKABLE bool hasDiskSmartInfoError(int) { return false; }
};

/// Its main window; never shown.
class BenchWindow : public QWindow
{
    Q_OBJECT

public:
    Q_INVOKABLE QVariant closeGuide(QVariant) { return true; }
};

/// A host as small as can be: the two objects that an acting tool of the partition page speaks to.
/// Application thread.
class BenchHost
{
public:
    BenchHost();

    QQmlApplicationEngine engine;
    BenchPage page;
    BenchWindow window;
};

/// Runs @p work on a thread of its own while the calling thread, the application thread, serves its event
/// loop.
void besideTheEventLoop(const std::function<void()>& work);
