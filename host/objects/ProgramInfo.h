#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

namespace host {

/// The versions of the program and of the libraries it uses, for the QML files as `program`. Any thread.
class ProgramInfo : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString qtVersion READ qtVersion CONSTANT)
    Q_PROPERTY(QString thriftVersion READ thriftVersion CONSTANT)

public:
    using QObject::QObject;

    QString version() const;
    /// Of the loaded library.
    QString qtVersion() const;
    /// Of the library that the service was compiled with.
    QString thriftVersion() const;
};

} // namespace host
