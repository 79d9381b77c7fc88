#pragma once

#include "host/objects/GuidePages.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>

namespace host {

class HostCore;

/// The open guide as the window shows it, for the QML files as `guide`. Whether one is open, the core
/// decides; this knows what it looks like. A page that covers the window counts as a dialog for as long as it
/// is open. Application thread.
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
    Q_PROPERTY(QString objection READ objection NOTIFY changed)

public:
    /// @p core must outlive this.
    explicit GuideView(HostCore& core);

    /// Makes the next guide that the core opens, in the language of the moment; it is called again when that
    /// changes. Without it, the guide has a title and a text alone.
    void prepare(std::function<GuidePage()> page);
    /// The language has changed.
    void retranslate();
    /// A dialog that has been open for so long is clicked away, as by a user; negative: never, the default.
    void setClickAfter(int milliseconds);

    bool isOpen() const { return open_; }
    bool isDialog() const { return open_ && page_.isDialog; }
    QString title() const { return title_; }
    QString text() const { return page_.text; }
    QStringList steps() const { return page_.steps; }
    int step() const { return page_.step; }
    QVariantList facts() const { return page_.facts; }
    QString objection() const { return page_.objection; }

Q_SIGNALS:
    void changed();

private:
    void follow();
    void build();

    HostCore& core_;
    QString title_;
    GuidePage page_;
    std::function<GuidePage()> make_; ///< of the open guide; empty if it was not prepared
    std::function<GuidePage()> next_;
    bool open_ = false;
    QTimer click_;
    int clickAfter_ = -1;
};

} // namespace host
