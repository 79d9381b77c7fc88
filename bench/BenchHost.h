#pragma once

#include <QtCore/QVariantMap>
#include <QtGui/QWindow>
#include <QtQml/QQmlApplicationEngine>

#include <functional>

/// A partition page that accepts every call and has no effect.
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

/// A minimal host: the two objects that an acting tool of the partition page calls. Application thread only.
class BenchHost
{
public:
    BenchHost();

    QQmlApplicationEngine engine;
    BenchPage page;
    BenchWindow window;
};

/// Runs @p work on another thread while the calling thread, the application thread, runs its event loop.
void besideTheEventLoop(const std::function<void()>& work);
