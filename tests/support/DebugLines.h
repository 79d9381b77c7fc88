#pragma once

#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <mutex>

/// Collects the messages of qDebug on any thread, during the lifetime of this object. One at a time.
class DebugLines
{
public:
    DebugLines()
    {
        take();
        previous_ =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                if (type != QtDebugMsg)
                    return;
                const std::lock_guard<std::mutex> lock(mutex_);
                lines_.append(text);
            });
    }
    ~DebugLines() { qInstallMessageHandler(previous_); }
    DebugLines(const DebugLines&) = delete;
    DebugLines& operator=(const DebugLines&) = delete;

    /// The lines since the last call.
    QStringList take()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        const QStringList lines = lines_;
        lines_.clear();
        return lines;
    }

private:
    static inline std::mutex mutex_;
    static inline QStringList lines_;
    QtMessageHandler previous_ = nullptr;
};
