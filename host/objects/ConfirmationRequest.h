#pragma once

#include "host/backend/Confirmation.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <optional>

namespace host {

/// The open question to a person whether an order may destroy data, for the QML files as `confirmation`. The
/// texts are in the language of the window. Application thread.
class ConfirmationRequest : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool open READ isOpen NOTIFY changed)
    Q_PROPERTY(QString operation READ operation NOTIFY changed)
    Q_PROPERTY(QString disk READ disk NOTIFY changed)
    Q_PROPERTY(bool risk READ isRisk NOTIFY changed)
    Q_PROPERTY(QStringList losses READ losses NOTIFY changed)

public:
    /// Opens the question. One at a time.
    void ask(Confirmation question);
    /// Closes the question without an answer. No effect if none is open.
    void withdraw();
    /// Called after a change of the language.
    void retranslate() { Q_EMIT changed(); }

    bool isOpen() const { return question_.has_value(); }
    QString operation() const;
    /// Device, model and size in one line.
    QString disk() const;
    /// The data is only at risk if the order fails.
    bool isRisk() const { return question_ && question_->loss.isRisk; }
    /// One line for each partition.
    QStringList losses() const;

    /// The buttons.
    Q_INVOKABLE void confirm() { answer(true); }
    Q_INVOKABLE void reject() { answer(false); }

Q_SIGNALS:
    void changed();
    void answered(bool confirmed);

private:
    void answer(bool confirmed);

    std::optional<Confirmation> question_;
};

/// "/dev/sdb, Maker Model, 465 GB"
QString diskLine(const Confirmation& question);

} // namespace host
