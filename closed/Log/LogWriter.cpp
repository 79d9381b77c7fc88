#include "closed/Log/LogWriter.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <cstdarg>
#include <cstdio>
#include <mutex>

void CLogWriter::Log(const char* format, ...)
{
    va_list list;
    va_start(list, format);
    const QByteArray text = QString::vasprintf(format, list).toUtf8();
    va_end(list);

    static std::mutex mutex;
    const std::lock_guard<std::mutex> lock(mutex);
    if (QCoreApplication::instance() != nullptr) {
        QFile file(QCoreApplication::applicationDirPath() + QLatin1String("/aibridge.log"));
        if (file.open(QIODevice::WriteOnly | QIODevice::Append))
            file.write(text);
    }
    if (qEnvironmentVariable("AIBRIDGE_LOG_STDERR") == QLatin1String("1")) {
        std::fputs(text.constData(), stderr);
        std::fflush(stderr);
    }
}
