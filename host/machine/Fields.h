#pragma once

#include "host/machine/Machine.h"

#include <QtCore/QVariantMap>

#include <variant>
#include <vector>

namespace host {

/// A key of the inventory and the member with its value.
template <class Record> struct Field
{
    using Member = std::variant<bool Record::*, int Record::*, qint64 Record::*, QString Record::*>;
    const char* key;
    Member member;
};

/// Every key of a disk's map except `partitions`.
const std::vector<Field<Disk>>& diskFields();
/// Every key of a partition's map.
const std::vector<Field<Partition>>& partitionFields();

/// The record as a map with all keys: sizes as qlonglong, the others as bool, int or QString.
template <class Record> QVariantMap toMap(const Record& record, const std::vector<Field<Record>>& fields)
{
    QVariantMap map;
    for (const Field<Record>& field : fields) {
        const QString key = QString::fromLatin1(field.key);
        std::visit([&](auto member) { map.insert(key, QVariant::fromValue(record.*member)); }, field.member);
    }
    return map;
}

} // namespace host
