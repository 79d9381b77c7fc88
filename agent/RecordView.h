#pragma once

#include "agent/Interface.h"
#include "agent/Value.h"

#include <string>

namespace zorcall {

/// Access to the fields of a record by name. An unknown field is absent. Keeps references to its arguments.
class RecordView
{
public:
    RecordView(const Record& record, const Value& value) : record_(record), value_(value) {}

    const Record& record() const { return record_; }
    const Value& field(const std::string& name) const;
    const std::string& text(const std::string& name) const { return field(name).text(); }
    bool flag(const std::string& name) const { return field(name).boolean(); }
    std::int64_t integer(const std::string& name) const { return field(name).integer(); }

private:
    const Record& record_;
    const Value& value_;
};

inline const Value& RecordView::field(const std::string& name) const
{
    std::size_t index = 0;
    while (index < record_.fields.size() && record_.fields[index].name != name)
        ++index;
    return value_.part(index);
}

} // namespace zorcall
