#pragma once

#include "host/objects/Guides.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace host {

/// The open guide in the language of the window, for the QML files as `guide`. A page that covers
/// the window counts as an open dialog. Application thread.
class GuideView : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(bool dialog READ isDialog NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QStringList steps READ steps NOTIFY changed)
    Q_PROPERTY(int step READ step NOTIFY changed)
    Q_PROPERTY(QVariantList facts READ facts NOTIFY changed)
    Q_PROPERTY(QString rejection READ rejection NOTIFY changed)
    Q_PROPERTY(bool canStart READ canStart NOTIFY changed)
    Q_PROPERTY(bool destructive READ isDestructive NOTIFY changed)
    Q_PROPERTY(bool risk READ isRisk NOTIFY changed)
    Q_PROPERTY(QStringList losses READ losses NOTIFY changed)

public:
    /// The arguments must outlive this.
    GuideView(Guides& guides, HostStatus& status);

    /// Called after a change of the language.
    void retranslate();
    /// Closes each dialog after this many milliseconds, as a user would. Negative: never, the default.
    void setClickAfter(int milliseconds);

    bool isOpen() const { return open_; }
    bool isDialog() const { return open_ && page_.isDialog; }
    QString title() const { return title_; }
    QString text() const { return page_.text; }
    QStringList steps() const { return page_.steps; }
    int step() const { return page_.step; }
    QVariantList facts() const { return page_.facts; }
    QString rejection() const { return page_.rejection; }
    bool canStart() const { return guides_.canStart(); }
    /// The work destroys data, or puts data at risk.
    bool isDestructive() const { return loss_.has_value(); }
    /// The data is only lost if the work fails.
    bool isRisk() const { return loss_ && loss_->isRisk; }
    /// One line for each partition.
    QStringList losses() const;
    WorkMarks marks() const { return guides_.marks(); }

    /// The start button.
    Q_INVOKABLE void start() { guides_.start(); }
    /// The close button.
    Q_INVOKABLE void dismiss() { guides_.close(); }

Q_SIGNALS:
    void changed();
    /// A guide has opened, or has replaced the open one.
    void opened();

private:
    void showGuide();
    void showLoss();
    void build();

    Guides& guides_;
    HostStatus& status_;
    QString title_;
    GuidePage page_;
    std::optional<DataLoss> loss_;
    bool open_ = false;
    QTimer click_;
    int clickAfter_ = -1;
};

} // namespace host
