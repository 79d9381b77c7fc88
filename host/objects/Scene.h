#pragma once

#include "host/objects/Assistance.h"
#include "host/objects/BridgeLink.h"
#include "host/objects/CallHistory.h"
#include "host/objects/DiskFilter.h"
#include "host/objects/DiskModel.h"
#include "host/objects/HostCore.h"
#include "host/objects/LogView.h"
#include "host/objects/MultiLanguage.h"
#include "host/objects/ProgramInfo.h"
#include "host/objects/Theme.h"

#include <QtQml/QQmlApplicationEngine>

namespace host {

class HostWindow;

/// Every object that the library looks for, under its name: the pages as context properties, the window and
/// its two items. Application thread.
class Scene
{
public:
    /// @p automaticAnswer: see BridgeLink. @p language: one of MultiLanguage::languages(). Creates the window
    /// without showing it.
    Scene(std::unique_ptr<Backend> backend, int automaticAnswer, ThemeMode theme = ThemeMode::System,
          const QString& language = QStringLiteral("en"));

    HostCore& core() { return core_; }
    BridgeLink& link() { return link_; }
    MultiLanguage& language() { return language_; }
    Theme& theme() { return theme_; }
    DiskModel& disks() { return disks_; }
    QQmlApplicationEngine& engine() { return engine_; }
    /// Null if the QML files could not be loaded.
    HostWindow* window() { return window_; }

private:
    void connectWindow();
    void showPending();
    void retranslate();

    MultiLanguage language_; // before all objects with translated strings
    HostCore core_;
    DiskModel disks_;
    DiskFilter shownDisks_;
    ProgramInfo program_;
    Theme theme_;
    Assistance assistance_;
    BridgeLink link_;
    CallHistory history_{link_.timeline()};
    LogView logView_{*core_.log()};
    QQmlApplicationEngine engine_;
    HostWindow* window_ = nullptr;
};

} // namespace host
