#pragma once

#include <QtCore/QProcess>
#include <QtCore/QString>

/// A bus of this program's own, in a child process that ends with this object.
class PrivateBus
{
public:
    /// Throws std::runtime_error if the bus does not start.
    PrivateBus();
    ~PrivateBus();

    QString address() const { return address_; }

private:
    QProcess process_;
    QString address_;
};
