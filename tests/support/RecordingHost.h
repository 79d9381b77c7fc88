#pragma once

#include "bridge/AIBridge.h"
#include "tests/support/FakeObject.h"

#include <QtQml/QQmlApplicationEngine>

#include <map>
#include <memory>

/// A configurable host with every object of the real one under its real name. Objects and members can be
/// removed before build(). It accepts every question, is neither busy nor covered, and records each call.
///
///     RecordingHost host;
///     host.spec("partitionmanager").answer("doFunFromAI", false);
///     host.build();
///     CZorHandle tools; tools.setBridge(host.toolBridge());
class RecordingHost
{
public:
    RecordingHost();
    ~RecordingHost();

    /// The description of an object: a context property, "__zormain", "window" or "__qml_executer".
    FakeSpec& spec(const QString& object);
    /// Omits the object. Without "window", its child is omitted too.
    RecordingHost& without(const QString& object);
    /// Makes the objects, the engine and the bridge. Application thread, once.
    void build();
    /// Like build(), but the bridge has no engine.
    void buildWithoutEngine();

    Recorder& recorder() { return recorder_; }
    AIBridge* bridge() { return bridge_.get(); }
    /// The parts of the bridge; null before build().
    const ToolBridge* toolBridge();
    const HostPages* pages();
    QQmlApplicationEngine* engine() { return engine_.get(); }
    /// A built object other than the window; null if it was left out.
    FakeObject* object(const QString& name);
    FakeWindow* window() { return window_.get(); }

    static QStringList contextObjects();

private:
    void buildObjects();

    Recorder recorder_;
    std::map<QString, FakeSpec> specs_;
    std::map<QString, std::unique_ptr<FakeObject>> contextObjects_;
    FakeObject* main_ = nullptr;
    FakeObject* executer_ = nullptr;
    std::unique_ptr<FakeWindow> window_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    std::unique_ptr<AIBridge> bridge_;
};
