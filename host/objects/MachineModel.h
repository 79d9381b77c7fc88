#pragma once

#include "host/objects/HostCore.h"

#include <QtCore/QAbstractListModel>

#include <vector>

namespace host {

/// The machine as rows for the window: a row a disk, and one for each entry of its partition list.
class MachineModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit MachineModel(HostCore& core, QObject* parent = nullptr);

    enum Role {
        TextRole = Qt::UserRole,
        DiskRole,  ///< bool: the row is a disk's
        ShareRole, ///< how much of the row's capacity is in use, 0 to 1
        FreeRole   ///< bool: the row is a free region's
    };

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row
    {
        QString text;
        bool disk;
        bool free;
        double share;
    };

    void refill();

    HostCore& core_;
    std::vector<Row> rows_;
};

} // namespace host
