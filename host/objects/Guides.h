#pragma once

#include "host/machine/DataLoss.h"
#include "host/machine/WorkMarks.h"
#include "host/objects/GuidePages.h"
#include "host/objects/Orders.h"

#include <QtCore/QObject>

#include <optional>

namespace host {

/// The open guide. Application thread.
class Guides : public QObject
{
    Q_OBJECT

public:
    /// The arguments must outlive this.
    Guides(Backend& backend, HostStatus& status, Orders& orders, Transcript& transcript, HostLog& log);

    /// Whether the work of each guide is started as the guide opens, as a user would.
    void setStartsGuides(bool starts) { startsGuides_ = starts; }

    /// Replaces the open guide. Work that is rejected is removed, so that the guide only informs.
    void open(Guide guide);
    /// Null if no guide is open.
    const Guide* current() const { return guide_ ? &*guide_ : nullptr; }
    /// False if no guide was open.
    bool close();

    /// Whether the user can start the work of the open guide.
    bool canStart() const { return guide_ && guide_->work; }
    /// The data that the work of the open guide would destroy now. Empty if it keeps all data or cannot
    /// start.
    std::optional<DataLoss> loss() const;
    /// The entries that the work of the open guide reads or overwrites.
    WorkMarks marks() const;
    /// Queues the work of the open guide and closes the guide. No effect unless canStart().
    void start();

Q_SIGNALS:
    /// A guide is about to open.
    void opening();
    void changed();
    /// loss() and marks() may have changed, because the machine has changed.
    void lossChanged();

private:
    bool isAccepted() const;
    void removeRejected(Guide& guide);
    void removeWithoutConsent(const Text& title, std::optional<GuidedWork>& work);
    void record(const QString& action);

    Backend& backend_;
    HostStatus& status_;
    Orders& orders_;
    Transcript& transcript_;
    HostLog& log_;
    std::optional<Guide> guide_;
    bool startsGuides_ = false;
};

} // namespace host
