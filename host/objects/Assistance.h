#pragma once

#include <QtCore/QObject>
#include <QtGui/QAccessible>

namespace host {

/// For the QML files as `assistance`: whether a program such as a screen reader reads the window. Lists then
/// create their rows outside the visible part as well, because a screen reader finds only existing rows.
/// Application thread.
class Assistance : public QObject, private QAccessible::ActivationObserver
{
    Q_OBJECT
    Q_PROPERTY(bool active READ isActive NOTIFY activeChanged)
    Q_PROPERTY(int extraHeight READ extraHeight NOTIFY activeChanged)

public:
    Assistance();
    ~Assistance() override;

    bool isActive() const { return active_; }
    /// Pixels above and below the visible part of a list in which its rows exist.
    int extraHeight() const;

Q_SIGNALS:
    void activeChanged();

private:
    void accessibilityActiveChanged(bool active) override;

    bool active_;
};

} // namespace host
